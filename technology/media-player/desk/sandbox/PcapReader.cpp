#include "PcapReader.h"

#include "PcapFormat.h"

#include <dbus/dbus.h>

#include <cstring>

namespace sandbox
{

namespace
{

constexpr long long kNanosecondsPerSecond = 1000000000;

template <typename Struct>
bool Read(const std::string& aContent, size_t& aPlace, Struct& aStruct)
{
    if (aContent.size() - aPlace < sizeof aStruct) {
        return false;
    }
    std::memcpy(&aStruct, aContent.data() + aPlace, sizeof aStruct);
    aPlace += sizeof aStruct;
    return true;
}

} // namespace

void MessageCloser::operator()(DBusMessage* aMessage) const
{
    dbus_message_unref(aMessage);
}

void ReadPcap(const std::string& aContent,
              const std::function<void(long long aTime, DBusMessage* aMessage)>& aTake)
{
    size_t place = 0;
    PcapHeader header;
    if (!Read(aContent, place, header) || header.magic != PcapHeader().magic) {
        return;
    }
    PcapRecord record = {};
    while (Read(aContent, place, record) && record.length <= aContent.size() - place) {
        const Message message(
            dbus_message_demarshal(aContent.data() + place, static_cast<int>(record.length), nullptr));
        place += record.length;
        if (message != nullptr) {
            aTake(record.seconds * kNanosecondsPerSecond + record.microseconds * 1000LL, message.get());
        }
    }
}

} // namespace sandbox
