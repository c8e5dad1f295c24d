/// The part of a bus' traffic that a post-mortem needs, seen from an ordinary connection: a bus daemon prints
/// a line for each monitor.
#pragma once

#include "PcapFile.h"

#include <set>
#include <string>
#include <utility>

struct DBusConnection;
struct DBusMessage;

namespace sandbox
{

class LightTraffic
{
public:
    /// Listens on that connection from now on, and asks for what is there already. What is seen before the
    /// answer waits in the connection's queue. A bus that forbids it leaves out what others send each other.
    LightTraffic(DBusConnection* aConnection, const PcapFile& aFile);

    /// Writes it, if it is a part, and asks about a connection that it says is new.
    void Take(DBusMessage* aMessage);

private:
    bool IsWanted(DBusMessage* aMessage);
    void Ask(const char* aMethod, const char* aName) const;

    DBusConnection* m_Connection;
    const PcapFile& m_File;
    std::string m_Name;
    std::set<std::pair<std::string, unsigned>> m_Calls; ///< caller and serial, without an answer yet
};

} // namespace sandbox
