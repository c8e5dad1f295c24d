// The music of sources that have no files: six albums by three artists, made up for this purpose.
#pragma once

#include "Track.h"

namespace sim
{

/// The same tracks with the same ids in every run, 18 of them, from 30 seconds to 3 minutes long.
Tracks BuiltInCatalogue();

} // namespace sim
