/// Which programs take a library that is preloaded.
#pragma once

#include <string>

namespace sandbox
{

/// Why the dynamic loader would preload nothing into that program, or it would not work there, as in "is
/// statically linked"; empty when there is no such reason, or no program. `aProgram` is a path or is looked
/// up in PATH; of a script the interpreter counts.
std::string ObstacleToPreloading(const std::string& aProgram);

} // namespace sandbox
