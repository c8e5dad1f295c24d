/// A run as Chrome trace events, which many viewers open.
#pragma once

#include "../run/Run.h"

#include <string>
#include <vector>

namespace sandbox
{

/// One JSON object with the events and what there is to say of the run as a whole; `aPostMortem` are lines of
/// that.
std::string ChromeTrace(const Run& aRun, const std::vector<std::string>& aPostMortem = {});

} // namespace sandbox
