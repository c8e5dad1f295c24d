/// Makes a run of what was put down of it.
#pragma once

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

/// Whatever of it is there: a record may end anywhere.
Run ReadRun(const RecordedRun& aRecord);

} // namespace sandbox
