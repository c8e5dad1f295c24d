/// Makes a run of what was put down of it.
#pragma once

#include "../clock/Clock.h"
#include "../record/Fact.h"
#include "Run.h"

#include <string>

namespace sandbox
{

struct RecordedRun {
    std::vector<Fact> facts;
    std::string testBus;   ///< pcap
    std::string systemBus; ///< pcap
};

/// The sandbox's clock, as far as it is set by then.
Clock ClockOf(const std::vector<Fact>& aFacts);

/// Whatever of it is there: a record may end anywhere.
Run ReadRun(const RecordedRun& aRecord);

} // namespace sandbox
