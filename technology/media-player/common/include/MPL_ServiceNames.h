/// @file
/// Names of the media sources, of the media manager and of the bus itself.
#pragma once

#include <MPL_Words.h>

namespace MPL
{

/// @{
/// Mass storage.
MPL_WORD(MPL_MASS_STORAGE_DEVICE_LABEL, "USB");
MPL_WORD(MPL_MASS_STORAGE_SERVICE_NAME, "com.talvex.DBus.MediaPlayer.MediaSource.MassStorage");
MPL_WORD(MPL_MASS_STORAGE_PROCESS_NAME, "media_source_mass_storage");
/// @}

/// @{
/// Apple devices; the label is a device-path template with two QString::arg places.
MPL_WORD(MPL_APPLE_SERVICE_NAME, "com.talvex.DBus.MediaPlayer.MediaSource.Apple");
MPL_WORD(MPL_APPLE_DEVICE_LABEL, "ddp//%1%2?PATH=iap% 3A% 2F% 2Fusb% 3A% 2F% 2F000% 2F001");
MPL_WORD(MPL_APPLE_PROCESS_NAME, "media_source_apple");
/// @}

/// @{
/// Pandora.
MPL_WORD(MPL_PANDORA_SERVICE_NAME, "com.talvex.DBus.MediaPlayer.MediaSource.Pandora");
MPL_WORD(MPL_PANDORA_DEVICE_LABEL, "Pandora");
MPL_WORD(MPL_PANDORA_PROCESS_NAME, "media_source_pandora");
/// @}

/// @{
/// Disc.
MPL_WORD(MPL_DISC_SERVICE_NAME, "com.talvex.DBus.MediaPlayer.MediaSource.Disc");
MPL_WORD(MPL_DISC_DEVICE_LABEL, "F");
MPL_WORD(MPL_DISC_PROCESS_NAME, "media_source_disc");
/// @}

/// @{
/// SiriusXM.
MPL_WORD(MPL_SIRIUSXM_SERVICE_NAME, "com.talvex.DBus.MediaPlayer.MediaSource.SiriusXm");
MPL_WORD(MPL_SIRIUSXM_DEVICE_LABEL, "SiriusXM");
MPL_WORD(MPL_SIRIUSXM_PROCESS_NAME, "media_source_siriusxm");
MPL_WORD(MPL_SIRIUSXM_TUNER_SERVICE_NAME, "com.talvex.DBus.MediaPlayer.SiriusXmTuner");
/// @}

/// @{
/// Spotify.
MPL_WORD(MPL_SPOTIFY_SERVICE_NAME, "com.talvex.DBus.MediaPlayer.MediaSource.Spotify");
MPL_WORD(MPL_SPOTIFY_DEVICE_LABEL, "Spotify");
MPL_WORD(MPL_SPOTIFY_PROCESS_NAME, "media_source_spotify");
/// @}

/// @{
/// Bluetooth audio.
MPL_WORD(MPL_BLUETOOTH_SERVICE_NAME, "com.talvex.DBus.MediaPlayer.MediaSource.Bluetooth");
MPL_WORD(MPL_BLUETOOTH_PROCESS_NAME, "media_source_btmedia");
/// @}

/// @{
/// Auxiliary input.
MPL_WORD(MPL_AUX_SERVICE_NAME, "com.talvex.DBus.MediaPlayer.MediaSource.Aux");
MPL_WORD(MPL_AUX_PROCESS_NAME, "media_source_aux");
/// @}

/// @{
/// Video.
MPL_WORD(MPL_VIDEO_SERVICE_NAME, "com.talvex.DBus.MediaPlayer.MediaSource.Video");
MPL_WORD(MPL_VIDEO_PROCESS_NAME, "media_source_video");
/// @}

/// @{
/// Media manager, recognition server, reporter and the bus.
MPL_WORD(MPL_MEDIA_MANAGER_SERVICE_NAME, "com.talvex.DBus.MediaPlayer.MediaManagerService");
MPL_WORD(MPL_MEDIA_MANAGER_PROCESS_NAME, "media_manager");
MPL_WORD(MPL_MEDIA_MANAGER_INTERFACE_NAME, "com.talvex.DBus.MediaPlayer.MediaManager");
MPL_WORD(MPL_RECOGNITION_SERVER_SERVICE_NAME, "com.talvex.DBus.MediaPlayer.RecognitionServer");
MPL_WORD(MPL_SHUFFLE_MODE_PROPERTY, "ShuffleMode");
MPL_WORD(MPL_REPEAT_MODE_PROPERTY, "RepeatMode");
MPL_WORD(MPL_DATA_MANAGER_CORE_DIRECTORY, "DataManagerCore/");
MPL_WORD(MPL_MEDIA_MANAGER_OBJECT_PATH, "/com/talvex/DBus/MediaPlayer/MediaManager");
MPL_WORD(MPL_MEDIA_MANAGER_PRESETS_OBJECT_PATH, "/com/talvex/DBus/MediaPlayer/MediaManager/Presets");
MPL_WORD(MPL_AUDIO_MEDIA_MANAGER_SERVICE_NAME, "com.talvex.DBus.Audio.MediaPlayer.MediaManagerService");
MPL_WORD(MPL_MEDIA_SOURCE_REPORTER_SERVICE_NAME, "com.talvex.DBus.MediaPlayer.MediaSourceReporter");
MPL_WORD(MPL_MEDIA_SOURCE_REPORTER_OBJECT_PATH, "/com/talvex/DBus/MediaPlayer/MediaSourceReporter");
MPL_WORD(MPL_DBUS_SERVICE_NAME, "org.freedesktop.DBus");
MPL_WORD(MPL_DBUS_OBJECT_PATH, "/org/freedesktop/DBus");
/// @}

} // namespace MPL
