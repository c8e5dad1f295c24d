/// The few system calls that tell what processes do to each other, seen as they are made: the kernel holds
/// the caller until whoever listens has looked.
#pragma once

#include "../Posix.h"

#include <sys/types.h>

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace sandbox
{

/// What is told beside the starts and ends of programs and the signals between processes.
struct Wanted {
    bool pauses = false;
    bool out = false; ///< what is written to the descriptors of stdout and stderr
    bool err = false;
};

/// Of this thread and all that it starts from now on, these calls are told to the descriptor that is
/// returned. Without somebody who listens they would hang. Invalid, with errno, where the kernel does not do
/// that. There must be no way to new privileges, as bubblewrap makes it.
UniqueFd TellSystemCalls(const Wanted& aWanted);

/// One call; its caller waits for LetGo.
struct SystemCall {
    uint64_t id = 0;
    pid_t thread = 0;
    long number = 0;
    std::array<uint64_t, 6> arguments{};
};

/// Nothing when there is none, or no more: its caller was killed.
std::optional<SystemCall> ReceiveCall(int aListener);

/// Lets it be made as if nobody had looked. False when it is not, as its caller was killed meanwhile.
bool LetGo(int aListener, const SystemCall& aCall);

/// What the caller has at that address, as far as it can be read; at most so many bytes.
std::string ReadMemory(pid_t aProcess, uint64_t aAddress, size_t aSize);

/// A text with an end, and the texts of a vector such as argv.
std::string ReadText(pid_t aProcess, uint64_t aAddress);
std::vector<std::string> ReadTexts(pid_t aProcess, uint64_t aAddress);

} // namespace sandbox
