/// The folder with the stack that the sandbox shows as /opt/talvex.
#pragma once

#include <string>

namespace sandbox
{

/// The folder that MPL_STACK names, else the simulated stack that came with this program; empty when there is
/// neither.
std::string FindStackFolder();

/// What is wrong with a stack's folder and what to do about it; empty when there is a stack to run.
std::string ProblemWithStack(const std::string& aFolder);

} // namespace sandbox
