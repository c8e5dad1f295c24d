/// @file
/// Writes what the media manager resumes at its next start. Declared here, implemented by the platform.
#pragma once

#include <QString>

namespace MPL
{

/// The store of what the stack remembers between runs.
class DataManagerWrapper
{
public:
    /// Stores the active source; an empty text means none. Returns true when it is stored durably, false
    /// otherwise (the store is not open, is locked, or can't be written); what was stored before is then
    /// still there.
    bool SaveActiveSource(const QString& aSource);

    /// Stores the playback state of the active source, with the same result.
    bool SaveActiveSourcePlaybackState(const QString& aState);
};

} // namespace MPL
