// The ready `main` of test programs: the suite runs on a worker thread, the event loop on this one, and the
// exit code says whether the suite ran and passed.
#include "LogPattern.h"
#include "Options.h"
#include "Surroundings.h"
#include <MPL_TestEnvironment.h>
#include <MPL_TestHandler.h>
#include <MPL_Types.h>

#include <QCoreApplication>
#include <QThread>
#include <QTimer>

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

namespace
{

// Starts the private bus on the thread that runs the suite, since the controller's state belongs to it.
// googletest sets environments up only when tests are going to run, and runs none after a fatal failure here.
class PrivateBus : public testing::Environment
{
public:
    void SetUp() override
    {
        ASSERT_TRUE(MPL_TestEnvironment::LaunchMPLTestDbusDaemon())
            << "No test was run: the private test bus can't be started or does not answer.\n"
               "Run the program where the media-player stack is installed or in the sandbox (mpl-sandbox), "
               "or give the option --system-bus to run the tests on the system bus.";
    }
};

constexpr int kExitBadUsage = 2;

int Refuse(const char* aProgram, const std::string& aOption)
{
    std::fprintf(stderr,
                 "%s: unknown option %s. The options are --system-bus, --sandbox and googletest's (see "
                 "--help); the test "
                 "program's own arguments go behind --\n",
                 aProgram, aOption.c_str());
    return kExitBadUsage;
}

int TellThereIsNoStack(const char* aProgram)
{
    std::fprintf(stderr,
                 "%s: no test was run: there is no media-player stack on this machine (no program in "
                 "/opt/talvex/bin), and "
                 "this is no sandbox.\n"
                 "Run it in the sandbox: %s --sandbox\n",
                 aProgram, aProgram);
    return 1;
}

int ExitCode(bool aNoTestWanted)
{
    const testing::UnitTest& suite = *testing::UnitTest::GetInstance();
    const bool started = suite.start_timestamp() != 0;
    if (started) {
        return suite.Passed() ? 0 : 1;
    }
    if (aNoTestWanted || testing::GTEST_FLAG(list_tests)) {
        return 0;
    }
    std::fputs("No test was run: see the messages above (an option that googletest does not know makes it "
               "print its help only).\n",
               stderr);
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    const std::vector<char*> given(argv, argv + argc);
    MPL::SetLogPattern();
    const MPL::TestMainOptions options = MPL::TakeTestMainOptions(argc, argv);
    if (!options.unknown.empty()) {
        return Refuse(argv[0], options.unknown);
    }
    const bool runsTests = !options.help && !options.list;
    if (options.sandbox && runsTests && !MPL::IsInSandbox()) {
        return MPL::RunInSandbox(given);
    }
    // googletest removes its options from a copy; the application's arguments stay complete.
    std::vector<char*> arguments(argv, argv + argc + 1);
    char help[] = "--help"; // the one word for it that every googletest knows
    if (options.help) {
        MPL::PrintTestMainHelp(argv[0]);
        arguments = {argv[0], help, nullptr};
    }
    QCoreApplication application(argc, argv);
    MPL::RegisterAllMetaTypes();
    if (!options.systemBus && runsTests && !MPL::IsThereAStack()) {
        return TellThereIsNoStack(argv[0]);
    }
    if (!options.systemBus) {
        testing::AddGlobalTestEnvironment(new PrivateBus);
    }

    QThread thread;
    auto* handler =
        new MPL::TestHandler(&application, static_cast<int>(arguments.size()) - 1, arguments.data(), &thread);
    handler->Initialize();
    handler->moveToThread(&thread);
    // Started from within the event loop: a suite that ends before the loop has begun could not stop it.
    QTimer::singleShot(0, &application, [&thread] {
        thread.start();
        if (!thread.isRunning() && !thread.isFinished()) {
            QCoreApplication::exit(1);
        }
    });
    QCoreApplication::exec();
    thread.wait();
    return ExitCode(options.help);
}
