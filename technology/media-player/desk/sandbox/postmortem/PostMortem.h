/// Why a run failed, in a few lines.
#pragma once

#include "../run/Run.h"

#include <string>
#include <vector>

namespace sandbox
{

/// Whether it ended in a way that asks for an explanation: its program crashed, was killed or ran out of
/// time, or the sandbox was killed under it.
bool EndedBadly(const Run& aRun);

/// Whether there is anything to explain that is known without the buses' traffic: it ended badly, or the
/// library waited in vain.
bool NeedsPostMortem(const Run& aRun);

/// A headline and a line for each service that was launched or waited for, fifteen lines at most. None when
/// there is nothing to explain.
std::vector<std::string> PostMortem(const Run& aRun);

} // namespace sandbox
