/// The half of mpl-sandbox that runs in the sandbox, as its first process: it makes the bus and the lifecycle
/// manager, runs the program and ends with its status, which ends everything else in there.
#pragma once

#include "InsideSettings.h"

namespace sandbox
{

int RunInside(const InsideSettings& aSettings);

} // namespace sandbox
