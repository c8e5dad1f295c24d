/// The sandbox's own bus, and a small client of any bus.
#pragma once

#include "World.h"

#include <memory>
#include <string>

struct DBusConnection;

namespace sandbox
{

/// A private connection to a bus, used from one thread.
class BusClient
{
public:
    /// Connects and registers; an unconnected client when no bus answers at that address. Blocks for that
    /// long.
    static BusClient Connect(const std::string& aAddress);

    bool IsConnected() const;

    /// Blocks until the name has an owner, at most `aLimitMs` milliseconds. False when it has none by then.
    bool WaitForOwner(const std::string& aName, int aLimitMs) const;

    DBusConnection* Get() const { return m_Connection.get(); }

private:
    struct Closer {
        void operator()(DBusConnection* aConnection) const;
    };
    std::unique_ptr<DBusConnection, Closer> m_Connection;
};

/// Where the bus daemon's own messages go.
inline const std::string kBusMessages = kPrivateFolder + "/bus.log";

/// Writes the configuration of the sandbox's bus: everybody may own and send anything. Returns the file's
/// path; empty when it could not be written.
std::string WriteBusConfiguration();

/// Starts a bus daemon at BusAddress() and blocks until it listens. False, with the reason, when it does not.
bool StartPlainBus(std::string& aReason);

/// To be called in the fresh child that becomes a daemon of the sandbox: out of the terminal's reach, and its
/// output to stderr, as stdout is the program's.
void BecomeDaemon();

} // namespace sandbox
