/// Where a program crashed.
#pragma once

#include "../run/Run.h"

#include <string>

namespace sandbox
{

/// "in Load() at Manager.cpp:12, from main() at main.cpp:30": the innermost functions that are the program's
/// own, as those of libraries seldom tell more. Empty when it is not known.
std::string CrashWords(const ProcessLife& aLife);

} // namespace sandbox
