/// Who enters a sandbox may want to trace what runs there, which only one can do.
#pragma once

namespace sandbox
{

/// To be called in the sandbox: its programs are let go. Blocks until they are, at most a second.
void AnnounceVisitor();

} // namespace sandbox
