/// The smallest part of a schedule that still breaks the same promise.
#pragma once

#include "Schedule.h"

#include <functional>

namespace chaos
{

/// Leaves out one step after the other for as long as `aStillBroken` holds of what is left. None of the steps
/// of the result can be missed.
Schedule Shrink(const Schedule& aSchedule, const std::function<bool(const Schedule&)>& aStillBroken);

} // namespace chaos
