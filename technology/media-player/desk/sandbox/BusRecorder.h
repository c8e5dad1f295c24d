/// Keeps the traffic of a bus as pcap.
#pragma once

#include "PcapFile.h"
#include "Posix.h"

#include <sys/types.h>

#include <string>

namespace sandbox
{

/// Of the recorders' own messages.
constexpr const char* kRecorderInterface = "com.talvex.MplSandbox.Recorder";

/// The files that a bus' traffic goes to; either may be none.
struct BusRecord {
    PcapFile traffic;     ///< as it is without being looked at
    PcapFile whole;       ///< and with what the bus answers when it is asked for each connection's process
    bool isLight = false; ///< of the whole no more than a post-mortem needs
};

/// A child process that waits for a bus to listen at a socket, becomes a monitor of it at once, and writes
/// each message with its time to files. When the bus ends it waits for the next one at the same socket.
class BusRecorder
{
public:
    /// Starts recording to files that stay the caller's to close. The folder of the socket must exist.
    /// Where a bus listens already, blocks until the monitor is in place, at most two seconds.
    BusRecorder(std::string aSocket, const BusRecord& aRecord);
    BusRecorder(const BusRecorder&) = delete;
    BusRecorder& operator=(const BusRecorder&) = delete;

    /// Ends the recording; what was sent on the bus before is in the file. Blocks for as long as that takes,
    /// at most two seconds. Of several recorders destroy the one made last first: its process holds the
    /// other's stop pipe, as a child has what its parent had. That of a light record lives as long as the
    /// sandbox.
    ~BusRecorder();

    /// Lets it go on until the sandbox ends.
    void Leave() { m_Process = -1; }

private:
    std::string m_Socket;
    UniqueFd m_Stop; ///< closes when the recording is to end
    UniqueFd m_Done; ///< closes when it has ended
    bool m_StaysConnected = false;
    pid_t m_Process = -1;
};

} // namespace sandbox
