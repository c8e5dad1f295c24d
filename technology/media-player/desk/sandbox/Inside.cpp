#include "Inside.h"

#include "Bus.h"
#include "BusRecorder.h"
#include "LifecycleManager.h"
#include "Posix.h"
#include "World.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <optional>

namespace fs = std::filesystem;

namespace sandbox
{

namespace
{

// The descriptors are for this process alone.
void TakeOver(const InsideSettings& aSettings)
{
    dup2(aSettings.stderrFd, STDERR_FILENO);
    close(aSettings.stderrFd);
    WriteAll(aSettings.readyFd, "+");
    close(aSettings.readyFd);
    for (const int record : {aSettings.recordFd, aSettings.recordSystemFd}) {
        if (record >= 0) {
            fcntl(record, F_SETFD, FD_CLOEXEC);
        }
    }
}

// The stack's etc is a copy, so that a test can change it.
bool CopyStackEtc()
{
    std::error_code error;
    if (!fs::exists(kPrivateStackEtc, error)) {
        return true;
    }
    const fs::path etc = kStackFolder + "/etc";
    fs::copy(kPrivateStackEtc, etc, fs::copy_options::recursive | fs::copy_options::overwrite_existing,
             error);
    if (error) {
        Say("the stack's etc can't be copied: " + error.message());
        return false;
    }
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(etc, error)) {
        fs::permissions(entry.path(), fs::perms::owner_write, fs::perm_options::add, error);
    }
    return true;
}

void SetEnvironment()
{
    setenv("MPL_SANDBOX", "1", 1);
    setenv("XDG_RUNTIME_DIR", RuntimeFolder().c_str(), 1);
    setenv("DBUS_SYSTEM_BUS_ADDRESS", BusAddress().c_str(), 1);
    setenv("DBUS_SESSION_BUS_ADDRESS", BusAddress().c_str(), 1);
    setenv("TMPDIR", kPrivateTempFolder.c_str(), 1);
}

bool StartBus(const InsideSettings& aSettings)
{
    std::string reason = aSettings.noManagerReason;
    const bool hasManager = aSettings.wantsManager && StartLifecycleManager(reason);
    setenv("MPL_SANDBOX_LIFECYCLE_MANAGER", hasManager ? "systemd" : "none", 1);
    if (hasManager) {
        return true;
    }
    if (!reason.empty()) {
        Say("the lifecycle manager is not available (" + reason + "): services can't be handed to it");
    }
    if (!StartPlainBus(reason)) {
        Say(reason);
        return false;
    }
    return true;
}

int RunProgram(const InsideSettings& aSettings)
{
    const Spawned program = Spawn(aSettings.command, [&] {
        if (!aSettings.ignoresInterrupt) {
            std::signal(SIGINT, SIG_DFL);
        }
        std::signal(SIGQUIT, SIG_DFL);
    });
    if (program.pid >= 0) {
        return WaitForEnd(program.pid);
    }
    const std::string& name = aSettings.command.front();
    if (program.error != ENOENT) {
        Say(WithErrno("the program " + name + " can't be run", program.error));
        return kExitCannotRun;
    }
    std::error_code error;
    Say(fs::exists(name, error) && name.find('/') != std::string::npos
            ? "the program " + name + " can't be run: its interpreter is missing"
            : "the program " + name +
                  " was not found; /run, /opt/talvex and /var/talvex of the machine are not "
                  "visible in the sandbox");
    return kExitNotFound;
}

} // namespace

std::vector<std::string> ToArguments(const InsideSettings& aSettings)
{
    std::vector<std::string> arguments = {kInsideMark};
    for (const int value :
         {aSettings.stderrFd, aSettings.readyFd, aSettings.recordFd, aSettings.recordSystemFd,
          aSettings.wantsManager ? 1 : 0, aSettings.ignoresInterrupt ? 1 : 0}) {
        arguments.push_back(std::to_string(value));
    }
    arguments.push_back(aSettings.noManagerReason);
    arguments.insert(arguments.end(), aSettings.command.begin(), aSettings.command.end());
    return arguments;
}

InsideSettings FromArguments(const std::vector<std::string>& aArguments)
{
    constexpr size_t kFirstOfCommand = 8;
    InsideSettings settings;
    if (aArguments.size() <= kFirstOfCommand) {
        return settings;
    }
    int numbers[6];
    for (size_t index = 0; index < 6; ++index) {
        numbers[index] = std::atoi(aArguments[index + 1].c_str());
    }
    settings.stderrFd = numbers[0];
    settings.readyFd = numbers[1];
    settings.recordFd = numbers[2];
    settings.recordSystemFd = numbers[3];
    settings.wantsManager = numbers[4] != 0;
    settings.ignoresInterrupt = numbers[5] != 0;
    settings.noManagerReason = aArguments[7];
    settings.command.assign(aArguments.begin() + kFirstOfCommand, aArguments.end());
    return settings;
}

int RunInside(const InsideSettings& aSettings)
{
    if (aSettings.command.empty()) {
        Say("internal call; see mpl-sandbox --help");
        return kExitBadUsage;
    }
    TakeOver(aSettings);
    SetEnvironment();
    if (!CopyStackEtc() || !StartBus(aSettings)) {
        return kExitNoSandbox;
    }
    std::optional<BusRecorder> system;
    std::optional<BusRecorder> test;
    if (aSettings.recordFd >= 0) {
        system.emplace(BusSocket(), aSettings.recordSystemFd);
        test.emplace(TEST_BUS_SOCKET, aSettings.recordFd);
    }
    return RunProgram(aSettings);
}

} // namespace sandbox
