#include "UnwellUnits.h"

#include "../Bus.h"

#include <dbus/dbus.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace sandbox
{

namespace
{

constexpr int kLimitMs = 2000;
constexpr const char* kManager = "org.freedesktop.systemd1";
constexpr const char* kService = ".service";

struct ListedUnit {
    std::string name;
    std::string state;
    std::string path;
};

// The answer, to be given back with dbus_message_unref; nullptr: none. The arguments are texts.
DBusMessage* Ask(const BusClient& aBus, const std::string& aPath, const char* aInterface, const char* aMethod,
                 const std::vector<const char*>& aArguments)
{
    DBusMessage* call = dbus_message_new_method_call(kManager, aPath.c_str(), aInterface, aMethod);
    for (const char* argument : aArguments) {
        dbus_message_append_args(call, DBUS_TYPE_STRING, &argument, DBUS_TYPE_INVALID);
    }
    DBusMessage* reply = dbus_connection_send_with_reply_and_block(aBus.Get(), call, kLimitMs, nullptr);
    dbus_message_unref(call);
    return reply;
}

// The first texts of a structure, object paths included.
std::vector<std::string> TextsIn(DBusMessageIter* aStructure)
{
    std::vector<std::string> texts;
    DBusMessageIter field;
    dbus_message_iter_recurse(aStructure, &field);
    do {
        const int type = dbus_message_iter_get_arg_type(&field);
        if (type != DBUS_TYPE_STRING && type != DBUS_TYPE_OBJECT_PATH) {
            break;
        }
        const char* text = "";
        dbus_message_iter_get_basic(&field, &text);
        texts.emplace_back(text);
    } while (dbus_message_iter_next(&field) != FALSE);
    return texts;
}

bool IsService(const std::string& aUnit)
{
    const size_t end = aUnit.rfind(kService);
    return end != std::string::npos && end + std::strlen(kService) == aUnit.size();
}

// Name, description, load state, active state, sub-state, the unit it follows, object path…
std::vector<ListedUnit> UnwellUnitsIn(DBusMessage* aList)
{
    std::vector<ListedUnit> units;
    DBusMessageIter list;
    DBusMessageIter entry;
    dbus_message_iter_init(aList, &list);
    for (dbus_message_iter_recurse(&list, &entry); dbus_message_iter_get_arg_type(&entry) == DBUS_TYPE_STRUCT;
         dbus_message_iter_next(&entry)) {
        const std::vector<std::string> texts = TextsIn(&entry);
        if (texts.size() > 6 && IsService(texts[0]) && texts[3] != "active" && texts[3] != "inactive") {
            units.push_back({texts[0], texts[3] + " (" + texts[4] + ")", texts[6]});
        }
    }
    return units;
}

std::string ResultOf(const BusClient& aBus, const std::string& aPath)
{
    DBusMessage* reply =
        Ask(aBus, aPath, DBUS_INTERFACE_PROPERTIES, "Get", {"org.freedesktop.systemd1.Service", "Result"});
    DBusMessageIter variant;
    std::string result;
    if (reply != nullptr && dbus_message_iter_init(reply, &variant) != FALSE &&
        dbus_message_iter_get_arg_type(&variant) == DBUS_TYPE_VARIANT) {
        const std::vector<std::string> texts = TextsIn(&variant);
        result = texts.empty() ? "" : texts.front();
    }
    if (reply != nullptr) {
        dbus_message_unref(reply);
    }
    return result;
}

} // namespace

void NoteUnwellUnits(const FactLog& aFacts)
{
    const char* manager = std::getenv("MPL_SANDBOX_LIFECYCLE_MANAGER");
    if (aFacts.Get() < 0 || manager == nullptr || std::string(manager) != "systemd") {
        return;
    }
    const BusClient bus = BusClient::Connect(BusAddress());
    DBusMessage* list = bus.IsConnected() ? Ask(bus, "/org/freedesktop/systemd1",
                                                "org.freedesktop.systemd1.Manager", "ListUnits", {})
                                          : nullptr;
    if (list == nullptr) {
        return;
    }
    if (dbus_message_get_type(list) == DBUS_MESSAGE_TYPE_METHOD_RETURN) {
        for (const ListedUnit& unit : UnwellUnitsIn(list)) {
            aFacts.Write(fact::kUnit, {unit.name, unit.state, ResultOf(bus, unit.path)});
        }
    }
    dbus_message_unref(list);
}

} // namespace sandbox
