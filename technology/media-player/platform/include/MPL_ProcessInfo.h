/// @file
/// Processes by executable name, and the service lifecycle manager (SLM) that starts and stops the stack's
/// services.
///
/// Declared here, implemented by the platform: the vehicle's own library, Mpl::PlatformHost on an ordinary
/// Linux machine, or a test's double.
#pragma once

/// Looks processes up by name, and ends them.
class MPL_ProcessInfo
{
public:
    /// Looks for a running process whose executable file has this name (base name, whole, case-sensitive).
    /// Returns its process id, or -1 when none runs. With several, any one of them. Does not wait.
    static int GetPidFromName(const char* aName);

    /// Signals every process of that executable name: SIGTERM, or SIGKILL when `aKill` is true.
    /// Returns true when at least one process was signalled and none refused. Does not wait for their end.
    static bool KillProcess(const char* aName, bool aKill);

    /// Asks the lifecycle manager to start the service of that name ("media-manager").
    /// Blocks the calling thread until the manager reports the job done; the platform bounds the time.
    /// Returns true when the service was started or ran already.
    static bool SlmStartService(const char* aServiceName);

    /// The same for stopping. Returns true when the service is stopped or did not run.
    static bool SlmStopService(const char* aServiceName);
};
