/// Moments of a run in words.
#pragma once

#include "../run/TestCase.h"

#include <string>

namespace sandbox
{

/// "0.41 s"
std::string Seconds(Moment aMoment);

} // namespace sandbox
