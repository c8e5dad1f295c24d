/// The command line of mpl-sandbox.
#pragma once

#include "timeline/TimelineFiles.h"

#include <string>
#include <vector>

namespace sandbox
{

struct Options {
    enum class Action { Run, List, Enter, TimelineFrom, Help, Version, Refuse };

    Action action = Action::Run;
    std::string problem;              ///< what is wrong and what to do, when the action is Refuse
    std::string stackFolder;          ///< absolute, as given or as found; empty when none was found
    std::string recordFile;           ///< where the traffic of the private test bus goes; empty: nowhere
    TimelineFiles timeline;           ///< where the time line goes; empty: nowhere
    bool isTimelineOfFailure = false; ///< and is kept after a failure only
    std::string recording;            ///< of a run whose time line is to be written
    std::string timeLimit;            ///< of the program, in seconds; empty: none
    std::string speed;                ///< of the clock inside, as a number from 1 to 100
    std::string entered;              ///< the sandbox to enter: a process id or a program's name
    bool wantsLifecycleManager = true;
    bool isKept = false; ///< stay after a failure
    std::vector<std::string> command;
};

/// Takes main's arguments; to be called once.
Options ParseOptions(int aCount, char** aArguments);

extern const char* const kHelpText;

} // namespace sandbox
