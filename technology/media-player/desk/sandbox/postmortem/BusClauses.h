/// How far a service came on the buses.
#pragma once

#include "Service.h"

#include <string>

namespace sandbox
{

/// Whether it joined a bus, and the right one. Each is empty when there is nothing to say.
std::string BusClause(const Run& aRun, const Service& aService);

/// Whether it asked for its name and got it in time.
std::string NameClause(const Run& aRun, const Service& aService);

/// Whether it had the object that was waited for.
std::string ObjectClause(const Run& aRun, const Service& aService);

} // namespace sandbox
