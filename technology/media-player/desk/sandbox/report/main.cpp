// mpl-junit: runs a googletest program, alone or in a sandbox, and keeps a JUnit report of it that survives
// crashes.
#include "../Posix.h"
#include "GoogletestLog.h"

#include <fcntl.h>
#include <getopt.h>
#include <poll.h>
#include <sys/stat.h>
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

// Where both streams end in the same place, both go through the same pipe, so that their order stays.
bool AreSameFile(int aOne, int aOther)
{
    struct stat one = {};
    struct stat other = {};
    return fstat(aOne, &one) == 0 && fstat(aOther, &other) == 0 && one.st_dev == other.st_dev &&
           one.st_ino == other.st_ino;
}

Spawned Start(const std::vector<std::string>& aCommand, int aOutput)
{
    const pid_t self = getpid();
    const bool wasIgnored = std::signal(SIGINT, SIG_IGN) == SIG_IGN;
    return Spawn(aCommand, [&] {
        DieWithParent(self);
        if (!wasIgnored) {
            std::signal(SIGINT, SIG_DFL);
        }
        if (AreSameFile(STDOUT_FILENO, STDERR_FILENO)) {
            dup2(aOutput, STDERR_FILENO);
        }
        dup2(aOutput, STDOUT_FILENO);
    });
}

// Hands on what is there to read and reports it. False when there is nothing.
bool PassOn(int aOutput, GoogletestLog& aLog, const JunitReport& aReport)
{
    char buffer[16384];
    const ssize_t count = read(aOutput, buffer, sizeof buffer);
    if (count <= 0) {
        return count < 0 && errno == EINTR;
    }
    const std::string_view piece(buffer, static_cast<size_t>(count));
    if (aLog.Take(piece)) {
        aReport.Save();
    }
    WriteAll(STDOUT_FILENO, piece);
    return true;
}

// Until the program ends, not until the pipe does: services that the program left running may hold that.
int FollowToItsEnd(pid_t aProgram, int aOutput, GoogletestLog& aLog, const JunitReport& aReport)
{
    const UniqueFd program = HandleOf(aProgram);
    fcntl(aOutput, F_SETFL, O_NONBLOCK);
    pollfd events[] = {{aOutput, POLLIN, 0}, {program.Get(), POLLIN, 0}};
    while (events[1].revents == 0) {
        poll(events, 2, -1);
        if (events[0].revents != 0 && !PassOn(aOutput, aLog, aReport)) {
            events[0].fd = -1;
        }
    }
    while (PassOn(aOutput, aLog, aReport)) {
    }
    return WaitForEnd(aProgram);
}

int ExplainFailure(const std::string& aName, int aError, JunitReport& aReport)
{
    const std::string problem = WithErrno("the program " + aName + " can't be run", aError);
    const int status = aError == ENOENT ? kExitNotFound : kExitCannotRun;
    Say(problem);
    aReport.Finish(problem, status);
    return status;
}

int RunAndReport(const std::vector<std::string>& aCommand, JunitReport& aReport)
{
    Pipe output = MakePipe();
    const Spawned program = Start(aCommand, output.write.Get());
    output.write.Close();
    if (program.pid < 0) {
        return ExplainFailure(aCommand.front(), program.error, aReport);
    }
    GoogletestLog log(aReport);
    const int status = FollowToItsEnd(program.pid, output.read.Get(), log, aReport);
    const std::string how =
        status > 128 ? "signal " + std::to_string(status - 128) : "exit status " + std::to_string(status);
    if (!aReport.Finish(how, status)) {
        Say("the program ended with " + how +
            " before googletest closed its cases, which counts as a failure");
        return 1;
    }
    return status;
}

int Run(const std::string& aFile, const std::vector<std::string>& aCommand)
{
    JunitReport report(std::filesystem::path(aFile).stem().string(), aFile);
    if (!report.Save()) {
        Say(WithErrno("the report can't be written to " + aFile, errno));
        return kExitNoSandbox;
    }
    const int status = RunAndReport(aCommand, report);
    report.Save();
    return status;
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
