/// The machine's control groups (cgroup2) as folders.
#pragma once

#include <string>

namespace sandbox
{

/// The caller's own group. Empty when the machine has no unified hierarchy mounted, or not this part of it.
std::string OwnGroup();

/// Ends what runs in the group and in those below it, waits for the last of it to go, at most so long, and
/// removes them. False, with errno, when the group is still there then: at once when nothing runs in it.
bool EndGroup(const std::string& aFolder, int aLimitMs);

} // namespace sandbox
