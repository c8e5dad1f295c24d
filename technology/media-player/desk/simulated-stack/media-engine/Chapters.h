// The chapters of a track, numbered from 1. Music files have none: each track gets four of equal length, for
// tests to step through.
#pragma once

#include "Track.h"

namespace sim
{

constexpr uint kChapters = 4;

/// The chapter in which a position lies; 0 for a track of no length.
uint ChapterAt(const Track& aTrack, uint aPositionMs);
/// Where a chapter begins.
uint ChapterStart(const Track& aTrack, uint aChapter);
/// All chapters with their beginnings, as JSON; no chapters for a track of no length.
QString ChaptersText(const Track& aTrack);

} // namespace sim
