// mpl-junit: runs a googletest program, alone or in a sandbox, and keeps a JUnit report of it that survives
// crashes.
#include "../Posix.h"
#include "../Relay.h"
#include "../run/GoogletestLog.h"
#include "JunitReport.h"

#include <getopt.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <vector>

using namespace sandbox;

namespace
{

constexpr const char* kHelp = R"(Usage: mpl-junit FILE -- program [arguments…]

Runs a googletest program, or mpl-sandbox with one, and keeps its results in FILE as a JUnit report. The report is
there and whole at every moment: when the program crashes or everything is killed, it holds the cases that ran before
and an error, in the case that was running or outside any. A program that ends before googletest's closing lines gets
an error too, whatever its exit status. Output and exit status are the program's (128 + N when signal N ended it), except
that the status is 1 when the program's was 0 and the report has an error;
2 when the command line is wrong, 125 when FILE can't be written, 126 or 127 when the program can't be run.
)";

Spawned Start(const std::vector<std::string>& aCommand, Relay& aOutput)
{
    const bool wasIgnored = std::signal(SIGINT, SIG_IGN) == SIG_IGN;
    return Spawn(aCommand, [&] {
        aOutput.CloseExit();
        DieWithParent(aOutput.Entry());
        if (!wasIgnored) {
            std::signal(SIGINT, SIG_DFL);
        }
        if (AreSameFile(STDOUT_FILENO, STDERR_FILENO)) {
            dup2(aOutput.Entry(), STDERR_FILENO);
        }
        dup2(aOutput.Entry(), STDOUT_FILENO);
    });
}

// Until the program ends, not until the pipe does: services that the program left running may hold that.
int FollowToItsEnd(pid_t aProgram, Relay& aOutput)
{
    const UniqueFd program = HandleOf(aProgram);
    pollfd events[] = {{aOutput.Exit(), POLLIN, 0}, {program.Get(), POLLIN, 0}};
    while (events[1].revents == 0) {
        poll(events, 2, -1);
        aOutput.PassOn();
        events[0].fd = aOutput.Exit();
    }
    aOutput.Drain();
    return WaitForEnd(aProgram);
}

int ExplainFailure(const std::string& aName, int aError, JunitReport& aReport)
{
    const std::string problem = WithErrno("the program " + aName + " can't be run", aError);
    const int status = aError == ENOENT ? kExitNotFound : kExitCannotRun;
    Say(problem);
    aReport.Finish({}, problem, status);
    return status;
}

int RunAndReport(const std::vector<std::string>& aCommand, JunitReport& aReport)
{
    Cases cases;
    GoogletestLog log(cases);
    Relay output(STDOUT_FILENO, [&](std::string_view aPiece) {
        if (log.Take(aPiece)) {
            aReport.Save(cases);
        }
    });
    const Spawned program = Start(aCommand, output);
    output.CloseEntry();
    if (program.pid < 0) {
        return ExplainFailure(aCommand.front(), program.error, aReport);
    }
    const int status = FollowToItsEnd(program.pid, output);
    log.Finish();
    const std::string how =
        status > 128 ? "signal " + std::to_string(status - 128) : "exit status " + std::to_string(status);
    if (!aReport.Finish(cases, how, status)) {
        Say("the program ended with " + how +
            " before googletest closed its cases, which counts as a failure");
        return 1;
    }
    return status;
}

int Run(const std::string& aFile, const std::vector<std::string>& aCommand)
{
    JunitReport report(std::filesystem::path(aFile).stem().string(), aFile);
    if (!report.Save({})) {
        Say(WithErrno("the report can't be written to " + aFile, errno));
        return kExitNoSandbox;
    }
    return RunAndReport(aCommand, report);
}

} // namespace

int main(int argc, char** argv)
{
    constexpr option kOptions[] = {{"help", no_argument, nullptr, 'h'}, {}};
    const int found = getopt_long(argc, argv, "+", kOptions, nullptr);
    if (found == 'h') {
        std::fputs(kHelp, stdout);
        return 0;
    }
    const std::vector<std::string> arguments(argv + optind, argv + argc);
    if (found != -1 || arguments.size() < 3 || arguments[1] != "--") {
        Say("usage: mpl-junit FILE -- program [arguments…]; see mpl-junit --help");
        return kExitBadUsage;
    }
    return Run(arguments.front(), {arguments.begin() + 2, arguments.end()});
}
