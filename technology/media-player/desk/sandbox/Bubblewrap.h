/// Runs the half inside under bubblewrap, which makes the sandbox.
#pragma once

#include "InsideSettings.h"

#include <string>
#include <vector>

namespace sandbox
{

struct Streams {
    int out;
    int err;
};

/// Runs bubblewrap with these arguments, streams and the settings for the half inside, whose stderrFd and
/// readyFd it adds. Returns the status to exit with once nothing of the sandbox is left, or at once when
/// bubblewrap was killed: the caller's end is to end the rest then (see RunEnclosed). Where bubblewrap can't
/// make a sandbox, one line says why and what to do.
int RunBubblewrap(std::vector<std::string> aArguments, InsideSettings aSettings, const Streams& aStreams);

} // namespace sandbox
