/// The parts of a pcap file with D-Bus messages.
#pragma once

#include <dbus/dbus.h>

#include <cstdint>

namespace sandbox
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

} // namespace sandbox
