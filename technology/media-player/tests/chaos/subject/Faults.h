/// The faults of the programs that start from now on.
#pragma once

#include "Step.h"
#include <MPL_SimulatedFaults.h>

#include <memory>

namespace chaos
{

class Faults
{
public:
    /// Adds what the step says, one of Kind::Fault. A fault that the stack refuses ends the program: the
    /// schedule is wrong.
    void Add(const Step& aStep);

private:
    std::unique_ptr<MPL::SimulatedFaults> m_Faults = std::make_unique<MPL::SimulatedFaults>();
};

} // namespace chaos
