/// What there is to say of one service, each cause in its own words.
#pragma once

#include "Service.h"

#include <string>

namespace sandbox
{

/// One line.
std::string WordsFor(const Run& aRun, const Service& aService);

} // namespace sandbox
