/// How grave a line of a log is.
#pragma once

#include <string>

namespace sandbox
{

enum class LogLevel { Debug, Info, Warning, Critical, Fatal, Output };

/// By the ready main's pattern, as in "     1.215 debug    text"; Output: the line does not say.
LogLevel LevelOf(const std::string& aLine);

} // namespace sandbox
