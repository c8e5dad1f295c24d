// What the stack remembers between runs.
#include <DataManager.h>
#include <MPL_DataManagerWrapper.h>
#include <MPL_TestEnvironment.h>

#include <QDebug>

namespace
{

// The wrapper is gone again before the library behind it is shut down.
bool SaveNothing()
{
    MPL::DataManagerWrapper dataManager;
    const QString none = QLatin1String("");
    return dataManager.SaveActiveSource(none) && dataManager.SaveActiveSourcePlaybackState(none);
}

} // namespace

bool MPL_TestEnvironment::ClearMPLState(bool aActivateDataManager)
{
    if (aActivateDataManager) {
        const int error = DataManager::StartUp();
        if (error != 0) {
            qDebug() << "DataManager::StartUp failed" << error;
        }
    }
    const bool result = SaveNothing();
    if (aActivateDataManager) {
        DataManager::ShutDown();
    }
    qDebug() << "MPL_TestEnvironment::ClearMPLState result=" << result;
    return result;
}
