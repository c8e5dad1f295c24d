#pragma once

#include <string>

namespace sandbox
{

/// A page, whole in one file, that draws the run of a trace: `aTrace` is the text of one JSON object with
/// Chrome trace events. The page carries the trace as JSON with the same meaning, so that it can be read out
/// again.
///     file << TimelinePage(trace);
std::string TimelinePage(const std::string& aTrace);

} // namespace sandbox
