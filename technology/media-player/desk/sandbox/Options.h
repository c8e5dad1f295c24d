/// The command line of mpl-sandbox.
#pragma once

#include <string>
#include <vector>

namespace sandbox
{

struct Options {
    enum class Action { Run, Help, Version, Refuse };

    Action action = Action::Run;
    std::string problem;     ///< what is wrong and what to do, when the action is Refuse
    std::string stackFolder; ///< absolute, as given or as found; empty when none was found
    std::string recordFile;  ///< where the traffic of the private test bus goes; empty: nowhere
    bool wantsLifecycleManager = true;
    std::vector<std::string> command;
};

Options ParseOptions(const std::vector<std::string>& aArguments);

std::string HelpText();

/// The absolute path of this program's own file.
std::string OwnExecutable();

} // namespace sandbox
