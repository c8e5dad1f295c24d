/// What the sandbox looks like from inside.
#pragma once

#include <string>
#include <vector>

namespace MplSandbox
{

// Folders of the sandbox's own; all of them live in memory and go with it.
inline const std::string PRIVATE_FOLDER = "/run/mpl-sandbox";
inline const std::string PRIVATE_PROGRAM = PRIVATE_FOLDER + "/mpl-sandbox"; ///< this program
inline const std::string PRIVATE_TEMP_FOLDER = PRIVATE_FOLDER + "/tmp";
inline const std::string PRIVATE_UNIT_FOLDER = PRIVATE_FOLDER + "/units";
inline const std::string PRIVATE_STACK_ETC = PRIVATE_FOLDER + "/stack-etc"; ///< the stack's etc, read-only
inline const std::string STACK_FOLDER = "/opt/talvex";
inline const std::string STACK_VARIABLE_FOLDER = "/var/talvex/media-player";
inline const std::string TEST_BUS_SOCKET = STACK_VARIABLE_FOLDER + "/testDbus";

/// The user's private runtime folder, where the sandbox's bus listens.
std::string RuntimeFolder();
std::string BusSocket();
std::string BusAddress();

/// What bubblewrap is told: a new root in memory with the machine's top-level folders bound to their places,
/// except for /run, /opt/talvex and /var/talvex. `aCgroupFolder` becomes the whole cgroup tree; empty: leave
/// the machine's. The caller appends the command.
std::vector<std::string> BubblewrapArguments(const std::string& aStackFolder,
                                             const std::string& aCgroupFolder);

} // namespace MplSandbox
