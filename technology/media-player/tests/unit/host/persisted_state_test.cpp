#include "Journal.h"
#include "LogRecorder.h"
#include "MPL_DataManager.h"
#include "MPL_StateStore.h"

#include <DataManager.h>
#include <MPL_DataManagerWrapper.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <thread>

namespace
{

using namespace MPL;
using namespace MPL::Doubles;

// Another process that holds SQLite's lock on the file: the bytes from 2^30 on.
class OtherProcessWithLock
{
public:
    explicit OtherProcessWithLock(const QString& path)
    {
        const int fd = open(path.toLocal8Bit().constData(), O_RDWR | O_CLOEXEC);
        int ready[2];
        EXPECT_EQ(pipe(ready), 0);
        m_Pid = fork();
        if (m_Pid == 0) {
            flock lock{};
            lock.l_type = F_WRLCK;
            lock.l_start = 0x40000000;
            lock.l_len = 512;
            const char locked = fcntl(fd, F_SETLK, &lock) == 0 ? 1 : 0;
            (void)!write(ready[1], &locked, 1);
            // Ends with the test program too, which holds the other end.
            close(ready[1]);
            alarm(20);
            pause();
            _exit(0);
        }
        char locked = 0;
        EXPECT_EQ(read(ready[0], &locked, 1), 1);
        EXPECT_EQ(locked, 1);
        for (const int used : {fd, ready[0], ready[1]}) {
            close(used);
        }
    }

    ~OtherProcessWithLock()
    {
        kill(m_Pid, SIGKILL);
        waitpid(m_Pid, nullptr, 0);
    }

    OtherProcessWithLock(const OtherProcessWithLock&) = delete;
    OtherProcessWithLock& operator=(const OtherProcessWithLock&) = delete;

private:
    pid_t m_Pid = -1;
};

class PersistedState : public testing::Test
{
protected:
    PersistedState() { ClearNotes(); }
    ~PersistedState() override { DataManager::ShutDown(); }

    QString Stored(const QString& key = STATE_KEY_ACTIVE_SOURCE) const
    {
        StateStore store;
        QString value;
        QString error;
        EXPECT_TRUE(store.Open(m_Path, error) && store.Load(key, value, error)) << qPrintable(error);
        return value;
    }

    QTemporaryDir m_Folder;
    QString m_Path = m_Folder.filePath(QStringLiteral("not/yet/there/state.sqlite"));
    LogRecorder m_Log;
    DataManagerWrapper m_Wrapper;
};

TEST_F(PersistedState, IsSeenByOtherProgramsAtOnce)
{
    EXPECT_EQ(StartUpDataManager(m_Path), 0);
    EXPECT_EQ(StartUpDataManager(m_Path), 0);
    EXPECT_TRUE(m_Wrapper.SaveActiveSource(QStringLiteral("service_name=ä'\";object_path=/1")));
    // The data manager is used from whatever thread runs the tests.
    std::thread([this] {
        EXPECT_TRUE(m_Wrapper.SaveActiveSourcePlaybackState(QStringLiteral("PLAYING")));
    }).join();
    EXPECT_EQ(Stored(), QStringLiteral("service_name=ä'\";object_path=/1"));
    EXPECT_EQ(Stored(STATE_KEY_ACTIVE_SOURCE_PLAYBACK_STATE), QStringLiteral("PLAYING"));

    EXPECT_TRUE(m_Wrapper.SaveActiveSource(QString()));
    EXPECT_EQ(Stored(), QString());
    EXPECT_EQ(Text(Notes()), "");
}

TEST_F(PersistedState, IsMadeAnewWhenItsFolderWasRemoved)
{
    EXPECT_EQ(StartUpDataManager(m_Path), 0);
    EXPECT_TRUE(m_Wrapper.SaveActiveSource(QStringLiteral("old")));
    EXPECT_TRUE(QDir(m_Folder.filePath(QStringLiteral("not"))).removeRecursively());
    EXPECT_TRUE(m_Wrapper.SaveActiveSourcePlaybackState(QStringLiteral("new")));
    EXPECT_EQ(Stored(), QString());
    EXPECT_EQ(Stored(STATE_KEY_ACTIVE_SOURCE_PLAYBACK_STATE), QStringLiteral("new"));
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
    const QString text = m_Folder.filePath(QStringLiteral("text"));
    QFile file(text);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    const QByteArray content(2000, 'x');
    file.write(content);
    file.close();

    const QVector<QPair<QString, QString>> faults{
        {text, text + QStringLiteral(" is not an SQLite database")},
        {text + QStringLiteral("/state"), QStringLiteral("can't make the folder ") + text},
        {m_Folder.path(), QStringLiteral("can't use ") + m_Folder.path()},
        {QStringLiteral("/proc/state"), QStringLiteral("can't use /proc/state")}};
    for (const auto& [path, why] : faults) {
        ClearNotes();
        EXPECT_NE(StartUpDataManager(path), 0);
        // Whoever tries nevertheless isn't told the same again.
        EXPECT_FALSE(m_Wrapper.SaveActiveSource(QString()));
        EXPECT_EQ(Notes().size(), 1) << Text(Notes());
        EXPECT_EQ(Notes(QStringLiteral("critical: DataManager::StartUp -- ") + why).size(), 1)
            << Text(Notes());
    }
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), content);
}

TEST_F(PersistedState, IsKeptWhileAnotherProgramHasItLocked)
{
    EXPECT_EQ(StartUpDataManager(m_Path), 0);
    EXPECT_TRUE(m_Wrapper.SaveActiveSource(QStringLiteral("old")));
    {
        const OtherProcessWithLock other(m_Path);
        QElapsedTimer timer;
        timer.start();
        EXPECT_FALSE(m_Wrapper.SaveActiveSource(QStringLiteral("new")));
        EXPECT_NE(StartUpDataManager(m_Path), 0);
        EXPECT_LT(timer.elapsed(), 2000);
        const QString why = m_Path + QStringLiteral(" is locked by another program: wait for it or end it");
        EXPECT_EQ(Text(Notes()),
                  Text({QStringLiteral("critical: MPL::DataManagerWrapper::SaveActiveSource -- ") + why,
                        QStringLiteral("critical: DataManager::StartUp -- ") + why}));
    }
    EXPECT_EQ(Stored(), QStringLiteral("old"));
    EXPECT_EQ(StartUpDataManager(m_Path), 0);
    EXPECT_TRUE(m_Wrapper.SaveActiveSource(QStringLiteral("new")));
}

} // namespace
