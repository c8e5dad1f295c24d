/// A control group of the sandbox's own, which a systemd user manager needs.
#pragma once

#include "OwnedGroup.h"
#include "Posix.h"

#include <sys/types.h>

#include <string>

namespace sandbox
{

/// A group below the caller's own, in which processes are born: moving one in or out holds everything up
/// until all of the machine's processors have noticed. The group goes away with its last process, even when
/// the caller is killed: a cleaner process that is forked when it is made outlives it by as much as that
/// takes. When the cleaner is killed as well, the next caller removes the group.
class PrivateCgroup
{
public:
    PrivateCgroup() = default;
    PrivateCgroup(const PrivateCgroup&) = delete;
    PrivateCgroup& operator=(const PrivateCgroup&) = delete;
    ~PrivateCgroup() { Remove(); }

    /// False, with the reason, where the machine gives the caller no group to start processes in.
    bool Make(std::string& aReason);

    /// As fork(2), but with the child in the group, if there is one, and in new namespaces of these kinds
    /// (CLONE_NEW…), if the machine lets the caller make them.
    pid_t Fork(unsigned aNamespaces = 0) const;

    /// Ends what is left in the group and waits until it is gone. Nothing to do when it was never made.
    void Remove();

    /// The group's folder in the machine's cgroup tree; empty when not made.
    const std::string& Folder() const { return m_Group.folder; }

private:
    bool StartCleaner();
    bool CanFork() const;

    OwnedGroup m_Group;
    UniqueFd m_Alive; ///< closes when the caller ends: the cleaner's sign to begin
    pid_t m_Cleaner = -1;
};

} // namespace sandbox
