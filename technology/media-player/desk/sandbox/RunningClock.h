/// Another speed for the clock of what runs in the sandbox: its half inside, which starts the clock.
#pragma once

#include "clock/Clock.h"

#include <string>

namespace sandbox
{

/// One clock for all programs of the sandbox, whenever they start. This process does not live by it, nor does
/// what it starts without LD_PRELOAD: the machinery of the sandbox.
struct RunningClock {
    Clock clock;
    std::string preload; ///< LD_PRELOAD for what lives by the clock; empty when it is the machine's
};

/// Starts a clock of that speed with the library that makes it, and sets the environment by which all but
/// LD_PRELOAD find it. False, with the reason, when the library does not do that.
bool StartClock(const std::string& aSpeed, const std::string& aFaketime, RunningClock& aClock,
                std::string& aReason);

/// The first argument of a program that is to tell the clock it runs by.
inline const std::string kClockMark = "--clock";

/// Run preloaded with libfaketime, as the first of the sandbox: prints when its clock started and under which
/// name it is shared. Leaves without the library's clean-up, which would end the sharing.
[[noreturn]] void TellClock();

/// To be called first in main: starts this program anew without the clock when it is run in a sandbox that
/// has one, as a sandbox's own limits are real.
void LeaveClock(char** aArguments);

} // namespace sandbox
