#include "InsideSettings.h"

#include <algorithm>
#include <cstdlib>
#include <utility>
#include <variant>

namespace sandbox
{

namespace
{

using Field = std::variant<int InsideSettings::*, bool InsideSettings::*, std::string InsideSettings::*>;

// Writing and reading both go through this table, so the two halves can't disagree.
const std::pair<const char*, Field> kFields[] = {
    {"stderrFd", &InsideSettings::stderrFd},
    {"readyFd", &InsideSettings::readyFd},
    {"recordFd", &InsideSettings::recordFd},
    {"recordSystemFd", &InsideSettings::recordSystemFd},
    {"factsFd", &InsideSettings::factsFd},
    {"wholeTestFd", &InsideSettings::wholeTestFd},
    {"wholeSystemFd", &InsideSettings::wholeSystemFd},
    {"isLight", &InsideSettings::isLight},
    {"wantsManager", &InsideSettings::wantsManager},
    {"isKept", &InsideSettings::isKept},
    {"outsidePid", &InsideSettings::outsidePid},
    {"ignoresInterrupt", &InsideSettings::ignoresInterrupt},
    {"noManagerReason", &InsideSettings::noManagerReason},
    {"timeLimit", &InsideSettings::timeLimit},
    {"speed", &InsideSettings::speed},
    {"faketime", &InsideSettings::faketime},
    {"cgroupFolder", &InsideSettings::cgroupFolder},
    {"workingFolder", &InsideSettings::workingFolder},
};

std::string ToText(int aValue)
{
    return std::to_string(aValue);
}

std::string ToText(const std::string& aValue)
{
    return aValue;
}

void FromText(const std::string& aText, int& aValue)
{
    aValue = std::atoi(aText.c_str());
}

void FromText(const std::string& aText, bool& aValue)
{
    aValue = aText != "0";
}

void FromText(const std::string& aText, std::string& aValue)
{
    aValue = aText;
}

void Take(const std::string& aArgument, InsideSettings& aSettings)
{
    const size_t end = aArgument.find('=');
    for (const auto& [name, field] : kFields) {
        if (aArgument.compare(0, end, name) == 0) {
            std::visit([&](auto aMember) { FromText(aArgument.substr(end + 1), aSettings.*aMember); }, field);
        }
    }
}

} // namespace

std::vector<std::string> ToArguments(const InsideSettings& aSettings)
{
    std::vector<std::string> arguments = {kInsideMark};
    for (const auto& [name, field] : kFields) {
        std::visit(
            [&, fieldName = name](auto aMember) {
                arguments.push_back(std::string(fieldName) + "=" + ToText(aSettings.*aMember));
            },
            field);
    }
    arguments.emplace_back("--");
    arguments.insert(arguments.end(), aSettings.command.begin(), aSettings.command.end());
    return arguments;
}

InsideSettings FromArguments(const std::vector<std::string>& aArguments)
{
    InsideSettings settings;
    const auto end = std::find(aArguments.begin(), aArguments.end(), "--");
    std::for_each(aArguments.begin(), end, [&](const std::string& aArgument) { Take(aArgument, settings); });
    if (end != aArguments.end()) {
        settings.command.assign(end + 1, aArguments.end());
    }
    return settings;
}

} // namespace sandbox
