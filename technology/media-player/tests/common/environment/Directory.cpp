// The environment directory, and a clean stop of the whole stack.
#include <MPL_TestEnvironment.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

bool MPL_TestEnvironment::SetEnvironment(const QString& aDirectory, bool aClean)
{
    if (aDirectory.isEmpty()) {
        return false;
    }
    QDir directory(aDirectory);
    if (aClean && directory.exists()) {
        directory.removeRecursively();
    }
    const bool created = QDir().mkpath(aDirectory);
    if (created) {
        m_EnvironmentDirectory = aDirectory;
    }
    return created;
}

bool MPL_TestEnvironment::CleanEnvironment()
{
    QDir directory(m_EnvironmentDirectory);
    const QStringList names = directory.entryList(QDir::NoFilter, QDir::Unsorted);
    for (const QString& name : names) {
        directory.remove(name);
    }
    // Counts "." and ".." too: see "Kept on purpose" in docs/architecture.md.
    directory.refresh();
    return directory.count() == 0;
}

bool MPL_TestEnvironment::UseFile(const QString& aFilePath)
{
    const QString name = QFileInfo(aFilePath).fileName();
    if (name.isEmpty()) {
        return false;
    }
    return QFile::copy(aFilePath, QDir(m_EnvironmentDirectory).filePath(name));
}

bool MPL_TestEnvironment::SterilizeEnvironment(bool aActivateDataManager)
{
    return KillMediaSourceProcess() && KillTestMediaSourceProcess() && KillMediaManagerProcess() &&
           ClearMPLState(aActivateDataManager);
}
