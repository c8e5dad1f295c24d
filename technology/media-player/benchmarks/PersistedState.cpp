// Resetting the persisted state, as it is done before every launch: ours, which first proves that the file
// can be written, and the same in one go through Qt SQL. In memory and on the disk of the temporary files.
#include "DataManagerStore.h"
#include <DataManager.h>
#include <MPL_DataManagerWrapper.h>

#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

namespace
{

enum Place { kMemory, kDisk };

QString MakeFolder(benchmark::State& aState)
{
    static const QTemporaryDir kFolders[] = {QTemporaryDir(QStringLiteral("/dev/shm/benchmark-XXXXXX")),
                                             QTemporaryDir()};
    return kFolders[aState.range(0)].path();
}

bool Reset(const QString& aPath, const QString& aSource)
{
    MPL::DataManagerWrapper wrapper;
    const bool reset = MPL::Detail::StartUpDataManager(aPath) == 0 && wrapper.SaveActiveSource(aSource) &&
                       wrapper.SaveActiveSourcePlaybackState(aSource);
    DataManager::ShutDown();
    return reset;
}

// What is stored is empty already, as in most launches.
void Ours(benchmark::State& aState)
{
    const QString path = MakeFolder(aState) + QStringLiteral("/ours.sqlite");
    bool reset = Reset(path, QString());
    while (aState.KeepRunning()) {
        reset = Reset(path, QString()) && reset;
    }
    if (!reset) {
        aState.SkipWithError("the state can't be reset");
    }
}

// Another source was active.
void OursWithChanges(benchmark::State& aState)
{
    const QString path = MakeFolder(aState) + QStringLiteral("/changed.sqlite");
    bool reset = true;
    int count = 0;
    while (aState.KeepRunning()) {
        reset = Reset(path, QString::number(++count)) && reset;
    }
    if (!reset) {
        aState.SkipWithError("the state can't be reset");
    }
}

bool SaveAtOnce(QSqlDatabase& aDatabase)
{
    QSqlQuery query(aDatabase);
    return query.exec(QStringLiteral(
               "CREATE TABLE IF NOT EXISTS state (key TEXT PRIMARY KEY, value TEXT NOT NULL)")) &&
           query.exec(QStringLiteral("REPLACE INTO state VALUES ('active_source', '')")) &&
           query.exec(QStringLiteral("REPLACE INTO state VALUES ('active_source_playback_state', '')"));
}

void OneConnection(benchmark::State& aState)
{
    const QString path = MakeFolder(aState) + QStringLiteral("/peer.sqlite");
    const QString name = QStringLiteral("peer");
    bool saved = true;
    while (aState.KeepRunning()) {
        {
            QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
            database.setDatabaseName(path);
            saved = database.open() && SaveAtOnce(database) && saved;
        }
        QSqlDatabase::removeDatabase(name);
    }
    if (!saved) {
        aState.SkipWithError("the state can't be saved");
    }
}

void Places(benchmark::internal::Benchmark* aBenchmark)
{
    aBenchmark->Unit(benchmark::kMicrosecond)->UseRealTime()->Arg(kMemory)->Arg(kDisk);
}

BENCHMARK(Ours)->Name("PersistedState/ours")->Apply(Places);
BENCHMARK(OursWithChanges)->Name("PersistedState/ours, changed")->Apply(Places);
BENCHMARK(OneConnection)->Name("PersistedState/one connection")->Apply(Places);

} // namespace
