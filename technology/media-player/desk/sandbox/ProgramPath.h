/// Where a program lies that is named as in a shell.
#pragma once

#include <string>

namespace sandbox
{

/// The executable file of that name, as execvp finds it: the name itself if it has a slash, otherwise the
/// first in the folders of PATH. Empty when there is none.
std::string FindProgram(const std::string& aName);

} // namespace sandbox
