#include "DataManagerStore.h"

#include "StateStore.h"
#include <DataManager.h>
#include <MPL_DataManagerWrapper.h>
#include <MPL_TestEnvironmentNames.h>

#include <QDebug>
#include <QMutex>
#include <QMutexLocker>

using namespace MPL::Detail;

namespace
{

// One store per program, as the data manager has no handle: threads take turns.
struct State {
    QMutex mutex;
    StateStore store;
    bool startFailed = false;
};

// Not destroyed at the program's end: Qt's list of databases is gone by then.
State& TheState()
{
    static State& s_State = *new State;
    return s_State;
}

bool Save(const char* aOperation, const QString& aKey, const QString& aValue)
{
    State& state = TheState();
    const QMutexLocker lock(&state.mutex);
    // The failed start has said why; saying it again with every save would only hide it.
    if (state.startFailed) {
        return false;
    }
    QString error = QStringLiteral("call DataManager::StartUp first");
    if (state.store.IsOpen() && state.store.Save(aKey, aValue, error)) {
        return true;
    }
    qCritical().noquote() << aOperation << "--" << error;
    return false;
}

} // namespace

int MPL::Detail::StartUpDataManager(const QString& aPath)
{
    State& state = TheState();
    const QMutexLocker lock(&state.mutex);
    QString error;
    state.startFailed = !state.store.Open(aPath, error);
    if (state.startFailed) {
        qCritical().noquote() << "DataManager::StartUp --" << error;
        return 1;
    }
    return 0;
}

int DataManager::StartUp()
{
    return StartUpDataManager(MPL_TEST_MEDIA_PLAYER_DIRECTORY + QStringLiteral("test/DataManagerDb.sqlite"));
}

void DataManager::ShutDown()
{
    State& state = TheState();
    const QMutexLocker lock(&state.mutex);
    state.store.Close();
    state.startFailed = false;
}

bool MPL::DataManagerWrapper::SaveActiveSource(const QString& aSource)
{
    return Save("MPL::DataManagerWrapper::SaveActiveSource", kStateKeyActiveSource, aSource);
}

bool MPL::DataManagerWrapper::SaveActiveSourcePlaybackState(const QString& aState)
{
    return Save("MPL::DataManagerWrapper::SaveActiveSourcePlaybackState", kStateKeyActiveSourcePlaybackState,
                aState);
}
