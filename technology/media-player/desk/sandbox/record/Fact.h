/// What was seen of a run, as it is put down while it goes on: one line each, only ever appended, so that
/// nothing is lost whoever is killed when.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace sandbox
{

struct Fact {
    long long time = 0; ///< nanoseconds since the epoch, on the machine's clock
    std::string kind;   ///< one of those below
    std::vector<std::string> fields;
};

/// The kinds, and their fields in order.
namespace fact
{
inline const std::string kCommand = "command";        ///< argument…
inline const std::string kClock = "clock";            ///< speed, start; missing: the machine's
inline const std::string kLimit = "limit";            ///< seconds: the program ran out of this time
inline const std::string kRoot = "root";              ///< pid: of the sandbox's own that starts all
inline const std::string kProgram = "program";        ///< pid: the program was started
inline const std::string kProgramEnd = "program end"; ///< status as a shell counts it
inline const std::string kEnd = "end";                ///< status of mpl-sandbox; missing: cut off
inline const std::string kLeft = "left";              ///< nobody is there any more to tell how it ended
inline const std::string kExec = "exec"; ///< pid, parent, its parent, problem (empty: none), path, argument…
inline const std::string kFork = "fork";     ///< pid, parent, its parent, start on the machine's clock, name
inline const std::string kExit = "exit";     ///< pid, status: it is about to end with that
inline const std::string kGone = "gone";     ///< pid, "exit" | "signal" | "", number
inline const std::string kCrash = "crash";   ///< pid, signal, then of each frame its file, function and line
inline const std::string kKill = "kill";     ///< sender, target, signal
inline const std::string kPause = "pause";   ///< pid, thread, nanoseconds asked of the machine's clock
inline const std::string kUnit = "unit";     ///< name, state, result, in the lifecycle manager's words
inline const std::string kOutput = "output"; ///< "out" | "err", bytes
} // namespace fact

/// Nanoseconds since the epoch, on the machine's clock.
long long MachineNow();

/// Appends facts to a descriptor, each with one write, so that several processes may do so at once.
class FactLog
{
public:
    explicit FactLog(int aFd = -1) : m_Fd(aFd) {}

    /// No-op without a descriptor.
    void Write(const std::string& aKind, const std::vector<std::string>& aFields) const
    {
        Write({MachineNow(), aKind, aFields});
    }
    void Write(const Fact& aFact) const;

    int Get() const { return m_Fd; }

private:
    int m_Fd;
};

/// Takes what is seen, in the order in which it is.
using FactSink = std::function<void(const Fact&)>;

std::string ToLine(const Fact& aFact);

/// Reads whole lines, and puts them in the order of their times: who writes a fact last need not have seen it
/// last. What is no line, as a last one that was cut off, is left out.
std::vector<Fact> ParseFacts(std::string_view aText);

} // namespace sandbox
