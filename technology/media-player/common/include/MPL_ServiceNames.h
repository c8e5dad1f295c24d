/// @file
/// Names of the media sources, of the media manager and of the bus itself.
#pragma once

#include <QString>

namespace MPL
{

/// @{
/// Mass storage.
inline const QString MPL_MASS_STORAGE_DEVICE_LABEL = QStringLiteral("USB");
inline const QString MPL_MASS_STORAGE_SERVICE_NAME =
    QStringLiteral("com.talvex.DBus.MediaPlayer.MediaSource.MassStorage");
inline const QString MPL_MASS_STORAGE_PROCESS_NAME = QStringLiteral("media_source_mass_storage");
/// @}

/// @{
/// Apple devices; the label is a device-path template with two QString::arg places.
inline const QString MPL_APPLE_SERVICE_NAME = QStringLiteral("com.talvex.DBus.MediaPlayer.MediaSource.Apple");
inline const QString MPL_APPLE_DEVICE_LABEL =
    QStringLiteral("ddp//%1%2?PATH=iap% 3A% 2F% 2Fusb% 3A% 2F% 2F000% 2F001");
inline const QString MPL_APPLE_PROCESS_NAME = QStringLiteral("media_source_apple");
/// @}

/// @{
/// Pandora.
inline const QString MPL_PANDORA_SERVICE_NAME =
    QStringLiteral("com.talvex.DBus.MediaPlayer.MediaSource.Pandora");
inline const QString MPL_PANDORA_DEVICE_LABEL = QStringLiteral("Pandora");
inline const QString MPL_PANDORA_PROCESS_NAME = QStringLiteral("media_source_pandora");
/// @}

/// @{
/// Disc.
inline const QString MPL_DISC_SERVICE_NAME = QStringLiteral("com.talvex.DBus.MediaPlayer.MediaSource.Disc");
inline const QString MPL_DISC_DEVICE_LABEL = QStringLiteral("F");
inline const QString MPL_DISC_PROCESS_NAME = QStringLiteral("media_source_disc");
/// @}

/// @{
/// SiriusXM.
inline const QString MPL_SIRIUSXM_SERVICE_NAME =
    QStringLiteral("com.talvex.DBus.MediaPlayer.MediaSource.SiriusXm");
inline const QString MPL_SIRIUSXM_DEVICE_LABEL = QStringLiteral("SiriusXM");
inline const QString MPL_SIRIUSXM_PROCESS_NAME = QStringLiteral("media_source_siriusxm");
inline const QString MPL_SIRIUSXM_TUNER_SERVICE_NAME =
    QStringLiteral("com.talvex.DBus.MediaPlayer.SiriusXmTuner");
/// @}

/// @{
/// Spotify.
inline const QString MPL_SPOTIFY_SERVICE_NAME =
    QStringLiteral("com.talvex.DBus.MediaPlayer.MediaSource.Spotify");
inline const QString MPL_SPOTIFY_DEVICE_LABEL = QStringLiteral("Spotify");
inline const QString MPL_SPOTIFY_PROCESS_NAME = QStringLiteral("media_source_spotify");
/// @}

/// @{
/// Bluetooth audio.
inline const QString MPL_BLUETOOTH_SERVICE_NAME =
    QStringLiteral("com.talvex.DBus.MediaPlayer.MediaSource.Bluetooth");
inline const QString MPL_BLUETOOTH_PROCESS_NAME = QStringLiteral("media_source_btmedia");
/// @}

/// @{
/// Auxiliary input.
inline const QString MPL_AUX_SERVICE_NAME = QStringLiteral("com.talvex.DBus.MediaPlayer.MediaSource.Aux");
inline const QString MPL_AUX_PROCESS_NAME = QStringLiteral("media_source_aux");
/// @}

/// @{
/// Video.
inline const QString MPL_VIDEO_SERVICE_NAME = QStringLiteral("com.talvex.DBus.MediaPlayer.MediaSource.Video");
inline const QString MPL_VIDEO_PROCESS_NAME = QStringLiteral("media_source_video");
/// @}

/// @{
/// Media manager, recognition server, reporter and the bus.
inline const QString MPL_MEDIA_MANAGER_SERVICE_NAME =
    QStringLiteral("com.talvex.DBus.MediaPlayer.MediaManagerService");
inline const QString MPL_MEDIA_MANAGER_PROCESS_NAME = QStringLiteral("media_manager");
inline const QString MPL_MEDIA_MANAGER_INTERFACE_NAME =
    QStringLiteral("com.talvex.DBus.MediaPlayer.MediaManager");
inline const QString MPL_RECOGNITION_SERVER_SERVICE_NAME =
    QStringLiteral("com.talvex.DBus.MediaPlayer.RecognitionServer");
inline const QString MPL_SHUFFLE_MODE_PROPERTY = QStringLiteral("ShuffleMode");
inline const QString MPL_REPEAT_MODE_PROPERTY = QStringLiteral("RepeatMode");
inline const QString MPL_DATA_MANAGER_CORE_DIRECTORY = QStringLiteral("DataManagerCore/");
inline const QString MPL_MEDIA_MANAGER_OBJECT_PATH =
    QStringLiteral("/com/talvex/DBus/MediaPlayer/MediaManager");
inline const QString MPL_MEDIA_MANAGER_PRESETS_OBJECT_PATH =
    QStringLiteral("/com/talvex/DBus/MediaPlayer/MediaManager/Presets");
inline const QString MPL_AUDIO_MEDIA_MANAGER_SERVICE_NAME =
    QStringLiteral("com.talvex.DBus.Audio.MediaPlayer.MediaManagerService");
inline const QString MPL_MEDIA_SOURCE_REPORTER_SERVICE_NAME =
    QStringLiteral("com.talvex.DBus.MediaPlayer.MediaSourceReporter");
inline const QString MPL_MEDIA_SOURCE_REPORTER_OBJECT_PATH =
    QStringLiteral("/com/talvex/DBus/MediaPlayer/MediaSourceReporter");
inline const QString MPL_DBUS_SERVICE_NAME = QStringLiteral("org.freedesktop.DBus");
inline const QString MPL_DBUS_OBJECT_PATH = QStringLiteral("/org/freedesktop/DBus");
/// @}

} // namespace MPL
