// The words of the faults file, for those who write it and those who read it.
#pragma once

#include <array>

namespace sim
{

inline constexpr const char* kFaultsFile = "/opt/talvex/etc/simulated-stack.json";

// A misspelt program would silently run without its faults, so the file may only name these.
inline constexpr std::array kPrograms{"media_manager",
                                      "media_mme",
                                      "media_source_apple",
                                      "media_source_mass_storage",
                                      "media_source_pandora",
                                      "media_source_disc",
                                      "media_source_spotify",
                                      "media_source_btmedia",
                                      "test_media_source",
                                      "recognition-server",
                                      "hmi_main",
                                      "hmi_cluster",
                                      "audio-tuner-manager",
                                      "tuner-device-manager"};

inline constexpr const char* kProgramsKey = "programs";
inline constexpr const char* kStartDelayKey = "start_delay_ms";
inline constexpr const char* kNeverOwnNameKey = "never_own_name";
inline constexpr const char* kManagerObjectsKey = "manager_objects";
inline constexpr const char* kIgnoreSigtermKey = "ignore_sigterm";
inline constexpr const char* kCrashAfterKey = "crash_after_ms";
inline constexpr const char* kHangAfterKey = "hang_after_ms";
inline constexpr const char* kRepliesKey = "replies";

inline constexpr const char* kErrorReply = "error";
inline constexpr const char* kNoReply = "never";
inline constexpr const char* kWrongSignatureReply = "wrong_signature";
inline constexpr const char* kSignalFirstReply = "signal_first";
inline constexpr const char* kDyingReply = "die";

} // namespace sim
