/// The half of mpl-sandbox that runs in the sandbox, as its first process: it makes the bus and the lifecycle
/// manager, runs the program and ends with its status, which ends everything else in there.
#pragma once

#include <string>
#include <vector>

namespace sandbox
{

/// What the half outside passes on. Descriptors are inherited; -1 means none.
struct InsideSettings {
    int stderrFd = -1;       ///< the user's stderr; until it is in place, bubblewrap's messages are collected
    int readyFd = -1;        ///< closed when the sandbox stands: what fails from then on is told by this half
    int recordFd = -1;       ///< traffic of the private test bus
    int recordSystemFd = -1; ///< traffic of the sandbox's own bus
    bool wantsManager = false;     ///< start the lifecycle manager
    bool ignoresInterrupt = false; ///< SIGINT was ignored when mpl-sandbox was started
    std::string noManagerReason;   ///< why there can't be a manager; printed when not empty
    std::vector<std::string> command;
};

/// The settings as command-line arguments, and back.
std::vector<std::string> ToArguments(const InsideSettings& aSettings);
InsideSettings FromArguments(const std::vector<std::string>& aArguments);

/// The first argument of a program that is to run as this half.
inline const std::string kInsideMark = "--inside";

int RunInside(const InsideSettings& aSettings);

} // namespace sandbox
