/// What is wrong around the stack from a step on: files, the disk, names on the bus.
#pragma once

#include "Step.h"

namespace chaos
{

/// Does what the step says, one of Kind::Surroundings. `aTestBus`: the library uses the private bus.
void Change(const Step& aStep, bool aTestBus);

} // namespace chaos
