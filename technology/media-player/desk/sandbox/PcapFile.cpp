#include "PcapFile.h"

#include "BusRecorder.h"
#include "PcapFormat.h"
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
    if (!IsThere()) {
        return;
    }
    WriteAll(m_Fd, BytesOf(PcapHeader()));
    if (m_Clock.speed > 1) {
        WriteClock();
    }
}

void PcapFile::Write(DBusMessage* aMessage) const
{
    char* bytes = nullptr;
    int length = 0;
    if (!IsThere() || dbus_message_marshal(aMessage, &bytes, &length) == FALSE) {
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

void PcapFile::Tell(const char* aSignal, const std::string& aText) const
{
    DBusMessage* message = dbus_message_new_signal("/", kRecorderInterface, aSignal);
    const char* text = aText.c_str();
    dbus_message_append_args(message, DBUS_TYPE_STRING, &text, DBUS_TYPE_INVALID);
    WriteOwn(message);
}

void PcapFile::WriteClock() const
{
    DBusMessage* clock = dbus_message_new_signal("/", kRecorderInterface, "Clock");
    const char* sentence =
        "Times are the sandbox's own; its clock runs at this many times the machine's speed.";
    dbus_message_append_args(clock, DBUS_TYPE_DOUBLE, &m_Clock.speed, DBUS_TYPE_STRING, &sentence,
                             DBUS_TYPE_INVALID);
    WriteOwn(clock);
}

void PcapFile::WriteOwn(DBusMessage* aMessage) const
{
    dbus_message_set_serial(aMessage, 1);
    Write(aMessage);
    dbus_message_unref(aMessage);
}

} // namespace sandbox
