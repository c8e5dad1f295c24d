// Stands for the vehicle's own support libraries: all that a platform has to supply, doing nothing.
#include <DataManager.h>
#include <MPL_DBusUtils.h>
#include <MPL_DataManagerWrapper.h>
#include <MPL_Parameters.h>
#include <MPL_ProcessInfo.h>
#include <MPL_Utils.h>

int MPL_ProcessInfo::GetPidFromName(const char* /*aName*/)
{
    return -1;
}
bool MPL_ProcessInfo::KillProcess(const char* /*aName*/, bool /*aKill*/)
{
    return false;
}
bool MPL_ProcessInfo::SlmStartService(const char* /*aServiceName*/)
{
    return false;
}
bool MPL_ProcessInfo::SlmStopService(const char* /*aServiceName*/)
{
    return false;
}

int DataManager::StartUp()
{
    return 0;
}
void DataManager::ShutDown() {}

namespace MPL
{

bool IsServiceRunning(const QString& /*aServiceName*/, const QDBusConnection& /*aConnection*/)
{
    return false;
}
bool FindServiceObjectPathsByInterface(const QString& /*aServiceName*/, const QString& /*aInterfaceName*/,
                                       const QDBusConnection& /*aConnection*/, QStringList& /*aPaths*/)
{
    return false;
}

bool DataManagerWrapper::SaveActiveSource(const QString& /*aSource*/)
{
    return false;
}
bool DataManagerWrapper::SaveActiveSourcePlaybackState(const QString& /*aState*/)
{
    return false;
}

bool MplUtils::ReadFile(const QString& /*aPath*/, QString& /*aText*/)
{
    return false;
}
bool MplUtils::WriteFile(const QString& /*aPath*/, const QString& /*aText*/)
{
    return false;
}

bool GetParameters(const QString& /*text*/, QMap<QString, QString>& /*parameters*/)
{
    return false;
}

} // namespace MPL
