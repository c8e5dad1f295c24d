/// What the half of mpl-sandbox that stays outside tells the half inside.
#pragma once

#include <string>
#include <vector>

namespace sandbox
{

/// Descriptors are inherited; -1 means none.
struct InsideSettings {
    int stderrFd = -1;       ///< the user's stderr; until it is in place, bubblewrap's messages are collected
    int readyFd = -1;        ///< closed when the sandbox stands: what fails from then on is told by this half
    int recordFd = -1;       ///< traffic of the private test bus
    int recordSystemFd = -1; ///< traffic of the sandbox's own bus
    int factsFd = -1;        ///< what is seen of the run; with it go the next two
    int wholeTestFd = -1;    ///< both buses again, with who is who on them
    int wholeSystemFd = -1;
    bool isLight = false;          ///< see no more than a post-mortem needs
    bool wantsManager = false;     ///< start the lifecycle manager
    bool isKept = false;           ///< stay after a failure
    int outsidePid = 0;            ///< of the half that stays outside
    bool ignoresInterrupt = false; ///< SIGINT was ignored when mpl-sandbox was started
    std::string noManagerReason;   ///< why there can't be a manager; printed when not empty
    std::string timeLimit;         ///< of the program, in real seconds; empty: none
    std::string speed;             ///< of the clock
    std::string faketime;          ///< the library that makes it another; empty at speed 1
    std::string cgroupFolder;      ///< of the machine, the sandbox's own; empty when there is none
    std::string workingFolder;     ///< of the command
    std::vector<std::string> command;
};

/// The first argument of a program that is to run as the half inside.
inline const std::string kInsideMark = "--inside";

/// The settings as arguments that follow the mark: "name=value" for each field, "--", the command.
std::vector<std::string> ToArguments(const InsideSettings& aSettings);
InsideSettings FromArguments(const std::vector<std::string>& aArguments);

} // namespace sandbox
