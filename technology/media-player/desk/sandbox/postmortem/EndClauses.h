/// How a service ended.
#pragma once

#include "Service.h"

#include <string>

namespace sandbox
{

std::string EndClause(const Run& aRun, const Service& aService);

/// What the lifecycle manager says of it; empty when that is nothing bad.
std::string UnitClause(const Service& aService);

} // namespace sandbox
