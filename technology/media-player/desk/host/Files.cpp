#include <MPL_Utils.h>

#include <QDebug>
#include <QFile>
#include <QSaveFile>

bool MPL::MplUtils::ReadFile(const QString& aPath, QString& aText)
{
    QFile file(aPath);
    if (!file.open(QIODevice::ReadOnly)) {
        return false;
    }
    const QByteArray content = file.readAll();
    if (file.error() != QFileDevice::NoError) {
        return false;
    }
    aText = QString::fromUtf8(content);
    return true;
}

bool MPL::MplUtils::WriteFile(const QString& aPath, const QString& aText)
{
    // Writes beside the file and renames, so whoever reads sees the old content or the new, whatever happens.
    QSaveFile file(aPath);
    const QByteArray content = aText.toUtf8();
    // Flushed by hand: a disk that has no room for the last of the text goes unnoticed in commit().
    if (file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.flush() &&
        file.commit()) {
        return true;
    }
    qCritical().noquote() << "MPL::MplUtils::WriteFile --" << aPath
                          << "can't be written:" << file.errorString();
    return false;
}
