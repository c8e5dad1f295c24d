// What the stack remembers between runs.
#include <MPL_TestEnvironment.h>

#include <DataManager.h>
#include <MPL_DataManagerWrapper.h>

#include <QDebug>

bool MPL_TestEnvironment::ClearMPLState(bool aActivateDataManager)
{
    if (aActivateDataManager) {
        const int error = DataManager::StartUp();
        if (error != 0) {
            qDebug() << "DataManager::StartUp failed" << error;
        }
    }
    MPL::DataManagerWrapper dataManager;
    const QString none = QLatin1String("");
    const bool result = dataManager.SaveActiveSource(none) && dataManager.SaveActiveSourcePlaybackState(none);
    if (aActivateDataManager) {
        DataManager::ShutDown();
    }
    qDebug() << "MPL_TestEnvironment::ClearMPLState result=" << result;
    return result;
}
