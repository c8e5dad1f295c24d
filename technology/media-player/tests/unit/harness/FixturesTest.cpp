// The fixtures on a stand-in for the environment controller: which steps they make, in which order, and what
// becomes of each failure.
#include "DoublesTest.h"
#include <MPL_MediaSourceTestFixture.h>
#include <MPL_TestEnvironment.h>
#include <MPL_Types.h>

#include <gtest/gtest-spi.h>

#include <chrono>
#include <future>
#include <thread>

using namespace MPL::Doubles;

namespace
{

// Controller functions that fail.
QStringList s_Failing;

bool Step(const QString& aName, const QString& aRguments)
{
    Note(aName + QLatin1Char('(') + aRguments + QLatin1Char(')'));
    return !s_Failing.contains(aName);
}

QString Boolean(bool aValue)
{
    return aValue ? QStringLiteral("true") : QStringLiteral("false");
}

} // namespace

bool MPL_TestEnvironment::KillHmiProcesses()
{
    return Step(QStringLiteral("KillHmi"), {});
}

bool MPL_TestEnvironment::SlmStopMediaServices()
{
    Note(QStringLiteral("registered ") + Boolean(QMetaType::type("MediaSourceState") != 0));
    return Step(QStringLiteral("SlmStop"), {});
}

bool MPL_TestEnvironment::SlmLaunchMediaServices(bool aActivateDataManager)
{
    return Step(QStringLiteral("SlmLaunch"), Boolean(aActivateDataManager));
}

bool MPL_TestEnvironment::SterilizeEnvironment(bool aActivateDataManager)
{
    return Step(QStringLiteral("Sterilize"), Boolean(aActivateDataManager));
}

bool MPL_TestEnvironment::SetEnvironment(const QString& aDirectory, bool aClean)
{
    return Step(QStringLiteral("Set"), aDirectory + QLatin1Char(' ') + Boolean(aClean));
}

bool MPL_TestEnvironment::CleanEnvironment()
{
    return Step(QStringLiteral("Clean"), {});
}

bool MPL_TestEnvironment::LaunchMediaManagerProcess(bool aActivateDataManager, const char* aExtraArgument)
{
    return Step(QStringLiteral("Launch"), Boolean(aActivateDataManager) + QLatin1String(aExtraArgument));
}

namespace
{

QStringList Lines(const char* aText)
{
    return QString::fromLatin1(aText).split(QLatin1Char('\n'));
}

class OneTest : public MPL::TestFixture
{
public:
    using TestFixture::SetUp;
    using TestFixture::TearDown;

private:
    void TestBody() override {}
};

class FixtureTest : public DoublesTest
{
protected:
    FixtureTest()
    {
        s_Failing.clear();
        MPL::TestFixture::s_GaugelySetUpCase = false;
    }
    ~FixtureTest() override { MPL::TestFixture::s_GaugelySetUpCase = false; }
};

// The lines behind the letters of a test's expectation.
QStringList Script(const char* aLetters)
{
    const QMap<char, const char*> lines{
        {'C', "debug: TestFixture::SetUpTestCase -- Do Gaugely SetUpTestCase"},
        {'K', "KillHmi()"},
        {'s', "debug: TestFixture::SetUp -- Do Gaugely SetUp"},
        {'t', "debug: TestFixture::TearDown -- Do Gaugely Teardown"},
        {'T', "debug: TestFixture::TearDownTestCase -- Do Gaugely TearDownTestCase"},
        {'1', "critical: Gaugely::Std::PerfTestBase::SetUpTestCase has not been called"},
        {'2', "critical: Gaugely::Std::PerfTestBase::TearDown has not been called"},
        {'3', "critical: Previous test case not torn down correctly"}};
    QStringList script;
    for (; *aLetters != 0; ++aLetters) {
        script << QLatin1String(lines.value(*aLetters));
    }
    return script;
}

TEST_F(FixtureTest, TestsAndTestCasesAreBookedAndMisuseIsReported)
{
    // Set-up and tear-down of the test case (C, T) and of the test (s, t), then what is logged until its end.
    const struct {
        const char* steps;
        const char* log;
    } cases[] = {{"CstT", "CKstT"}, {"st", "s1t"}, {"Cs", "CKs2"}, {"CsTt", "CKsTt2"}, {"CCT", "CKC3KT"}};
    for (const auto& testCase : cases) {
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
        EXPECT_EQ(Text(Notes()), Text(Script(testCase.log))) << testCase.steps;
    }
}

TEST_F(FixtureTest, DisplayProcessesThatStayFailTheTestCase)
{
    s_Failing << QStringLiteral("KillHmi");
    EXPECT_FATAL_FAILURE(
        MPL::TestFixture::SetUpTestCase(),
        "Value of: MPL_TestEnvironment::KillHmiProcesses()\n  Actual: false\nExpected: true");
    EXPECT_TRUE(MPL::TestFixture::s_GaugelySetUpCase);
}

TEST_F(FixtureTest, MediaSourceSetUpMakesEveryStepAndOnlyTheLaunchIsFatal)
{
    const QString prefix = QStringLiteral("debug: MediaSourceTestFixture::SetUpTestCase -");
    QStringList steps = Script("CK");
    steps << prefix + QStringLiteral("- Register metatypes, use SLM to stop media services, "
                                     "SterilizeEnvironment, and SetEnvironment")
          << Lines("registered true\nSlmStop()\nSterilize(true)\nSet(/var/talvex/media-player/test/ true)\n"
                   "Launch(true)");
    MPL::MediaSourceTestFixture::SetUpTestCase();
    EXPECT_EQ(Text(Notes()), Text(steps));
    MPL::TestFixture::s_GaugelySetUpCase = false;

    ClearNotes();
    s_Failing = Lines("SlmStop\nSterilize\nSet\nLaunch");
    EXPECT_FATAL_FAILURE(MPL::MediaSourceTestFixture::SetUpTestCase(),
                         "Value of: MPL_TestEnvironment::LaunchMediaManagerProcess( true )\n  Actual: false");
    steps.insert(
        7, prefix + QStringLiteral(" Failure setting environment to  \"/var/talvex/media-player/test/\""));
    steps.insert(6, prefix +
                        QStringLiteral(" Error calling TestEnvironment::SterilizeEnvironment. Attempting to "
                                       "continue anyways."));
    EXPECT_EQ(Text(Notes()), Text(steps));
}

TEST_F(FixtureTest, MediaSourceTearDownMakesEveryStepWhateverFails)
{
    QStringList steps = Script("T");
    steps << QStringLiteral("debug: MediaSourceTestFixture::TearDownTestCase -- SterilizeEnvironment, "
                            "CleanEnvironment, and launch media services using SLM")
          << Lines("Sterilize(true)\nClean()\nSlmLaunch(true)");
    MPL::MediaSourceTestFixture::TearDownTestCase();
    EXPECT_EQ(Text(Notes()), Text(steps));

    ClearNotes();
    s_Failing = Lines("Sterilize\nClean\nSlmLaunch");
    MPL::MediaSourceTestFixture::TearDownTestCase();
    const QString line =
        QStringLiteral("critical: MediaSourceTestFixture::TearDownTestCase - %1 Reported a failure.");
    steps.insert(5, line.arg(QStringLiteral("SlmLaunchMediaServices")));
    steps.insert(4, line.arg(QStringLiteral("CleanEnvironment")));
    steps.insert(3, line.arg(QStringLiteral("SterilizeEnvironment")));
    EXPECT_EQ(Text(Notes()), Text(steps));
}

TEST_F(FixtureTest, WakeUpReleasesOnlyWhoWaitsAlready)
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
    auto status = std::future_status::timeout;
    for (int i = 0; i < 500 && status != std::future_status::ready; ++i) {
        test.WakeUp();
        status = waiter.wait_for(std::chrono::milliseconds(10));
    }
    EXPECT_EQ(status, std::future_status::ready);
    thread.join();
}

} // namespace
