/// The arguments of a D-Bus message for people.
#pragma once

#include <string>

struct DBusMessage;

namespace sandbox
{

/// As in: "text", 3, true, ["a", "b"], {"key": 1}. Cut off when it is long.
std::string TextOf(DBusMessage* aMessage);

} // namespace sandbox
