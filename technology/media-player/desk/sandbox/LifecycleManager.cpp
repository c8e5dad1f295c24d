#include "LifecycleManager.h"

#include "Bus.h"
#include "Posix.h"
#include "World.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <map>

namespace sandbox
{

namespace
{

constexpr int kStartLimitMs = 20000;
constexpr int kNameLimitMs = 10000;
const std::string kTarget = "mpl-sandbox.target";
const std::string kBare = "[Unit]\nDefaultDependencies=no\n";

// The manager connects to its bus, and takes its name there, once a unit of this name runs. Bus and manager
// keep the machine's clock: they only talk to each other, and a limit that shrinks could only break that.
std::string BusUnit()
{
    return kBare + "Requires=dbus.socket\n[Service]\nUnsetEnvironment=LD_PRELOAD\nStandardError=append:" +
           kBusMessages + "\nExecStart=dbus-daemon --config-file=" + WriteBusConfiguration() +
           " --address=systemd: --nofork --nopidfile --systemd-activation\n";
}

bool WriteUnits(const std::string& aPreload)
{
    // The stack's units depend on basic.target and shutdown.target as any unit does.
    std::map<std::string, std::string> units = {
        {"basic.target", kBare},
        {"shutdown.target", kBare},
        {kTarget, "[Unit]\nRequires=dbus.service\nAfter=dbus.service\n"},
        {"dbus.socket", kBare + "[Socket]\nListenStream=" + BusSocket() + "\n"},
        {"dbus.service", BusUnit()}};
    if (!aPreload.empty()) {
        // Added to every service.
        units["service.d/clock.conf"] = "[Service]\nEnvironment=LD_PRELOAD=" + aPreload + "\n";
        mkdir((kPrivateUnitFolder + "/service.d").c_str(), 0755);
    }
    return std::all_of(units.begin(), units.end(), [](const auto& aUnit) {
        return WriteTextFile(kPrivateUnitFolder + "/" + aUnit.first, aUnit.second);
    });
}

// The socket on which the manager says that its target is reached.
UniqueFd ListenForReadiness(const std::string& aPath)
{
    UniqueFd listener(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, aPath.c_str(), sizeof address.sun_path - 1);
    if (bind(listener.Get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0) {
        listener.Close();
    }
    return listener;
}

bool SaysReady(int aListener)
{
    char text[4096];
    const ssize_t length = recv(aListener, text, sizeof text, MSG_DONTWAIT);
    const std::string message = "\n" + std::string(text, length > 0 ? static_cast<size_t>(length) : 0) + "\n";
    return message.find("\nREADY=1\n") != std::string::npos;
}

// Returns when the manager is ready, has ended or the time is over. False unless it is ready.
bool WaitForReadiness(pid_t aManager, int aListener)
{
    const long long end = NowMs() + kStartLimitMs;
    const UniqueFd manager = HandleOf(aManager);
    for (long long left = kStartLimitMs; left > 0; left = end - NowMs()) {
        pollfd events[] = {{aListener, POLLIN, 0}, {manager.Get(), POLLIN, 0}};
        if (poll(events, 2, static_cast<int>(left)) < 0 && errno != EINTR) {
            return false;
        }
        if (events[0].revents != 0 && SaysReady(aListener)) {
            return true;
        }
        if (events[1].revents != 0) {
            return false;
        }
    }
    return false;
}

// Runs in the child that becomes the manager.
void PrepareManager(const std::string& aNotifySocket)
{
    BecomeDaemon();
    const std::string units = kPrivateUnitFolder + ":" + kStackFolder + "/etc/systemd";
    setenv("SYSTEMD_UNIT_PATH", units.c_str(), 1);
    // Generators are programs of the machine that make units; none of them is asked.
    setenv("SYSTEMD_GENERATOR_PATH", "/nonexistent", 1);
    setenv("SYSTEMD_ENVIRONMENT_GENERATOR_PATH", "/nonexistent", 1);
    setenv("NOTIFY_SOCKET", aNotifySocket.c_str(), 1);
    if (access(kPrivateManagerLibrary.c_str(), R_OK) == 0) {
        const char* given = std::getenv("LD_PRELOAD");
        const std::string others =
            given != nullptr && *given != '\0' ? ":" + std::string(given) : std::string();
        setenv("LD_PRELOAD", (kPrivateManagerLibrary + others).c_str(), 1);
    }
}

Spawned SpawnManager(const std::string& aNotifySocket)
{
    // Its own messages would go to the machine's console; the services' output goes to the program's stderr.
    std::vector<std::string> command = {"",
                                        "--user",
                                        "--unit=" + kTarget,
                                        "--log-target=null",
                                        "--default-standard-output=inherit",
                                        "--default-standard-error=inherit"};
    Spawned manager = {-1, ENOENT};
    for (const char* program : {"/usr/lib/systemd/systemd", "/lib/systemd/systemd"}) {
        if (manager.error == ENOENT) {
            command.front() = program;
            manager = Spawn(command, [&] { PrepareManager(aNotifySocket); });
        }
    }
    return manager;
}

// Starts the manager and waits until it is on its bus. Its process is in `aManager` when there is one.
bool BringUp(const std::string& aPreload, Spawned& aManager, std::string& aReason)
{
    const std::string notifySocket = kPrivateFolder + "/notify";
    const UniqueFd listener = ListenForReadiness(notifySocket);
    if (!listener.IsValid() || !WriteUnits(aPreload)) {
        aReason = WithErrno("its units can't be written to " + kPrivateUnitFolder, errno);
        return false;
    }
    aManager = SpawnManager(notifySocket);
    if (aManager.pid < 0) {
        aReason = aManager.error == ENOENT ? "systemd is missing: install the package systemd"
                                           : WithErrno("systemd can't be run", aManager.error);
        return false;
    }
    if (!WaitForReadiness(aManager.pid, listener.Get())) {
        aReason = "systemd --user did not come up";
        return false;
    }
    const BusClient bus = BusClient::Connect(BusAddress());
    aReason = "systemd --user did not appear on its bus";
    return bus.IsConnected() && bus.WaitForOwner("org.freedesktop.systemd1", kNameLimitMs);
}

} // namespace

bool StartLifecycleManager(const std::string& aPreload, std::string& aReason)
{
    Spawned manager = {-1, 0};
    const bool isUp = BringUp(aPreload, manager, aReason);
    if (!isUp && manager.pid > 0) {
        kill(manager.pid, SIGKILL);
        WaitForEnd(manager.pid);
    }
    return isUp;
}

} // namespace sandbox
