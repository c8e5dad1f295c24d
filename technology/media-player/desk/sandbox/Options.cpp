#include "Options.h"

#include <array>
#include <cstdlib>
#include <filesystem>
#include <system_error>

namespace fs = std::filesystem;

namespace sandbox
{

namespace
{

// Beside this program: first as built, then as installed.
constexpr std::array<const char*, 2> kStackFolders = {"../stack", "../lib/mpl-test-support/stack"};

std::string FindStackFolder()
{
    if (const char* named = std::getenv("MPL_STACK"); named != nullptr && *named != '\0') {
        return fs::absolute(named).lexically_normal().string();
    }
    const fs::path here = fs::path(OwnExecutable()).parent_path();
    for (const char* folder : kStackFolders) {
        const fs::path candidate = (here / folder).lexically_normal();
        std::error_code error;
        if (fs::is_directory(candidate, error)) {
            return candidate.string();
        }
    }
    return {};
}

Options Refuse(const std::string& aProblem)
{
    Options options;
    options.action = Options::Action::Refuse;
    options.problem = aProblem + "; see mpl-sandbox --help";
    return options;
}

// Takes "--name VALUE" or "--name=VALUE" at `aIndex`. False when the argument there has another name.
bool TakeValue(const std::vector<std::string>& aArguments, size_t& aIndex, const std::string& aName,
               std::string& aValue)
{
    const std::string& argument = aArguments[aIndex];
    if (argument.compare(0, aName.size() + 1, aName + "=") == 0) {
        aValue = argument.substr(aName.size() + 1);
        return true;
    }
    if (argument != aName) {
        return false;
    }
    aValue = aIndex + 1 < aArguments.size() ? aArguments[++aIndex] : std::string();
    return true;
}

} // namespace

std::string OwnExecutable()
{
    std::error_code error;
    return fs::read_symlink("/proc/self/exe", error).string();
}

Options ParseOptions(const std::vector<std::string>& aArguments)
{
    Options options;
    size_t index = 0;
    for (; index < aArguments.size() && aArguments[index].compare(0, 1, "-") == 0; ++index) {
        const std::string& argument = aArguments[index];
        std::string value;
        if (argument == "--") {
            ++index;
            break;
        }
        if (argument == "--help" || argument == "--version") {
            options.action = argument == "--help" ? Options::Action::Help : Options::Action::Version;
            return options;
        }
        if (argument == "--no-lifecycle-manager") {
            options.wantsLifecycleManager = false;
        } else if (TakeValue(aArguments, index, "--stack", value)) {
            if (value.empty()) {
                return Refuse("--stack needs the folder of a stack");
            }
            options.stackFolder = fs::absolute(value).lexically_normal().string();
        } else if (TakeValue(aArguments, index, "--record-bus", value)) {
            if (value.empty()) {
                return Refuse("--record-bus needs the file to write");
            }
            options.recordFile = value;
        } else {
            return Refuse("unknown option " + argument);
        }
    }
    options.command.assign(aArguments.begin() + static_cast<std::ptrdiff_t>(index), aArguments.end());
    if (options.command.empty()) {
        return Refuse("no program to run: mpl-sandbox [options] -- program arguments…");
    }
    if (options.stackFolder.empty()) {
        options.stackFolder = FindStackFolder();
    }
    return options;
}

std::string HelpText()
{
    return R"(Usage: mpl-sandbox [options] -- program [arguments…]

Runs a program in a world of its own: a media-player stack in /opt/talvex, an empty /var/talvex, its own
process ids, IPC, /run and D-Bus bus, and a systemd user manager on that bus as service lifecycle manager.
The rest of the machine stays where it is, files included. Everything that the program started dies with it.
No root needed, and any number of sandboxes run at once.

Options:
  --stack DIR             the stack (its bin, test and etc become /opt/talvex/…); the default is the
                          environment variable MPL_STACK, else the simulated stack that came with this program
  --record-bus FILE       keep the traffic of the private test bus in FILE, and that of the sandbox's own bus
                          beside it in <name>.system<extension>, as pcap for Wireshark or Bustle
  --no-lifecycle-manager  start a plain bus only; this is faster
  --help, --version

Inside, the environment says MPL_SANDBOX=1 and MPL_SANDBOX_LIFECYCLE_MANAGER=systemd or none;
DBUS_SYSTEM_BUS_ADDRESS and DBUS_SESSION_BUS_ADDRESS both name the sandbox's bus, and TMPDIR a folder that goes
with the sandbox.

The exit status is the program's, or 128 + N when signal N ended it, or
    2   the command line is wrong
  125   the sandbox can't be set up (a message says why and what to do)
  126   the program can't be run
  127   the program was not found
)";
}

} // namespace sandbox
