/// What the lifecycle manager says of its services that are not well.
#pragma once

#include "Fact.h"

namespace sandbox
{

/// Puts down each unit that has failed, or is still on its way up or down. Blocks until the manager has
/// answered, at most two seconds for each; no-op without one.
void NoteUnwellUnits(const FactLog& aFacts);

} // namespace sandbox
