#include "PlatformDoubles.h"

#include "Journal.h"
#include <DataManager.h>
#include <MPL_DBusUtils.h>
#include <MPL_DataManagerWrapper.h>
#include <MPL_Parameters.h>
#include <MPL_ProcessInfo.h>
#include <MPL_Utils.h>

#include <QDBusConnection>

namespace MPL::Doubles
{

Platform& World()
{
    static Platform s_Platform;
    return s_Platform;
}

void MakeImmortal(const QString& aProcess)
{
    World().processes[aProcess] = 77;
    World().ignoreTerm << aProcess;
    World().ignoreKill << aProcess;
}

} // namespace MPL::Doubles

using MPL::Doubles::Note;
using MPL::Doubles::World;

int MPL_ProcessInfo::GetPidFromName(const char* aName)
{
    const QString name = QString::fromUtf8(aName);
    World().questions << "pid " + name;
    return World().processes.value(name, -1);
}

bool MPL_ProcessInfo::KillProcess(const char* aName, bool aKill)
{
    const QString name = QString::fromUtf8(aName);
    Note(QStringLiteral("kill %1 %2").arg(name, aKill ? "KILL" : "TERM"));
    const bool found = World().processes.contains(name);
    if (!(aKill ? World().ignoreKill : World().ignoreTerm).contains(name)) {
        World().processes.remove(name);
    }
    if (World().onKill) {
        World().onKill(name, aKill);
    }
    return found;
}

bool MPL_ProcessInfo::SlmStartService(const char* aServiceName)
{
    const QString name = QString::fromUtf8(aServiceName);
    Note("slm start " + name);
    return !World().slmRefuses.contains(name);
}

bool MPL_ProcessInfo::SlmStopService(const char* aServiceName)
{
    const QString name = QString::fromUtf8(aServiceName);
    Note("slm stop " + name);
    return !World().slmRefuses.contains(name);
}

int DataManager::StartUp()
{
    Note("DataManager::StartUp");
    return World().startUpResult;
}

void DataManager::ShutDown()
{
    Note("DataManager::ShutDown");
}

namespace MPL
{

bool IsServiceRunning(const QString& aServiceName, const QDBusConnection& aConnection)
{
    World().questions << QStringLiteral("owned %1 on %2").arg(aServiceName, aConnection.name());
    return World().owned.contains(aServiceName);
}

bool FindServiceObjectPathsByInterface(const QString& aServiceName, const QString& aInterfaceName,
                                       const QDBusConnection& aConnection, QStringList& aPaths)
{
    const QString key = aServiceName + ' ' + aInterfaceName;
    World().questions << QStringLiteral("objects %1 on %2").arg(key, aConnection.name());
    aPaths << World().objects.value(key);
    return World().objects.contains(key);
}

bool DataManagerWrapper::SaveActiveSource(const QString& aSource)
{
    Note(QStringLiteral("save active source \"%1\"").arg(aSource));
    return World().saveSource;
}

bool DataManagerWrapper::SaveActiveSourcePlaybackState(const QString& aState)
{
    Note(QStringLiteral("save playback state \"%1\"").arg(aState));
    return World().savePlaybackState;
}

bool MplUtils::ReadFile(const QString& aPath, QString& aText)
{
    Note("read " + aPath);
    if (!World().files.contains(aPath)) {
        return false;
    }
    aText = World().files.value(aPath);
    return true;
}

bool MplUtils::WriteFile(const QString& aPath, const QString& aText)
{
    Note("write " + aPath);
    if (World().unwritable.contains(aPath)) {
        return false;
    }
    World().files[aPath] = aText;
    return true;
}

bool GetParameters(const QString& aText, QMap<QString, QString>& aParameters)
{
    bool any = false;
    const QStringList pairs = aText.split(';');
    for (const QString& pair : pairs) {
        const auto equals = pair.indexOf('=');
        if (equals > 0) {
            aParameters[pair.left(equals)] = pair.mid(equals + 1);
            any = true;
        }
    }
    return any;
}

} // namespace MPL
