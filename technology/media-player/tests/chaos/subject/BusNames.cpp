#include "BusNames.h"

#include <systemd/sd-bus.h>

namespace chaos
{
namespace
{

constexpr uint64_t kLimitMicroseconds = 40'000'000;

QStringList ReadNames(sd_bus_message* aReply)
{
    QStringList names;
    const char* name = nullptr;
    sd_bus_message_enter_container(aReply, 'a', "s");
    while (sd_bus_message_read(aReply, "s", &name) > 0) {
        if (QByteArray(name).startsWith("com.talvex.")) {
            names << QString::fromLatin1(name);
        }
    }
    return names;
}

bool Connect(sd_bus* aBus, const QByteArray& aAddress)
{
    return sd_bus_set_address(aBus, aAddress.constData()) >= 0 && sd_bus_set_bus_client(aBus, 1) >= 0 &&
           sd_bus_set_method_call_timeout(aBus, kLimitMicroseconds) >= 0 && sd_bus_start(aBus) >= 0;
}

BusSeen AskOnce(const QByteArray& aAddress)
{
    BusSeen seen;
    sd_bus* bus = nullptr;
    sd_bus_new(&bus);
    sd_bus_message* reply = nullptr;
    if (Connect(bus, aAddress) &&
        sd_bus_call_method(bus, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
                           "ListNames", nullptr, &reply, nullptr) >= 0) {
        seen.answers = true;
        seen.names = ReadNames(reply);
    }
    sd_bus_message_unref(reply);
    sd_bus_close_unref(bus);
    return seen;
}

} // namespace

// On a busy machine the first answer may take too long at the sandbox's speed.
BusSeen AskBus(const QByteArray& aAddress)
{
    const BusSeen seen = AskOnce(aAddress);
    return seen.answers ? seen : AskOnce(aAddress);
}

} // namespace chaos
