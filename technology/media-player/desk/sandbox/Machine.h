/// The machine's files at their places in the sandbox.
#pragma once

#include <string>

namespace sandbox
{

/// To be called first in the sandbox. Binds what lies in the machine's /, /opt and /var to the same places,
/// except for what the sandbox has of its own: what is not bound can't be changed from inside, and what the
/// sandbox adds there is not seen outside. Gives the shared memory, and with a folder of a control group the
/// cgroup tree, to the sandbox alone. bubblewrap could do all of this, but reads the whole list of mounts
/// after each. Then gives up the capabilities that this needs. False, with the reason, when something fails.
bool BringInMachine(const std::string& aCgroupFolder, std::string& aReason);

} // namespace sandbox
