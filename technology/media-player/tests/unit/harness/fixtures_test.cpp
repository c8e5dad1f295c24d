// The fixtures on a stand-in for the environment controller: which steps they make, in which order, and what
// becomes of each failure.
#include <DoublesTest.h>

#include <MPL_MediaSourceTestFixture.h>
#include <MPL_TestEnvironment.h>
#include <MPL_Types.h>

#include <gtest/gtest-spi.h>

#include <chrono>
#include <future>
#include <memory>
#include <thread>

using namespace MPL::Doubles;

namespace
{

// Controller functions that fail.
QStringList failing;

bool Step(const QString& name, const QString& arguments)
{
    Note(name + QLatin1Char('(') + arguments + QLatin1Char(')'));
    return !failing.contains(name);
}

QString Boolean(bool value)
{
    return value ? QStringLiteral("true") : QStringLiteral("false");
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

bool MPL_TestEnvironment::SetEnvironment(const QString& directory, bool clean)
{
    return Step(QStringLiteral("Set"), directory + QLatin1Char(' ') + Boolean(clean));
}

bool MPL_TestEnvironment::CleanEnvironment()
{
    return Step(QStringLiteral("Clean"), {});
}

bool MPL_TestEnvironment::LaunchMediaManagerProcess(bool aActivateDataManager, char const* aExtraArgument)
{
    return Step(QStringLiteral("Launch"), Boolean(aActivateDataManager) + QLatin1String(aExtraArgument));
}

namespace
{

QStringList Lines(const char* text)
{
    QStringList lines = QString::fromLatin1(text).split(QLatin1Char('\n'));
    lines.removeAll(QString());
    return lines;
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
        failing.clear();
        MPL::TestFixture::s_GaugelySetUpCase = false;
    }
    ~FixtureTest() override { MPL::TestFixture::s_GaugelySetUpCase = false; }
};

TEST_F(FixtureTest, TestsAndTestCasesAreBookedAndMisuseIsReported)
{
    const struct {
        const char* steps;
        const char* log;
    } cases[] = {
        {"CstT", "debug: TestFixture::SetUpTestCase -- Do Gaugely SetUpTestCase\nKillHmi()\n"
                 "debug: TestFixture::SetUp -- Do Gaugely SetUp\n"
                 "debug: TestFixture::TearDown -- Do Gaugely Teardown\n"
                 "debug: TestFixture::TearDownTestCase -- Do Gaugely TearDownTestCase"},
        {"st", "debug: TestFixture::SetUp -- Do Gaugely SetUp\n"
               "critical: Gaugely::Std::PerfTestBase::SetUpTestCase has not been called\n"
               "debug: TestFixture::TearDown -- Do Gaugely Teardown"},
        {"Cs", "debug: TestFixture::SetUpTestCase -- Do Gaugely SetUpTestCase\nKillHmi()\n"
               "debug: TestFixture::SetUp -- Do Gaugely SetUp\n"
               "critical: Gaugely::Std::PerfTestBase::TearDown has not been called"},
        {"CsTt", "debug: TestFixture::SetUpTestCase -- Do Gaugely SetUpTestCase\nKillHmi()\n"
                 "debug: TestFixture::SetUp -- Do Gaugely SetUp\n"
                 "debug: TestFixture::TearDownTestCase -- Do Gaugely TearDownTestCase\n"
                 "debug: TestFixture::TearDown -- Do Gaugely Teardown\n"
                 "critical: Gaugely::Std::PerfTestBase::TearDown has not been called"},
        {"CCT", "debug: TestFixture::SetUpTestCase -- Do Gaugely SetUpTestCase\nKillHmi()\n"
                "debug: TestFixture::SetUpTestCase -- Do Gaugely SetUpTestCase\n"
                "critical: Previous test case not torn down correctly\nKillHmi()\n"
                "debug: TestFixture::TearDownTestCase -- Do Gaugely TearDownTestCase"},
    };
    for (const auto& testCase : cases) {
        MPL::TestFixture::s_GaugelySetUpCase = false;
        ClearNotes();
        auto test = std::make_unique<OneTest>();
        for (const char step : std::string(testCase.steps)) {
            switch (step) {
            case 'C':
                OneTest::SetUpTestCase();
                break;
            case 'T':
                OneTest::TearDownTestCase();
                break;
            case 's':
                test->SetUp();
                break;
            default:
                test->TearDown();
            }
        }
        test.reset();
        EXPECT_EQ(Text(Notes()), Text(Lines(testCase.log))) << testCase.steps;
    }
}

TEST_F(FixtureTest, DisplayProcessesThatStayFailTheTestCase)
{
    failing << QStringLiteral("KillHmi");
    EXPECT_FATAL_FAILURE(
        MPL::TestFixture::SetUpTestCase(),
        "Value of: MPL_TestEnvironment::KillHmiProcesses()\n  Actual: false\nExpected: true");
    EXPECT_TRUE(MPL::TestFixture::s_GaugelySetUpCase);
}

const char* const setUpSteps =
    "debug: TestFixture::SetUpTestCase -- Do Gaugely SetUpTestCase\n"
    "KillHmi()\n"
    "debug: MediaSourceTestFixture::SetUpTestCase -- Register metatypes, use SLM to stop media services, "
    "SterilizeEnvironment, and SetEnvironment\n"
    "registered true\n"
    "SlmStop()\n"
    "Sterilize(true)\n%1"
    "Set(/var/talvex/media-player/test/ true)\n%2"
    "Launch(true)";

TEST_F(FixtureTest, MediaSourceSetUpMakesEveryStepAndOnlyTheLaunchIsFatal)
{
    MPL::MediaSourceTestFixture::SetUpTestCase();
    EXPECT_EQ(Text(Notes()),
              Text(Lines(qPrintable(QString::fromLatin1(setUpSteps).arg(QString(), QString())))));
    MPL::TestFixture::s_GaugelySetUpCase = false;

    ClearNotes();
    failing = Lines("SlmStop\nSterilize\nSet\nLaunch");
    EXPECT_FATAL_FAILURE(MPL::MediaSourceTestFixture::SetUpTestCase(),
                         "Value of: MPL_TestEnvironment::LaunchMediaManagerProcess( true )\n  Actual: false");
    EXPECT_EQ(
        Text(Notes()),
        Text(Lines(qPrintable(
            QString::fromLatin1(setUpSteps)
                .arg(QStringLiteral(
                         "debug: MediaSourceTestFixture::SetUpTestCase - Error calling "
                         "TestEnvironment::SterilizeEnvironment. Attempting to continue anyways.\n"),
                     QStringLiteral(
                         "debug: MediaSourceTestFixture::SetUpTestCase - Failure setting environment to  "
                         "\"/var/talvex/media-player/test/\"\n"))))));
}

const char* const tearDownSteps =
    "debug: TestFixture::TearDownTestCase -- Do Gaugely TearDownTestCase\n"
    "debug: MediaSourceTestFixture::TearDownTestCase -- SterilizeEnvironment, CleanEnvironment, and launch "
    "media services using SLM\n"
    "Sterilize(true)\n%1"
    "Clean()\n%2"
    "SlmLaunch(true)\n%3";

TEST_F(FixtureTest, MediaSourceTearDownMakesEveryStepWhateverFails)
{
    MPL::MediaSourceTestFixture::TearDownTestCase();
    EXPECT_EQ(
        Text(Notes()),
        Text(Lines(qPrintable(QString::fromLatin1(tearDownSteps).arg(QString(), QString(), QString())))));

    ClearNotes();
    failing = Lines("Sterilize\nClean\nSlmLaunch");
    MPL::MediaSourceTestFixture::TearDownTestCase();
    const QString line =
        QStringLiteral("critical: MediaSourceTestFixture::TearDownTestCase - %1 Reported a failure.\n");
    EXPECT_EQ(Text(Notes()),
              Text(Lines(qPrintable(QString::fromLatin1(tearDownSteps)
                                        .arg(line.arg(QStringLiteral("SterilizeEnvironment")),
                                             line.arg(QStringLiteral("CleanEnvironment")),
                                             line.arg(QStringLiteral("SlmLaunchMediaServices")))))));
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
