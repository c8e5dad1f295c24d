// Where a test program runs: in the sandbox, beside a stack, or where there is nothing to test.
#pragma once

#include <vector>

namespace MPL
{

// Replaces this program by mpl-sandbox that runs it with the same arguments. Returns only when that fails,
// with the exit status.
int RunInSandbox(const std::vector<char*>& aArguments);

bool IsInSandbox();

// Whether there is anything to test: a sandbox, a stack's programs, or a test bus that somebody else has
// started. Logs nothing and does not wait.
bool IsThereAStack();

} // namespace MPL
