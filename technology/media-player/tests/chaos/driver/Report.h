/// What is said of a broken promise.
#pragma once

#include "Promise.h"

namespace chaos
{

/// At which time passes slowly enough that a machine which does nothing else is never too slow.
constexpr double kCarefulSpeed = 10;

bool AreOnlyLate(const Breaches& aBreaches);

/// Prints what was broken, the schedule in words and the command that repeats it. When it is to be shrunk,
/// which takes many runs, it is the smallest part that breaks the first of the promises again.
void Report(const Schedule& aSchedule, const Breaches& aBreaches, double aSpeed, bool aShrink);

/// Prints every call of a run with what it returned, and what was broken.
void Tell(const Schedule& aSchedule, const Observations& aSeen, const Breaches& aBreaches);

} // namespace chaos
