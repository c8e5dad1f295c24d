/// Which process is behind a connection of a bus: the bus knows, and says so when it is asked.
#pragma once

#include "Bus.h"

#include <string>

struct DBusMessage;

namespace sandbox
{

/// The sentence that the first message of a record has about an asker; see PcapFile.
constexpr const char* kAskerSignal = "Asker";

/// A connection beside a monitor's, which itself may not ask. Its answers are read by who reads what the
/// monitor has seen.
class ConnectionAsker
{
public:
    ConnectionAsker() = default;
    explicit ConnectionAsker(const std::string& aAddress) : m_Bus(BusClient::Connect(aAddress)) {}

    /// Its name on the bus; empty without a connection.
    std::string Name() const;

    /// Asks about whoever is there, and who owns which name.
    void AskAboutAll();

    /// Asks about the connection that this message says is new, if it does.
    void AskAboutNew(DBusMessage* aMessage);

    /// Whether there would be no such message without it.
    bool IsOwn(DBusMessage* aMessage) const;

private:
    void Send(const char* aMethod, const std::string& aName);

    BusClient m_Bus;
};

} // namespace sandbox
