#include "MessageText.h"

#include <dbus/dbus.h>

#include <cstdio>

namespace sandbox
{

namespace
{

constexpr size_t kLongest = 1000;

void Append(DBusMessageIter& aValue, std::string& aText);

// Those that follow, too.
void AppendAll(DBusMessageIter& aFirst, std::string& aText)
{
    for (bool isFirst = true;
         dbus_message_iter_get_arg_type(&aFirst) != DBUS_TYPE_INVALID && aText.size() < kLongest;
         isFirst = false) {
        aText += isFirst ? "" : ", ";
        Append(aFirst, aText);
        dbus_message_iter_next(&aFirst);
    }
}

void AppendContent(DBusMessageIter& aContainer, const char* aBegin, const char* aEnd, std::string& aText)
{
    DBusMessageIter content;
    dbus_message_iter_recurse(&aContainer, &content);
    aText += aBegin;
    AppendAll(content, aText);
    aText += aEnd;
}

void AppendEntry(DBusMessageIter& aEntry, std::string& aText)
{
    DBusMessageIter content;
    dbus_message_iter_recurse(&aEntry, &content);
    Append(content, aText);
    aText += ": ";
    dbus_message_iter_next(&content);
    Append(content, aText);
}

std::string Number(double aNumber)
{
    char text[32];
    std::snprintf(text, sizeof text, "%g", aNumber);
    return text;
}

void AppendNumber(int aType, const DBusBasicValue& aValue, std::string& aText)
{
    switch (aType) {
    case DBUS_TYPE_BOOLEAN:
        aText += aValue.bool_val != FALSE ? "true" : "false";
        return;
    case DBUS_TYPE_BYTE:
        aText += std::to_string(aValue.byt);
        return;
    case DBUS_TYPE_INT16:
        aText += std::to_string(aValue.i16);
        return;
    case DBUS_TYPE_UINT16:
        aText += std::to_string(aValue.u16);
        return;
    case DBUS_TYPE_INT32:
        aText += std::to_string(aValue.i32);
        return;
    case DBUS_TYPE_UINT32:
        aText += std::to_string(aValue.u32);
        return;
    case DBUS_TYPE_INT64:
        aText += std::to_string(aValue.i64);
        return;
    case DBUS_TYPE_UINT64:
        aText += std::to_string(aValue.u64);
        return;
    case DBUS_TYPE_DOUBLE:
        aText += Number(aValue.dbl);
        return;
    default:
        aText += "(descriptor)"; // whatever number it has in a record says nothing
    }
}

void Append(DBusMessageIter& aValue, std::string& aText)
{
    const int type = dbus_message_iter_get_arg_type(&aValue);
    switch (type) {
    case DBUS_TYPE_ARRAY:
        return dbus_message_iter_get_element_type(&aValue) == DBUS_TYPE_DICT_ENTRY
                   ? AppendContent(aValue, "{", "}", aText)
                   : AppendContent(aValue, "[", "]", aText);
    case DBUS_TYPE_STRUCT:
        return AppendContent(aValue, "(", ")", aText);
    case DBUS_TYPE_VARIANT:
        return AppendContent(aValue, "", "", aText);
    case DBUS_TYPE_DICT_ENTRY:
        return AppendEntry(aValue, aText);
    case DBUS_TYPE_UNIX_FD:
        return AppendNumber(type, {}, aText);
    default:
        break;
    }
    DBusBasicValue value = {};
    dbus_message_iter_get_basic(&aValue, &value);
    if (dbus_type_is_basic(type) != FALSE && type != DBUS_TYPE_STRING && type != DBUS_TYPE_OBJECT_PATH &&
        type != DBUS_TYPE_SIGNATURE) {
        AppendNumber(type, value, aText);
    } else {
        aText += "\"" + std::string(value.str) + "\"";
    }
}

} // namespace

std::string TextOf(DBusMessage* aMessage)
{
    std::string text;
    DBusMessageIter first;
    if (dbus_message_iter_init(aMessage, &first) != FALSE) {
        AppendAll(first, text);
    }
    if (text.size() > kLongest) {
        text.resize(kLongest);
        text += "…";
    }
    return text;
}

} // namespace sandbox
