/// Another speed for the clock of what runs in the sandbox: its half outside, which refuses what can't be
/// had.
#pragma once

#include <string>

namespace sandbox
{

/// The speed that the text names, a number from 1 to 100 such as "10" or "2.5"; 0 when it names none.
double ParseSpeed(const std::string& aText);

/// The library that gives programs another clock; empty when this machine has none.
std::string FindFaketime();

/// Why not every program of the stack can live by another clock; empty when it can.
std::string ObstacleInStack(const std::string& aStackFolder);

/// Ends the sentence that ObstacleInStack and ObstacleToPreloading begin.
std::string WhyNotAtSpeed(const std::string& aSpeed);

} // namespace sandbox
