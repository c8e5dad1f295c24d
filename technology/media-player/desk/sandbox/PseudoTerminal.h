/// What a program may take for the terminal that its output goes to.
#pragma once

#include "Posix.h"

namespace sandbox
{

/// Both ends of a new terminal that changes nothing of what is written to it, as the one that it stands for
/// does that, and has its size. Invalid ends when there can be none.
Pipe MakePseudoTerminal(int aTerminal);

/// Gives it the size that the terminal has by now.
void TakeSize(int aTerminal, int aPseudoTerminal);

} // namespace sandbox
