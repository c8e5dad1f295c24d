/// A look around in a sandbox that runs already, from another terminal.
#pragma once

#include <string>
#include <vector>

namespace sandbox
{

/// Runs a command (empty: the user's shell) in a running sandbox and waits for its end. `aWhich` is the
/// process id of its mpl-sandbox, or the name of the program that it runs. The command lives by the machine's
/// clock and ends with the sandbox. Ends this process with the command's status; returns one of
/// ExitStatus, after a message, when the sandbox can't be entered.
int EnterSandbox(const std::string& aWhich, const std::vector<std::string>& aCommand);

} // namespace sandbox
