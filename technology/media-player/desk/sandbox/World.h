/// What the sandbox looks like from inside.
#pragma once

#include <string>
#include <vector>

namespace sandbox
{

// Folders of the sandbox's own; all of them live in memory and go with it.
inline const std::string kPrivateFolder = "/run/mpl-sandbox";
inline const std::string kPrivateProgram = kPrivateFolder + "/mpl-sandbox";   ///< this program
inline const std::string kPrivateClock = kPrivateFolder + "/libmpl-clock.so"; ///< where the clock is another
inline const std::string kPrivateManagerLibrary =
    kPrivateFolder + "/libmpl-manager.so"; ///< missing: the manager does without
inline const std::string kPrivateMachine =
    kPrivateFolder + "/machine"; ///< its files, until they are brought in
inline const std::string kPrivateTempFolder = kPrivateFolder + "/tmp";
inline const std::string kPrivateEnvironment =
    kPrivateFolder + "/environment"; ///< what the sandbox sets, a NAME=value each line
inline const std::string kPrivateUnitFolder = kPrivateFolder + "/units";
inline const std::string kPrivateStackEtc = kPrivateFolder + "/stack-etc"; ///< the stack's etc, read-only
inline const std::string kStackFolder = "/opt/talvex";
inline const std::string kStackVariableFolder = "/var/talvex/media-player";
inline const std::string kTestBusSocket = kStackVariableFolder + "/testDbus";

/// The absolute path of this program's own file.
std::string OwnExecutable();

/// A library of this project that programs of the sandbox are made to load; empty when it is not where it is
/// built or installed.
std::string FindOwnLibrary(const std::string& aName);

/// The user's private runtime folder, where the sandbox's bus listens.
std::string RuntimeFolder();
std::string BusSocket();
std::string BusAddress();

/// What of the machine's gets another place inside; empty: nothing does.
struct Places {
    std::string stackFolder;
    std::string clockLibrary;
    std::string managerLibrary;
    bool hasCgroup = false; ///< a control group of its own, which becomes the whole tree
};

/// What bubblewrap is told: a new root in memory with the stack, an empty /run, what a program needs to
/// start, and all of the machine in kPrivateMachine for BringInMachine. The caller appends the command.
std::vector<std::string> BubblewrapArguments(const Places& aPlaces);

} // namespace sandbox
