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

#include <thread>

namespace
{

using namespace MPL::Detail;
using namespace MPL::Doubles;

class PersistedState : public testing::Test
{
protected:
    PersistedState() { ClearNotes(); }
    ~PersistedState() override { DataManager::ShutDown(); }

    QString Stored(const QString& aKey = kStateKeyActiveSource) const
    {
        StateStore store;
        QString value;
        QString error;
        EXPECT_TRUE(store.Open(m_Path, error) && store.Load(aKey, value, error)) << qPrintable(error);
        return value;
    }

    QTemporaryDir m_Folder;
    QString m_Path = m_Folder.filePath(QStringLiteral("not/yet/there/state.sqlite"));
    LogRecorder m_Log;
    MPL::DataManagerWrapper m_Wrapper;
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
    EXPECT_EQ(Stored(kStateKeyActiveSourcePlaybackState), QStringLiteral("PLAYING"));

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
    EXPECT_EQ(Stored(kStateKeyActiveSourcePlaybackState), QStringLiteral("new"));
}

TEST_F(PersistedState, IsWrittenOnlyWhenItChanges)
{
    EXPECT_EQ(StartUpDataManager(m_Path), 0);
    EXPECT_TRUE(m_Wrapper.SaveActiveSource(QStringLiteral("same")));
    QFile file(m_Path);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    // It counts its changes, so any would show.
    const QByteArray content = file.readAll();
    EXPECT_EQ(StartUpDataManager(m_Path), 0);
    EXPECT_TRUE(m_Wrapper.SaveActiveSource(QStringLiteral("same")));
    EXPECT_TRUE(file.seek(0));
    EXPECT_EQ(file.readAll(), content);
    EXPECT_EQ(QDir(QFileInfo(m_Path).path()).entryList(QDir::Files).size(), 1) << "a journal is left";
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

TEST_F(PersistedState, IsKeptWhenTheDiskIsFull)
{
    EXPECT_EQ(StartUpDataManager(m_Path), 0);
    EXPECT_TRUE(m_Wrapper.SaveActiveSource(QStringLiteral("old")));
    {
        const FullDisk full(0);
        EXPECT_FALSE(m_Wrapper.SaveActiveSource(QStringLiteral("new")));
        EXPECT_NE(StartUpDataManager(m_Path), 0);
    }
    EXPECT_EQ(Notes(QStringLiteral("critical: ")).size(), 2) << Text(Notes());
    EXPECT_EQ(Stored(), QStringLiteral("old"));
}

TEST_F(PersistedState, IsKeptWhileAnotherProgramHasItLocked)
{
    EXPECT_EQ(StartUpDataManager(m_Path), 0);
    EXPECT_TRUE(m_Wrapper.SaveActiveSource(QStringLiteral("old")));
    {
        QProcess other; // ends when its input does
        other.start(QStringLiteral("python3"),
                    {QStringLiteral("-c"),
                     QStringLiteral("import sqlite3, sys\n"
                                    "store = sqlite3.connect(sys.argv[1], isolation_level=None)\n"
                                    "store.execute('BEGIN EXCLUSIVE')\n"
                                    "print('locked', flush=True)\n"
                                    "sys.stdin.read()"),
                     m_Path});
        ASSERT_TRUE(other.waitForReadyRead(10000)) << qPrintable(other.errorString());
        QElapsedTimer timer;
        timer.start();
        EXPECT_FALSE(m_Wrapper.SaveActiveSource(QStringLiteral("new")));
        EXPECT_NE(StartUpDataManager(m_Path), 0);
        EXPECT_LT(timer.elapsed(), 2000);
        const QString why = m_Path + QStringLiteral(" is locked by another program: wait for it or end it");
        EXPECT_EQ(Text(Notes()),
                  Text({QStringLiteral("critical: MPL::DataManagerWrapper::SaveActiveSource -- ") + why,
                        QStringLiteral("critical: DataManager::StartUp -- ") + why}));
        other.closeWriteChannel();
        EXPECT_TRUE(other.waitForFinished(10000));
    }
    EXPECT_EQ(Stored(), QStringLiteral("old"));
    EXPECT_EQ(StartUpDataManager(m_Path), 0);
    EXPECT_TRUE(m_Wrapper.SaveActiveSource(QStringLiteral("new")));
}

} // namespace
