/// @file
/// Words of playback: states, functions, modes and speeds.
#pragma once

#include <QString>

#include <array>

namespace MPL
{

/// @{
/// Play states of PlaybackControl.
inline const QString MPL_PLAY_STATE_STOPPED = QStringLiteral("STOPPED");
inline const QString MPL_PLAY_STATE_PLAYING = QStringLiteral("PLAYING");
inline const QString MPL_PLAY_STATE_PAUSED = QStringLiteral("PAUSED");
inline const QString MPL_PLAY_STATE_BUFFERING = QStringLiteral("BUFFERING");
inline const QString MPL_PLAY_STATE_FAST_FORWARDING = QStringLiteral("FAST_FORWARDING");
inline const QString MPL_PLAY_STATE_REWINDING = QStringLiteral("REWINDING");
inline const QString MPL_PLAY_STATE_INVALID_STATE = QStringLiteral("INVALID STATE");
inline const std::array MPL_PLAY_STATES{MPL_PLAY_STATE_STOPPED,         MPL_PLAY_STATE_PLAYING,
                                        MPL_PLAY_STATE_PAUSED,          MPL_PLAY_STATE_BUFFERING,
                                        MPL_PLAY_STATE_FAST_FORWARDING, MPL_PLAY_STATE_REWINDING,
                                        MPL_PLAY_STATE_INVALID_STATE};
/// @}

/// @{
/// Names of the playback-control functions and options.
inline const QString MPL_PLAYBACK_FUNCTION_PLAYBACK_RESUME = QStringLiteral("PLAYBACK-RESUME");
inline const QString MPL_PLAYBACK_FUNCTION_PLAYBACK_PAUSE = QStringLiteral("PLAYBACK-PAUSE");
inline const QString MPL_PLAYBACK_FUNCTION_PLAYBACK_SHUFFLE = QStringLiteral("PLAYBACK-SHUFFLE");
inline const QString MPL_PLAYBACK_FUNCTION_PLAYBACK_REPEAT = QStringLiteral("PLAYBACK-REPEAT");
inline const QString MPL_PLAYBACK_FUNCTION_PLAYBACK_SPEED = QStringLiteral("PLAYBACK-SPEED");
inline const QString MPL_PLAYBACK_FUNCTION_PLAYBACK_SEEK = QStringLiteral("PLAYBACK-SEEK");
inline const QString MPL_PLAYBACK_FUNCTION_PLAYBACK_SEEK_TO_TIME = QStringLiteral("PLAYBACK-SEEK-TO-TIME");
inline const QString MPL_PLAYBACK_FUNCTION_PLAYBACK_JUMP = QStringLiteral("PLAYBACK-JUMP");
inline const QString MPL_PLAYBACK_FUNCTION_PLAYBACK_NEXT = QStringLiteral("PLAYBACK-NEXT");
inline const QString MPL_PLAYBACK_FUNCTION_PLAYBACK_PREVIOUS = QStringLiteral("PLAYBACK-PREVIOUS");
inline const QString MPL_PLAYBACK_FUNCTION_PLAYBACK_INDEX = QStringLiteral("PLAYBACK-INDEX");
inline const QString MPL_PLAYBACK_FUNCTION_PLAYBACK_CHAPTERS = QStringLiteral("PLAYBACK-CHAPTERS");
inline const QString MPL_PLAYBACK_FUNCTION_PLAYBACK_BUFFER = QStringLiteral("PLAYBACK-BUFFER");
inline const QString MPL_PLAYBACK_FUNCTION_PLAYBACK_DISTRIBUTED = QStringLiteral("PLAYBACK-DISTRIBUTED");
inline const QString MPL_PLAYBACK_FUNCTION_PLAYBACK_RETURN_TO_LIVE =
    QStringLiteral("PLAYBACK-RETURN-TO-LIVE");
inline const std::array MPL_PLAYBACK_FUNCTIONS{
    MPL_PLAYBACK_FUNCTION_PLAYBACK_RESUME,        MPL_PLAYBACK_FUNCTION_PLAYBACK_PAUSE,
    MPL_PLAYBACK_FUNCTION_PLAYBACK_SHUFFLE,       MPL_PLAYBACK_FUNCTION_PLAYBACK_REPEAT,
    MPL_PLAYBACK_FUNCTION_PLAYBACK_SPEED,         MPL_PLAYBACK_FUNCTION_PLAYBACK_SEEK,
    MPL_PLAYBACK_FUNCTION_PLAYBACK_SEEK_TO_TIME,  MPL_PLAYBACK_FUNCTION_PLAYBACK_JUMP,
    MPL_PLAYBACK_FUNCTION_PLAYBACK_NEXT,          MPL_PLAYBACK_FUNCTION_PLAYBACK_PREVIOUS,
    MPL_PLAYBACK_FUNCTION_PLAYBACK_INDEX,         MPL_PLAYBACK_FUNCTION_PLAYBACK_CHAPTERS,
    MPL_PLAYBACK_FUNCTION_PLAYBACK_BUFFER,        MPL_PLAYBACK_FUNCTION_PLAYBACK_DISTRIBUTED,
    MPL_PLAYBACK_FUNCTION_PLAYBACK_RETURN_TO_LIVE};
/// @}

/// @{
/// Shuffle modes.
inline const QString MPL_SHUFFLE_MODE_SHUFFLE_MODE_ON = QStringLiteral("SHUFFLE_MODE_ON");
inline const QString MPL_SHUFFLE_MODE_SHUFFLE_MODE_OFF = QStringLiteral("SHUFFLE_MODE_OFF");
inline const std::array MPL_SHUFFLE_MODES{MPL_SHUFFLE_MODE_SHUFFLE_MODE_ON,
                                          MPL_SHUFFLE_MODE_SHUFFLE_MODE_OFF};
/// @}

/// @{
/// Repeat modes.
inline const QString MPL_REPEAT_MODE_REPEAT_MODE_ALL = QStringLiteral("REPEAT_MODE_ALL");
inline const QString MPL_REPEAT_MODE_REPEAT_MODE_ONE = QStringLiteral("REPEAT_MODE_ONE");
inline const QString MPL_REPEAT_MODE_REPEAT_MODE_OFF = QStringLiteral("REPEAT_MODE_OFF");
inline const std::array MPL_REPEAT_MODES{MPL_REPEAT_MODE_REPEAT_MODE_ALL, MPL_REPEAT_MODE_REPEAT_MODE_ONE,
                                         MPL_REPEAT_MODE_REPEAT_MODE_OFF};
/// @}

/// @{
/// Seek modes.
inline const QString MPL_SEEK_MODE_SEEK_MODE_OFF = QStringLiteral("SEEK_MODE_OFF");
inline const QString MPL_SEEK_MODE_SEEK_MODE_FAST_FORWARD = QStringLiteral("SEEK_MODE_FAST_FORWARD");
inline const QString MPL_SEEK_MODE_SEEK_MODE_REWIND = QStringLiteral("SEEK_MODE_REWIND");
inline const std::array MPL_SEEK_MODES{MPL_SEEK_MODE_SEEK_MODE_OFF, MPL_SEEK_MODE_SEEK_MODE_FAST_FORWARD,
                                       MPL_SEEK_MODE_SEEK_MODE_REWIND};
/// @}

/// @{
/// Playback speeds; "SPEED-1_2X" is half speed.
inline const QString MPL_PLAYBACK_SPEED_SPEED_1X = QStringLiteral("SPEED-1X");
inline const QString MPL_PLAYBACK_SPEED_SPEED_2X = QStringLiteral("SPEED-2X");
inline const QString MPL_PLAYBACK_SPEED_SPEED_4X = QStringLiteral("SPEED-4X");
inline const QString MPL_PLAYBACK_SPEED_SPEED_1_2X = QStringLiteral("SPEED-1_2X");
inline const std::array MPL_PLAYBACK_SPEEDS{MPL_PLAYBACK_SPEED_SPEED_1X, MPL_PLAYBACK_SPEED_SPEED_2X,
                                            MPL_PLAYBACK_SPEED_SPEED_4X, MPL_PLAYBACK_SPEED_SPEED_1_2X};
/// @}

} // namespace MPL
