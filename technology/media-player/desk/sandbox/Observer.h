/// Looks on at a run, and tells of it when it has ended, however it ends.
#pragma once

#include "InsideSettings.h"
#include "Options.h"
#include "record/Keeper.h"
#include "record/Recording.h"
#include "timeline/Timeline.h"

#include <optional>

namespace sandbox
{

class Observer
{
public:
    /// Begins to record the run that is asked for: for its time line if one is wanted, otherwise in memory
    /// and no more than a post-mortem needs. False, after a message, when there can't be the time line;
    /// without one the run goes on unobserved where the machine refuses.
    bool Begin(const Options& aOptions);

    /// What the half inside has to know. No-op when nothing is recorded.
    void Tell(InsideSettings& aSettings) const;

    /// What the sandbox is to have as stdout and stderr.
    int Out() const { return m_Keeper.Out(); }
    int Err() const { return m_Keeper.Err(); }

    /// The sandbox has ended with that status. Blocks until all is told.
    void End(int aStatus);

private:
    void Finish() const;

    std::optional<Timeline> m_Timeline;
    Recording m_Recording;
    Keeper m_Keeper;
};

} // namespace sandbox
