/// A control group of the sandbox's own, which a systemd user manager needs.
#pragma once

#include "Posix.h"

#include <sys/types.h>

#include <string>

namespace sandbox
{

/// Enter creates a group below the caller's own and moves the caller into it, so that everything it starts is
/// born there. The group goes away with its last process, even when the caller is killed: a cleaner process
/// that is forked on entry outlives it by as much as that takes.
class PrivateCgroup
{
public:
    PrivateCgroup() = default;
    PrivateCgroup(const PrivateCgroup&) = delete;
    PrivateCgroup& operator=(const PrivateCgroup&) = delete;
    ~PrivateCgroup() { Leave(); }

    /// False, with the reason, where the machine gives the caller no group to write to.
    bool Enter(std::string& aReason);

    /// Moves the caller back and waits until the group is gone. Nothing to do when it was never entered.
    void Leave();

    /// The group's folder in the machine's cgroup tree; empty when not entered.
    const std::string& Folder() const { return m_Folder; }

private:
    bool StartCleaner();

    std::string m_Parent;
    std::string m_Folder;
    UniqueFd m_Alive; ///< closes when the caller ends: the cleaner's sign to begin
    pid_t m_Cleaner = -1;
};

} // namespace sandbox
