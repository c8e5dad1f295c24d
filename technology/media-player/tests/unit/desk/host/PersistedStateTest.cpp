#include "DataManagerStore.h"
#include "FullDisk.h"
#include "Journal.h"
#include "LogRecorder.h"
#include "StateStore.h"
#include <DataManager.h>
#include <MPL_DataManagerWrapper.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <thread>

namespace
{

using namespace MPL::Detail;
using namespace MPL::Doubles;

class PersistedState : public testing::Test
{
protected:
    ~PersistedState() override { DataManager::ShutDown(); }

    QString Stored(const QString& aKey = kStateKeyActiveSource) const
    {
        StateStore store;
        QString value;
        QString error;
        EXPECT_TRUE(store.Open(m_Path, error) && store.Load(aKey, value, error)) << qPrintable(error);
        return value;
    }

    // A busy writer may keep others from reading for longer than they wait.
    bool IsStored() const
    {
        StateStore store;
        QString value;
        QString ignored;
        return store.Open(m_Path, ignored) && store.Load(kStateKeyActiveSource, value, ignored) &&
               !value.isEmpty();
    }

    QTemporaryDir m_Folder;
    QString m_Path = m_Folder.filePath("not/yet/there/state.sqlite");
    LogRecorder m_Log;
    MPL::DataManagerWrapper m_Wrapper;
};

TEST_F(PersistedState, IsSeenByOtherProgramsAtOnce)
{
    EXPECT_EQ(StartUpDataManager(m_Path), 0);
    EXPECT_EQ(StartUpDataManager(m_Path), 0);
    EXPECT_TRUE(m_Wrapper.SaveActiveSource("service_name=ä'\";object_path=/1"));
    // The data manager is used from whatever thread runs the tests.
    std::thread([this] { EXPECT_TRUE(m_Wrapper.SaveActiveSourcePlaybackState("PLAYING")); }).join();
    EXPECT_EQ(Stored(), "service_name=ä'\";object_path=/1");
    EXPECT_EQ(Stored(kStateKeyActiveSourcePlaybackState), "PLAYING");

    EXPECT_TRUE(m_Wrapper.SaveActiveSource(QString()));
    EXPECT_EQ(Stored(), QString());
    EXPECT_EQ(Text(Notes()), "");
}

TEST_F(PersistedState, IsMadeAnewWhenItsFolderWasRemoved)
{
    EXPECT_EQ(StartUpDataManager(m_Path), 0);
    EXPECT_TRUE(m_Wrapper.SaveActiveSource("old"));
    EXPECT_TRUE(QDir(m_Folder.filePath("not")).removeRecursively());
    EXPECT_TRUE(m_Wrapper.SaveActiveSourcePlaybackState("new"));
    EXPECT_EQ(Stored(), QString());
    EXPECT_EQ(Stored(kStateKeyActiveSourcePlaybackState), "new");
}

TEST_F(PersistedState, IsWrittenOnlyWhenItChanges)
{
    EXPECT_EQ(StartUpDataManager(m_Path), 0);
    EXPECT_TRUE(m_Wrapper.SaveActiveSource("same"));
    QFile file(m_Path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    // It counts its changes, so any would show.
    const QByteArray content = file.readAll();
    EXPECT_EQ(StartUpDataManager(m_Path), 0);
    EXPECT_TRUE(m_Wrapper.SaveActiveSource("same"));
    EXPECT_TRUE(file.seek(0));
    EXPECT_EQ(file.readAll(), content);
    EXPECT_EQ(QDir(QFileInfo(m_Path).path()).entryList(QDir::Files).size(), 1) << "a journal is left";
}

TEST_F(PersistedState, IsWholeWhenAProgramIsKilledWhileItSaves)
{
    constexpr int kLength = 50000; // several pages of the file
    constexpr int kRounds = 30;
    constexpr int kMostSaves = 50000;
    for (qint64 round = 0; round < kRounds; ++round) {
        const pid_t writer = fork();
        if (writer == 0) {
            StateStore store;
            QString error;
            // A busy machine may hold the reader up in its turn for longer than a writer waits.
            for (int count = 0; count < kMostSaves; ++count) {
                if (store.Open(m_Path, error)) {
                    store.Save(kStateKeyActiveSource, QString(kLength, QChar('a' + count % 2)), error);
                }
                usleep(50); // or nobody else gets a turn
            }
            _exit(1);
        }
        ASSERT_GT(writer, 0);
        while (!IsStored()) {
        }
        QElapsedTimer timer;
        timer.start();
        while (timer.nsecsElapsed() < round * 50000) {
        }
        kill(writer, SIGKILL);
        EXPECT_EQ(waitpid(writer, nullptr, 0), writer);
        const QString value = Stored();
        ASSERT_EQ(value.size(), kLength);
        EXPECT_EQ(value.count(value.front()), kLength);
    }
}

TEST_F(PersistedState, CantBeSavedBeforeTheStart)
{
    EXPECT_FALSE(m_Wrapper.SaveActiveSource(QString()));
    EXPECT_EQ(StartUpDataManager(m_Path), 0);
    DataManager::ShutDown();
    EXPECT_FALSE(m_Wrapper.SaveActiveSourcePlaybackState(QString()));
    EXPECT_EQ(Text(Notes()),
              "critical: MPL::DataManagerWrapper::SaveActiveSource -- call DataManager::StartUp first\n"
              "critical: MPL::DataManagerWrapper::SaveActiveSourcePlaybackState -- call "
              "DataManager::StartUp first");
}

TEST_F(PersistedState, IsNotOfferedByAFileThatCantHoldIt)
{
    const QString text = m_Folder.filePath("text");
    QFile file(text);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QByteArray content(2000, 'x');
    file.write(content);
    file.close();

    const QVector<QPair<QString, QString>> faults{{text, text + " is not an SQLite database"},
                                                  {text + "/state", "can't make the folder " + text},
                                                  {m_Folder.path(), "can't use " + m_Folder.path()},
                                                  {"/proc/state", "can't use /proc/state"}};
    for (const auto& [path, why] : faults) {
        ClearNotes();
        EXPECT_NE(StartUpDataManager(path), 0);
        // Whoever tries nevertheless isn't told the same again.
        EXPECT_FALSE(m_Wrapper.SaveActiveSource(QString()));
        EXPECT_EQ(Notes().size(), 1) << Text(Notes());
        EXPECT_EQ(Notes("critical: DataManager::StartUp -- " + why).size(), 1) << Text(Notes());
    }
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), content);
}

TEST_F(PersistedState, IsKeptWhenTheDiskIsFull)
{
    EXPECT_EQ(StartUpDataManager(m_Path), 0);
    EXPECT_TRUE(m_Wrapper.SaveActiveSource("old"));
    {
        const FullDisk full(0);
        EXPECT_FALSE(m_Wrapper.SaveActiveSource("new"));
        EXPECT_NE(StartUpDataManager(m_Path), 0);
    }
    EXPECT_EQ(Notes("critical: ").size(), 2) << Text(Notes());
    EXPECT_EQ(Stored(), "old");
}

constexpr const char* kLockUntilEndOfInput = "import sqlite3, sys\n"
                                             "store = sqlite3.connect(sys.argv[1], isolation_level=None)\n"
                                             "store.execute('BEGIN EXCLUSIVE')\n"
                                             "print('locked', flush=True)\n"
                                             "sys.stdin.read()";

TEST_F(PersistedState, IsKeptWhileAnotherProgramHasItLocked)
{
    EXPECT_EQ(StartUpDataManager(m_Path), 0);
    EXPECT_TRUE(m_Wrapper.SaveActiveSource("old"));
    QProcess other;
    other.start("python3", {"-c", kLockUntilEndOfInput, m_Path});
    ASSERT_TRUE(other.waitForReadyRead(10000)) << qPrintable(other.errorString());
    QElapsedTimer timer;
    timer.start();
    EXPECT_FALSE(m_Wrapper.SaveActiveSource("new"));
    EXPECT_NE(StartUpDataManager(m_Path), 0);
    EXPECT_LT(timer.elapsed(), 2000);
    const QString why = m_Path + " is locked by another program: wait for it or end it";
    EXPECT_EQ(Text(Notes()), Text({"critical: MPL::DataManagerWrapper::SaveActiveSource -- " + why,
                                   "critical: DataManager::StartUp -- " + why}));
    other.closeWriteChannel();
    EXPECT_TRUE(other.waitForFinished(10000));
    EXPECT_EQ(Stored(), "old");
    EXPECT_EQ(StartUpDataManager(m_Path), 0);
    EXPECT_TRUE(m_Wrapper.SaveActiveSource("new"));
}

} // namespace
