#include "StackProgram.h"

#include "../World.h"

#include <filesystem>

namespace sandbox
{

std::string ServiceName(const std::string& aPath, const std::string& aArguments)
{
    const std::string folder = kStackFolder + "/";
    const std::string name = std::filesystem::path(aPath).filename();
    const bool isConfiguredBus = name == "dbus-daemon" && aArguments.find(folder) != std::string::npos;
    return aPath.rfind(folder, 0) == 0 || isConfiguredBus ? name : std::string();
}

std::string ServiceOf(const Fact& aExec)
{
    constexpr size_t kProblem = 3; // then the path, then the arguments
    if (aExec.fields.size() <= kProblem + 1 || !aExec.fields[kProblem].empty()) {
        return {};
    }
    std::string arguments;
    for (size_t i = kProblem + 2; i < aExec.fields.size(); ++i) {
        arguments += aExec.fields[i] + " ";
    }
    return ServiceName(aExec.fields[kProblem + 1], arguments);
}

} // namespace sandbox
