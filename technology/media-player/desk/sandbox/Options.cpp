#include "Options.h"

#include "Speed.h"
#include "Stack.h"
#include "clock/Clock.h"

#include <getopt.h>

#include <charconv>
#include <cstdlib>
#include <filesystem>

namespace fs = std::filesystem;

namespace sandbox
{

namespace
{

enum OptionId : int {
    kStack = 1,
    kRecordBus,
    kTimeline,
    kTimelineOnFailure,
    kTimelineFrom,
    kTimeLimit,
    kSpeed,
    kNoLifecycleManager,
    kKeep,
    kList,
    kEnter,
    kHelp,
    kVersion
};

constexpr option kOptions[] = {{"stack", required_argument, nullptr, kStack},
                               {"record-bus", required_argument, nullptr, kRecordBus},
                               {"timeline", required_argument, nullptr, kTimeline},
                               {"timeline-on-failure", required_argument, nullptr, kTimelineOnFailure},
                               {"timeline-from", required_argument, nullptr, kTimelineFrom},
                               {"time-limit", required_argument, nullptr, kTimeLimit},
                               {"speed", required_argument, nullptr, kSpeed},
                               {"no-lifecycle-manager", no_argument, nullptr, kNoLifecycleManager},
                               {"keep", no_argument, nullptr, kKeep},
                               {"list", no_argument, nullptr, kList},
                               {"enter", required_argument, nullptr, kEnter},
                               {"help", no_argument, nullptr, kHelp},
                               {"version", no_argument, nullptr, kVersion},
                               {}};

void Refuse(Options& aOptions, const std::string& aProblem)
{
    aOptions.action = Options::Action::Refuse;
    aOptions.problem = aProblem + "; see mpl-sandbox --help";
}

void TakeStack(Options& aOptions, const std::string& aFolder)
{
    if (aFolder.empty()) {
        Refuse(aOptions, "--stack needs the folder of a stack");
    } else {
        aOptions.stackFolder = fs::absolute(aFolder).lexically_normal().string();
    }
}

void TakeRecordFile(Options& aOptions, const std::string& aFile)
{
    aOptions.recordFile = aFile;
    if (aFile.empty()) {
        Refuse(aOptions, "--record-bus needs the file to write");
    }
}

void TakeTimeline(Options& aOptions, bool aIsOfFailure, const std::string& aFile)
{
    aOptions.isTimelineOfFailure = aIsOfFailure;
    aOptions.timeline = {};
    if (const std::string problem = ChooseTimelineFiles(aFile, aOptions.timeline); !problem.empty()) {
        Refuse(aOptions, (aIsOfFailure ? "--timeline-on-failure " : "--timeline ") + problem);
    }
}

void TakeSpeed(Options& aOptions, const std::string& aName, const std::string& aSpeed)
{
    aOptions.speed = aSpeed;
    if (ParseSpeed(aSpeed) == 0) {
        Refuse(aOptions, aName + " needs a number from 1 to 100, such as 10 or 2.5, not '" + aSpeed + "'");
    }
}

void TakeTimeLimit(Options& aOptions, const std::string& aSeconds)
{
    constexpr double kLongest = 1e6;
    double seconds = 0;
    const char* end = aSeconds.data() + aSeconds.size();
    const auto [rest, error] = std::from_chars(aSeconds.data(), end, seconds, std::chars_format::fixed);
    aOptions.timeLimit = aSeconds;
    if (error != std::errc() || rest != end || !(seconds > 0) || seconds > kLongest) {
        Refuse(aOptions,
               "--time-limit needs a number of seconds above 0, such as 300 or 0.5, not '" + aSeconds + "'");
    }
}

// What the command line does not say.
void TakeEnvironment(Options& aOptions)
{
    if (aOptions.stackFolder.empty()) {
        aOptions.stackFolder = FindStackFolder();
    }
    const char* speed = std::getenv(kSpeedVariable);
    if (aOptions.speed.empty()) {
        TakeSpeed(aOptions, kSpeedVariable, speed != nullptr && *speed != '\0' ? speed : "1");
    }
}

// `aText` is the argument as it was given.
void Take(Options& aOptions, int aId, const std::string& aValue, const std::string& aText)
{
    switch (aId) {
    case kStack:
        return TakeStack(aOptions, aValue);
    case kRecordBus:
        return TakeRecordFile(aOptions, aValue);
    case kTimeline:
    case kTimelineOnFailure:
        return TakeTimeline(aOptions, aId == kTimelineOnFailure, aValue);
    case kTimelineFrom:
        aOptions.action = Options::Action::TimelineFrom;
        aOptions.recording = aValue;
        return;
    case kTimeLimit:
        return TakeTimeLimit(aOptions, aValue);
    case kSpeed:
        return TakeSpeed(aOptions, "--speed", aValue);
    case kNoLifecycleManager:
        aOptions.wantsLifecycleManager = false;
        return;
    case kKeep:
        aOptions.isKept = true;
        return;
    case kList:
        aOptions.action = Options::Action::List;
        return;
    case kEnter:
        aOptions.action = Options::Action::Enter;
        aOptions.entered = aValue;
        return;
    case kHelp:
    case kVersion:
        aOptions.action = aId == kHelp ? Options::Action::Help : Options::Action::Version;
        return;
    default:
        return Refuse(aOptions, "unknown option " + aText);
    }
}

} // namespace

Options ParseOptions(int aCount, char** aArguments)
{
    Options options;
    opterr = 0;
    while (options.action == Options::Action::Run || options.action == Options::Action::Enter) {
        const char* text = aArguments[optind];
        // "+": the options end where the program begins; ":": a missing value is told as such.
        const int id = getopt_long(aCount, aArguments, "+:", kOptions, nullptr);
        if (id == -1) {
            break;
        }
        Take(options, id == ':' ? optopt : id, optarg != nullptr ? optarg : "", text);
    }
    if (options.action == Options::Action::Run) {
        TakeEnvironment(options);
    }
    options.command.assign(aArguments + optind, aArguments + aCount);
    if (options.action == Options::Action::Run && options.command.empty()) {
        Refuse(options, "no program to run: mpl-sandbox [options] -- program arguments…");
    }
    return options;
}

const char* const kHelpText = R"(Usage: mpl-sandbox [options] -- program [arguments…]
       mpl-sandbox --list
       mpl-sandbox --enter PID-or-name [-- command [arguments…]]

Runs a program in a world of its own: a media-player stack in /opt/talvex, an empty /var/talvex, its own
process ids, IPC, /run and D-Bus bus, and a systemd user manager on that bus as service lifecycle manager.
The rest of the machine stays where it is, files included. Everything that the program started dies with it.
No root needed, and any number of sandboxes run at once.

Options:
  --stack DIR             the stack (its bin, test and etc become /opt/talvex/…); the default is the
                          environment variable MPL_STACK, else the simulated stack that came with this program
  --record-bus FILE       keep the traffic of the private test bus in FILE, and that of the sandbox's own bus
                          beside it in <name>.system<extension>, as pcap for Wireshark or Bustle
  --timeline FILE         write the run's time line when it ends, however it ends: FILE.html is a page for a browser,
                          FILE.json a Chrome trace, FILE without an extension stands for both
  --timeline-on-failure FILE
                          the same, but keep it only if the run failed
  --timeline-from DIR     write the time line of a run that was killed with everything around it, from the folder
                          FILE.recording that it left
  --time-limit SECONDS    end the program when it has run for so long; always real seconds
  --speed N               let time pass N times as fast, from 1 (the default) to 100, for the program and all
                          that it or the lifecycle manager starts; the default is the environment variable
                          MPL_SANDBOX_SPEED. Not for the sandbox itself: its limits and systemd's are real
  --keep                  when the program fails, let the sandbox stand for an hour, or until Ctrl-C, to look
                          around in it
  --no-lifecycle-manager  start a plain bus only; this is faster
  --list                  the running sandboxes of this user
  --enter PID-or-name     run a command, or a shell, in a running sandbox, named by the process id that --list
                          shows or by the program that it runs
  --help, --version

At the end of its output it says why services did not come up, when the library waited for one in vain or the program
crashed, was killed or ran out of time; and at once which service ended though nobody had asked it to.

Inside, the environment says MPL_SANDBOX=1, MPL_SANDBOX_LIFECYCLE_MANAGER=systemd or none, and MPL_SANDBOX_SPEED;
DBUS_SYSTEM_BUS_ADDRESS and DBUS_SESSION_BUS_ADDRESS both name the sandbox's bus, and TMPDIR a folder that goes
with the sandbox.

The exit status is the program's, or 128 + N when signal N ended it, or
    2   the command line is wrong
  124   the program ran out of its time limit
  125   the sandbox can't be set up (a message says why and what to do)
  126   the program can't be run, or not at that speed
  127   the program was not found
)";

} // namespace sandbox
