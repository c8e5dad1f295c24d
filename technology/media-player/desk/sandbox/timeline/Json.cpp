#include "Json.h"

#include "../Utf8.h"

#include <cstdio>

namespace sandbox
{

namespace
{

void AppendByte(char aByte, std::string& aText)
{
    const auto value = static_cast<unsigned char>(aByte);
    if (aByte == '"' || aByte == '\\') {
        aText += '\\';
        aText += aByte;
    } else if (value >= 0x20 && value < 0x7f) {
        aText += aByte;
    } else if (value < 0x20) {
        char escape[8];
        std::snprintf(escape, sizeof escape, "\\u%04x", value);
        aText += escape;
    } else {
        aText += '?';
    }
}

} // namespace

std::string Quoted(std::string_view aText)
{
    std::string quoted = "\"";
    quoted.reserve(aText.size() + 2);
    for (size_t index = 0; index < aText.size();) {
        const size_t length = CharacterLength(aText, index);
        if (length > 1) {
            quoted += aText.substr(index, length);
        } else {
            AppendByte(aText[index], quoted);
        }
        index += length > 1 ? length : 1;
    }
    return quoted += '"';
}

JsonObject& JsonObject::Text(const char* aName, std::string_view aText)
{
    return aText.empty() ? *this : Raw(aName, Quoted(aText));
}

JsonObject& JsonObject::Raw(const char* aName, const std::string& aJson)
{
    m_Members += m_Members.empty() ? "\"" : ",\"";
    m_Members.append(aName).append("\":").append(aJson);
    return *this;
}

} // namespace sandbox
