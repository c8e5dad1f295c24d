#include "PcapFile.h"

#include "BusRecorder.h"
#include "Posix.h"

#include <dbus/dbus.h>

#include <cstdint>
#include <cstring>
#include <ctime>
#include <string>

namespace sandbox
{

namespace
{

struct PcapHeader {
    uint32_t magic = 0xa1b2c3d4;
    uint16_t major = 2;
    uint16_t minor = 4;
    uint32_t zone = 0;
    uint32_t accuracy = 0;
    uint32_t longest = DBUS_MAXIMUM_MESSAGE_LENGTH;
    uint32_t linkType = 231; // D-Bus
};

struct PcapRecord {
    uint32_t seconds;
    uint32_t microseconds;
    uint32_t length;
    uint32_t originalLength;
};

template <typename Struct>
std::string BytesOf(const Struct& aStruct)
{
    std::string bytes(sizeof aStruct, '\0');
    std::memcpy(bytes.data(), &aStruct, sizeof aStruct);
    return bytes;
}

} // namespace

void PcapFile::Begin() const
{
    WriteAll(m_Fd, BytesOf(PcapHeader()));
    if (m_Clock.speed > 1) {
        WriteClock();
    }
}

void PcapFile::Write(DBusMessage* aMessage) const
{
    char* bytes = nullptr;
    int length = 0;
    if (dbus_message_marshal(aMessage, &bytes, &length) == FALSE) {
        return;
    }
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    const long long time = m_Clock.FromMachine(now.tv_sec * kSecond + now.tv_nsec);
    const auto size = static_cast<uint32_t>(length);
    const PcapRecord record = {static_cast<uint32_t>(time / kSecond),
                               static_cast<uint32_t>(time % kSecond / 1000), size, size};
    WriteAll(m_Fd, BytesOf(record) + std::string(bytes, size));
    dbus_free(bytes);
}

void PcapFile::WriteClock() const
{
    DBusMessage* clock = dbus_message_new_signal("/", kRecorderInterface, "Clock");
    const char* sentence =
        "Times are the sandbox's own; its clock runs at this many times the machine's speed.";
    dbus_message_append_args(clock, DBUS_TYPE_DOUBLE, &m_Clock.speed, DBUS_TYPE_STRING, &sentence,
                             DBUS_TYPE_INVALID);
    dbus_message_set_serial(clock, 1);
    Write(clock);
    dbus_message_unref(clock);
}

} // namespace sandbox
