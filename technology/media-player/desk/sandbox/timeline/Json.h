/// Writes JSON.
#pragma once

#include <string>
#include <string_view>

namespace sandbox
{

/// A text in quotes; what is no UTF-8 in it becomes a question mark.
std::string Quoted(std::string_view aText);

/// The members of an object, one after the other. Texts that are empty are left out.
class JsonObject
{
public:
    JsonObject& Text(const char* aName, std::string_view aText);
    /// As JSON already: a number, an object, an array.
    JsonObject& Raw(const char* aName, const std::string& aJson);

    std::string Json() const { return "{" + m_Members + "}"; }

private:
    std::string m_Members;
};

} // namespace sandbox
