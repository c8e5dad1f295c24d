// The fixtures on the real controller and platform doubles: which steps they make, in which order, and what
// becomes of each failure. They use the environment directory, so they run where it is their own: in a
// sandbox.
#include "DoublesTest.h"
#include "Require.h"
#include "WaitUntil.h"
#include <MPL_MediaSourceTestFixture.h>
#include <MPL_TestEnvironment.h>
#include <MPL_Types.h>

#include <QDir>
#include <QFile>
#include <QPointer>
#include <QTimer>

#include <gtest/gtest-spi.h>

#include <chrono>
#include <future>
#include <thread>

using namespace MPL::Doubles;

namespace
{

const testing::Environment* const kSandbox = RequireSandbox();

const QString kManager = "com.talvex.DBus.MediaPlayer.MediaManagerService";

QStringList Lines(const char* aText)
{
    return QString::fromLatin1(aText).split('\n');
}

// What was done, without what the controller says of it and the pauses in between.
QStringList Steps()
{
    QStringList steps;
    for (const QString& note : Notes()) {
        if (!note.startsWith("debug: MPL_TestEnvironment") && !note.startsWith("sleep ") &&
            !note.startsWith("debug: MediaManager process")) {
            steps << note;
        }
    }
    return steps;
}

const QStringList kKillHmi = Lines("kill hmi_main TERM\nkill hmi_cluster TERM");
const QStringList kReset =
    Lines("DataManager::StartUp\nsave active source \"\"\nsave playback state \"\"\nDataManager::ShutDown");
const QStringList kKillSources = Lines(
    "kill media_source_mass_storage TERM\nkill media_source_apple TERM\nkill media_source_pandora TERM\n"
    "kill media_source_disc TERM\nkill media_source_spotify TERM\nkill test_media_source TERM");
const QStringList kSlmStop =
    Lines("slm stop media-manager\nslm stop media-mme\nslm stop media-source-mass-storage\n"
          "slm stop media-source-apple\nslm stop media-source-pandora\nslm stop media-source-spotify\n"
          "slm stop media-source-btmedia");
const QStringList kSlmStart =
    Lines("slm start media-mme\nslm start media-manager\nslm start media-source-mass-storage\n"
          "slm start media-source-apple\nslm start media-source-pandora\nslm start media-source-spotify\n"
          "slm start media-source-btmedia");
const QStringList kLaunch =
    Lines("start /opt/talvex/bin/media_mme\n"
          "start /opt/talvex/bin/media_manager DB=/var/talvex/media-player/test/DataManagerDb.sqlite");

class OneTest : public MPL::TestFixture
{
public:
    using TestFixture::SetUp;
    using TestFixture::TearDown;

private:
    void TestBody() override {}
};

class Fixtures : public DoublesTest
{
protected:
    Fixtures()
    {
        MPL::TestFixture::s_GaugelySetUpCase = false;
        World().owned << kManager;
        World().objects[kManager + " com.talvex.DBus.MediaPlayer.MediaManager"] = QStringList{"/manager"};
    }
    ~Fixtures() override { MPL::TestFixture::s_GaugelySetUpCase = false; }

    // A file where the environment directory should be.
    static void ObstructEnvironment()
    {
        QDir(kMPLDefaultEnvironment).removeRecursively();
        QFile file(QDir(kMPLDefaultEnvironment).absolutePath());
        ASSERT_TRUE(QDir().mkpath(MPL_TEST_MEDIA_PLAYER_DIRECTORY));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }

    static void FreeEnvironment() { QFile::remove(QDir(kMPLDefaultEnvironment).absolutePath()); }
};

// The lines behind the letters of a test's expectation.
QStringList Script(const char* aLetters)
{
    const QMap<char, const char*> lines{
        {'C', "debug: TestFixture::SetUpTestCase -- Do Gaugely SetUpTestCase"},
        {'K', "kill hmi_main TERM\nkill hmi_cluster TERM"},
        {'s', "debug: TestFixture::SetUp -- Do Gaugely SetUp"},
        {'t', "debug: TestFixture::TearDown -- Do Gaugely Teardown"},
        {'T', "debug: TestFixture::TearDownTestCase -- Do Gaugely TearDownTestCase"},
        {'1', "critical: Gaugely::Std::PerfTestBase::SetUpTestCase has not been called"},
        {'2', "critical: Gaugely::Std::PerfTestBase::TearDown has not been called"},
        {'3', "critical: Previous test case not torn down correctly"}};
    QStringList script;
    for (; *aLetters != 0; ++aLetters) {
        script << Lines(lines.value(*aLetters));
    }
    return script;
}

// Set-up and tear-down of the test case (C, T) and of the test (s, t), then what is logged until its end.
const struct {
    const char* steps;
    const char* log;
} kCases[] = {{"CstT", "CKstT"}, {"st", "s1t"}, {"Cs", "CKs2"}, {"CsTt", "CKsTt2"}, {"CCT", "CKC3KT"}};

TEST_F(Fixtures, BookTestsAndTestCasesAndReportMisuse)
{
    for (const auto& testCase : kCases) {
        MPL::TestFixture::s_GaugelySetUpCase = false;
        ClearNotes();
        {
            OneTest test;
            for (const char* step = testCase.steps; *step != 0; ++step) {
                *step == 'C'   ? OneTest::SetUpTestCase()
                : *step == 'T' ? OneTest::TearDownTestCase()
                : *step == 's' ? test.SetUp()
                               : test.TearDown();
            }
        }
        EXPECT_EQ(Text(Steps()), Text(Script(testCase.log))) << testCase.steps;
    }
}

TEST_F(Fixtures, FailTheTestCaseWhenTheDisplayProcessesStay)
{
    MakeImmortal("hmi_main");
    EXPECT_FATAL_FAILURE(
        MPL::TestFixture::SetUpTestCase(),
        "Value of: MPL_TestEnvironment::KillHmiProcesses()\n  Actual: false\nExpected: true");
    EXPECT_TRUE(MPL::TestFixture::s_GaugelySetUpCase);
}

const QString kSetUpPrefix = "debug: MediaSourceTestFixture::SetUpTestCase -";
const QString kSetUpBegin = kSetUpPrefix + "- Register metatypes, use SLM to stop media services, "
                                           "SterilizeEnvironment, and SetEnvironment";

TEST_F(Fixtures, OfMediaSourcesBringTheStackUp)
{
    MPL::MediaSourceTestFixture::SetUpTestCase();
    EXPECT_EQ(Text(Steps()),
              Text((Script("CK") << kSetUpBegin) + kSlmStop + kKillSources + kReset + kReset + kLaunch));
    EXPECT_NE(QMetaType::type("MediaSourceState"), 0);
    EXPECT_TRUE(QDir(kMPLDefaultEnvironment).exists());
}

TEST_F(Fixtures, OfMediaSourcesMakeEveryStepAndOnlyTheLaunchIsFatal)
{
    World().slmRefuses << "media-manager";
    World().saveSource = false;
    World().owned.clear();
    ObstructEnvironment();
    EXPECT_FATAL_FAILURE(MPL::MediaSourceTestFixture::SetUpTestCase(),
                         "Value of: MPL_TestEnvironment::LaunchMediaManagerProcess( true )\n  Actual: false");
    FreeEnvironment();
    EXPECT_EQ(
        Text(Notes(kSetUpPrefix)),
        Text({kSetUpBegin,
              kSetUpPrefix +
                  " Error calling TestEnvironment::SterilizeEnvironment. Attempting to continue anyways.",
              kSetUpPrefix + " Failure setting environment to  \"/var/talvex/media-player/test/\""}));
    EXPECT_EQ(Text(Notes("slm")), "slm stop media-manager");
    EXPECT_EQ(Text(Notes("start")), Text(kLaunch));
}

TEST_F(Fixtures, OfMediaSourcesHandTheStackBackWhateverFails)
{
    const QStringList begin = Script("T")
                              << "debug: MediaSourceTestFixture::TearDownTestCase -- SterilizeEnvironment, "
                                 "CleanEnvironment, and launch media services using SLM";
    MPL::MediaSourceTestFixture::TearDownTestCase();
    EXPECT_EQ(Text(Steps()), Text(begin + kKillSources + kReset + kReset + kSlmStart));

    ClearNotes();
    ASSERT_TRUE(
        MPL_TestEnvironment::SetEnvironment(kMPLDefaultEnvironment, false)); // left standing when cleaned
    World().saveSource = false;
    MPL::MediaSourceTestFixture::TearDownTestCase();
    const QString line = "critical: MediaSourceTestFixture::TearDownTestCase - %1 Reported a failure.";
    EXPECT_EQ(Text(Notes("critical: MediaSourceTestFixture")),
              Text({line.arg("SterilizeEnvironment"), line.arg("CleanEnvironment"),
                    line.arg("SlmLaunchMediaServices")}));
}

TEST_F(Fixtures, WakeOnlyWhoWaitsAlready)
{
    OneTest test;
    test.WakeUp(); // lost
    // A plain thread: the thread sanitizer does not watch what runs inside pthread_once(), as a function
    // object given to QThread or std::async does.
    std::promise<void> done;
    std::future<void> waiter = done.get_future();
    std::thread thread([&test, &done] {
        test.Wait();
        test.Wait();
        done.set_value();
    });
    EXPECT_EQ(waiter.wait_for(std::chrono::milliseconds(100)), std::future_status::timeout);
    // A wake-up may come before the second wait; one of them meets it.
    EXPECT_TRUE(WaitUntil("both waits are over", [&] {
        test.WakeUp();
        return waiter.wait_for(std::chrono::milliseconds(0)) == std::future_status::ready;
    }));
    thread.join();
}

TEST_F(Fixtures, ATestThatEndsEarlyTakesItsThreadAlong)
{
    QPointer<QObject> onThread = new QObject;
    {
        OneTest test;
        onThread->moveToThread(&test.m_Thread);
        QObject::connect(&test.m_Thread, &QThread::finished, onThread, &QObject::deleteLater);
        test.m_Thread.start();
    }
    EXPECT_TRUE(onThread.isNull());
    EXPECT_EQ(Text(Notes()), "");
}

TEST_F(Fixtures, ABoundedWaitEndsWithAWakeUpOrTheThreadOrSaysWhatItWaitedFor)
{
    OneTest test;
    EXPECT_FALSE(test.Wait(10));
    test.m_Thread.start();
    EXPECT_FALSE(test.Wait(250));
    const QString line =
        "critical: TestFixture::Wait -- waited %1 ms for WakeUp() or the end of m_Thread, which %2";
    EXPECT_EQ(Text(Notes()), Text({line.arg(10).arg("was never started"),
                                   line.arg(250).arg("still runs: was QuitTest() reached?")}));
    ClearNotes();

    QTimer waker; // m_Waiting is set by the waits before, so whichever of its wake-ups meets the wait ends it
    waker.moveToThread(&test.m_Thread);
    QObject::connect(&waker, &QTimer::timeout, &waker, [&test] { test.WakeUp(); });
    QMetaObject::invokeMethod(&waker, [&waker] { waker.start(10); });
    EXPECT_TRUE(test.Wait(20000));

    QMetaObject::invokeMethod(&waker, &QTimer::stop, Qt::BlockingQueuedConnection);
    test.QuitTest();
    EXPECT_TRUE(test.Wait(20000));
    EXPECT_TRUE(test.m_Thread.wait(20000));
    EXPECT_TRUE(test.Wait(0)) << "its wake-up came before";
    EXPECT_EQ(Text(Notes()), "");
}

} // namespace
