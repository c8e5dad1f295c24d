// Programs name the platform before the library that calls it, and a linker takes from a static library only
// what was asked for by then. Linking this library asks for the table below, and with it for everything.
#include <DataManager.h>
#include <MPL_DBusUtils.h>
#include <MPL_DataManagerWrapper.h>
#include <MPL_Parameters.h>
#include <MPL_ProcessInfo.h>
#include <MPL_Utils.h>

struct MplPlatformHost {
    decltype(&MPL_ProcessInfo::GetPidFromName) getPidFromName;
    decltype(&MPL::IsServiceRunning) isServiceRunning;
    decltype(&DataManager::StartUp) startUp;
    decltype(&MPL::DataManagerWrapper::SaveActiveSource) saveActiveSource;
    decltype(&MPL::MplUtils::ReadFile) readFile;
    decltype(&MPL::GetParameters) getParameters;
};

// One function of each source file brings the others of the file.
extern "C" {
extern const MplPlatformHost mplPlatformHost;
const MplPlatformHost mplPlatformHost{
    &MPL_ProcessInfo::GetPidFromName,           &MPL::IsServiceRunning,   &DataManager::StartUp,
    &MPL::DataManagerWrapper::SaveActiveSource, &MPL::MplUtils::ReadFile, &MPL::GetParameters};
}
