/// Control groups that tell whether their sandbox still lives.
#pragma once

#include "Posix.h"

#include <string>

namespace sandbox
{

/// A control group with the lock that its owners hold on it: the kernel lets go of it with the last of them,
/// whatever ended them and whichever process ids they had.
struct OwnedGroup {
    std::string folder; ///< empty when there is none
    UniqueFd lock;
};

/// False once it was removed: the name may be another process id space's by then.
bool IsStill(const OwnedGroup& aGroup);

/// A new group in that one; none, with errno, when it can't be made.
OwnedGroup MakeOwnedGroup(const std::string& aParent);

/// Removes the groups in that one that this user's sandboxes have left: those that were killed together with
/// everything that would have cleaned up. What can't be removed is named on stderr.
void SweepLeftGroups(const std::string& aParent);

} // namespace sandbox
