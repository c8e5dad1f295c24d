/// Ties what the sandbox is made of to this process, so that nothing of it is left whoever is killed when.
#pragma once

#include "PrivateCgroup.h"

#include <functional>

namespace sandbox
{

/// Runs `aRun` in a process of its own in the control group, and returns what that returns, or 128 + N when
/// signal N ended the process. It is process 1 of a process id space: with its end or this process' end,
/// however they come, the kernel ends everything that was started in there, at whatever stage that is. Where
/// the machine lets the caller make no such space, only the process itself is tied to this one.
int RunEnclosed(const PrivateCgroup& aCgroup, const std::function<int()>& aRun);

} // namespace sandbox
