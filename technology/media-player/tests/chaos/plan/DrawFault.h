/// Something that goes wrong, drawn by chance.
#pragma once

#include "Dice.h"
#include "Step.h"

namespace chaos
{

Step DrawFault(Dice& aDice);

} // namespace chaos
