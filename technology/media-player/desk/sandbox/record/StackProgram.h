/// Which programs are services.
#pragma once

#include "Fact.h"

#include <string>

namespace sandbox
{

/// The name of the service that a program with that path and these arguments is: one of the stack, or a bus
/// daemon that the stack configures. Empty: none.
std::string ServiceName(const std::string& aPath, const std::string& aArguments);

/// The same of a program's start that was seen; empty also when it could not be run.
std::string ServiceOf(const Fact& aExec);

} // namespace sandbox
