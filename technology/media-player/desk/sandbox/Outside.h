/// The half of mpl-sandbox that stays outside: it makes the sandbox and waits for its end.
#pragma once

#include "Options.h"

namespace sandbox
{

/// Runs the command in a sandbox and returns the status to exit with. Blocks until nothing of the sandbox is
/// left.
int RunOutside(const Options& aOptions);

} // namespace sandbox
