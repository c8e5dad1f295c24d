/// The sandboxes that run on this machine, found in /proc: nothing keeps a list of them that could be wrong.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace sandbox
{

struct RunningSandbox {
    pid_t pid = 0;       ///< of the mpl-sandbox that was started
    pid_t insidePid = 0; ///< of its half inside, as the machine numbers it
    uid_t user = 0;
    long long ageSeconds = 0;
    std::string speed;
    std::vector<std::string> command;
};

/// All users' sandboxes, the oldest first.
std::vector<RunningSandbox> FindRunning();

/// A table of this user's sandboxes on stdout. The status to end with.
int ListRunning();

} // namespace sandbox
