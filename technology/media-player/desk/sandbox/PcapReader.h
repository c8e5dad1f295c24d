/// Messages of a bus as pcap: reading them.
#pragma once

#include <functional>
#include <memory>
#include <string>

struct DBusMessage;

namespace sandbox
{

struct MessageCloser {
    void operator()(DBusMessage* aMessage) const;
};
using Message = std::unique_ptr<DBusMessage, MessageCloser>;

/// Calls `aTake` with each message of a file's content and its time in nanoseconds since the epoch, up to
/// where the content ends or is no pcap any more.
void ReadPcap(const std::string& aContent,
              const std::function<void(long long aTime, DBusMessage* aMessage)>& aTake);

} // namespace sandbox
