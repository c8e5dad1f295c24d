/// @file
/// What the sources of the test media source can do, by name:
///
///     MPL::TestSourceOptions options;
///     options.capabilities = MPL::TestSourceCapability::Browse | MPL::TestSourceCapability::PlayQueue;
#pragma once

#include <QFlags>

namespace MPL
{

/// The numbers are those that the test media source takes as its first argument.
enum class TestSourceCapability : unsigned {
    None = 0,
    Browse = 1,
    PlaybackControl = 2,
    Index = 4,
    MediaInfo = 8,
    PlayQueue = 16,
    All = Browse | PlaybackControl | Index | MediaInfo | PlayQueue
};
/// Any of them together.
Q_DECLARE_FLAGS(TestSourceCapabilities, TestSourceCapability)
Q_DECLARE_OPERATORS_FOR_FLAGS(TestSourceCapabilities)

} // namespace MPL
