// Reads what an audio file says about itself.
#pragma once

#include "Track.h"

namespace sim
{

/// File name patterns of what counts as audio.
QStringList AudioFilePatterns();

/// Reads the tags and the length of the audio file aPath, which lies somewhere under aRoot. A file without
/// tags is named after itself; its artist, album and genre are "Unknown". Returns false, and leaves aTrack
/// alone, when the file holds no audio that can be read. Blocks for the reading of the file's headers.
bool ReadTrack(const QString& aPath, const QString& aRoot, Track& aTrack);

} // namespace sim
