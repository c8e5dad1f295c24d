#include "Bus.h"

#include "Posix.h"
#include "World.h"

#include <dbus/dbus.h>

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>

namespace sandbox
{

namespace
{

constexpr int kBusStartLimitMs = 10000;

// No service folders: nothing of the machine is ever started by a call on this bus.
const std::string kConfigurationBegin =
    R"(<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  )";
const std::string kConfigurationEnd = R"(
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow user="*"/>
    <allow own="*"/>
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
  </policy>
</busconfig>
)";

bool IsOwnerOf(const std::string& aName, DBusMessage* aMessage)
{
    const char* name = nullptr;
    const char* before = nullptr;
    const char* after = nullptr;
    return dbus_message_is_signal(aMessage, DBUS_INTERFACE_DBUS, "NameOwnerChanged") != FALSE &&
           dbus_message_get_args(aMessage, nullptr, DBUS_TYPE_STRING, &name, DBUS_TYPE_STRING, &before,
                                 DBUS_TYPE_STRING, &after, DBUS_TYPE_INVALID) != FALSE &&
           aName == name && *after != '\0';
}

// Empties the queue of what has come in. True when it told of the name's owner.
bool QueueHasOwner(DBusConnection* aConnection, const std::string& aName)
{
    bool isOwned = false;
    while (DBusMessage* message = dbus_connection_pop_message(aConnection)) {
        isOwned = isOwned || IsOwnerOf(aName, message);
        dbus_message_unref(message);
    }
    return isOwned;
}

// The daemon prints its address once it listens; the pipe closes without a word when it ends before that.
bool WaitForAddress(int aPipe)
{
    pollfd said = {aPipe, POLLIN, 0};
    char first = '\0';
    return poll(&said, 1, kBusStartLimitMs) == 1 && read(aPipe, &first, 1) == 1;
}

} // namespace

void BusClient::Closer::operator()(DBusConnection* aConnection) const
{
    dbus_connection_close(aConnection);
    dbus_connection_unref(aConnection);
}

BusClient BusClient::Connect(const std::string& aAddress)
{
    BusClient client;
    client.m_Connection.reset(dbus_connection_open_private(aAddress.c_str(), nullptr));
    if (client.m_Connection != nullptr) {
        dbus_connection_set_exit_on_disconnect(client.Get(), FALSE);
        if (dbus_bus_register(client.Get(), nullptr) == FALSE) {
            client.m_Connection.reset();
        }
    }
    return client;
}

bool BusClient::IsConnected() const
{
    return m_Connection != nullptr && dbus_connection_get_is_connected(Get()) != FALSE;
}

bool BusClient::WaitForOwner(const std::string& aName, int aLimitMs) const
{
    const long long end = NowMs() + aLimitMs;
    // Asking only after the rule stands leaves no gap in which the owner could appear unseen.
    dbus_bus_add_match(
        Get(),
        ("type='signal',sender='org.freedesktop.DBus',member='NameOwnerChanged',arg0='" + aName + "'")
            .c_str(),
        nullptr);
    bool isOwned = dbus_bus_name_has_owner(Get(), aName.c_str(), nullptr) != FALSE;
    for (long long left = aLimitMs; !isOwned && left > 0; left = end - NowMs()) {
        // What came in behind the answer to a call waits in the queue; it is looked at before more is
        // awaited.
        isOwned = QueueHasOwner(Get(), aName);
        if (!isOwned && dbus_connection_read_write(Get(), static_cast<int>(left)) == FALSE) {
            break;
        }
    }
    return isOwned || QueueHasOwner(Get(), aName);
}

std::string WriteBusConfiguration()
{
    const std::string path = kPrivateFolder + "/bus.conf";
    const std::string listen = "<listen>" + BusAddress() + "</listen>";
    return WriteTextFile(path, kConfigurationBegin + listen + kConfigurationEnd) ? path : std::string();
}

void BecomeDaemon()
{
    setsid();
    const int nowhere = open("/dev/null", O_RDONLY | O_CLOEXEC);
    dup2(nowhere, STDIN_FILENO);
    dup2(STDERR_FILENO, STDOUT_FILENO);
}

bool StartPlainBus(std::string& aReason)
{
    const UniqueFd messages(open(kBusMessages.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644));
    Pipe address = MakePipe();
    const std::string addressFd = std::to_string(address.write.Get());
    const std::vector<std::string> command = {"dbus-daemon", "--config-file=" + WriteBusConfiguration(),
                                              "--nofork", "--nopidfile", "--print-address=" + addressFd};
    const Spawned daemon = Spawn(command, [&] {
        BecomeDaemon();
        dup2(messages.Get(), STDERR_FILENO);
        fcntl(address.write.Get(), F_SETFD, 0);
    });
    address.write.Close();
    if (daemon.pid < 0) {
        aReason = daemon.error == ENOENT ? "dbus-daemon is missing: install the package dbus-daemon"
                                         : WithErrno("dbus-daemon can't be run", daemon.error);
        return false;
    }
    if (!WaitForAddress(address.read.Get())) {
        aReason =
            "dbus-daemon does not listen at " + BusAddress() + "; it says: " + ReadTextFile(kBusMessages);
        return false;
    }
    return true;
}

} // namespace sandbox
