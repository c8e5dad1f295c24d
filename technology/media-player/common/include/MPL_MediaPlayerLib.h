/// @file
/// The words of the media-player stack, as its services put them on the bus: string-valued enumerations,
/// dictionary keys, bus names and object paths.
///
/// Each word is a constant of namespace MPL; each group of words is also a fixed array under the group's
/// name, so that a test can walk it:
///
///     for (const QString& mode : MPL::MPL_REPEAT_MODES) { client.SetRepeatMode(mode); }
///
/// Words are compared exactly, byte for byte. Two constants may carry the same text ("ERROR" is a source
/// state and an event type).
#pragma once

// In the order of the words' groups.
// clang-format off
#include <MPL_PlaybackWords.h>
#include <MPL_SourceWords.h>
#include <MPL_BrowseWords.h>
#include <MPL_ServiceNames.h>
// clang-format on
