/// Looks at what a program prints on its way to where it goes.
#pragma once

#include "Posix.h"

#include <functional>
#include <string_view>

namespace sandbox
{

/// Whether both descriptors end in the same place; then one pipe has to do for both, so that the order stays.
bool AreSameFile(int aOne, int aOther);

class Relay
{
public:
    using Sink = std::function<void(std::string_view aPiece)>;

    /// The program's end of the pipe is `Entry()`; what it writes there goes to `aSink` and to `aTarget`.
    /// Reading never blocks.
    Relay(int aTarget, Sink aSink, Pipe aPassage = MakePipe());

    int Entry() const { return m_Passage.write.Get(); }
    /// Once the program has it.
    void CloseEntry() { m_Passage.write.Close(); }

    /// In a process that leaves the passing on to another.
    void CloseExit() { m_Passage.read.Close(); }

    /// Readable when there is something to pass on; -1 after the end.
    int Exit() const { return m_Passage.read.Get(); }

    /// Passes on what is there. False when there is nothing (more). When the target refuses, the pipe is
    /// closed, so that the program learns of it as it would without us.
    bool PassOn();

    /// All that is there.
    void Drain();

private:
    Pipe m_Passage;
    bool m_IsTerminal; ///< the passage stands for the target, which is one
    int m_Target;
    Sink m_Sink;
};

} // namespace sandbox
