/// @file
/// Names that all test code of the stack shares: processes, lifecycle-manager services, test accounts.
/// The order of a list is the order in which the environment controller walks it.
#pragma once

#include <MPL_ServiceNames.h>

#include <QString>

#include <array>

/// @{
/// Executable names of the processes, and their lifecycle-manager names.
inline const QString MPL_TEST_MEDIAMANAGER_PROCESS_NAME = QStringLiteral("media_manager");
inline const QString MPL_TEST_MEDIAMANAGER_SLM_NAME = QStringLiteral("media-manager");
inline const QString MPL_TEST_MME_PROCESS_NAME = QStringLiteral("media_mme");
inline const QString MPL_TEST_MME_SLM_NAME = QStringLiteral("media-mme");
inline const QString MPL_TEST_RECOGNITION_SERVER_NAME = QStringLiteral("recognition-server");
/// @}

/// The media player's variable-data directory.
inline const QString MPL_TEST_MEDIA_PLAYER_DIRECTORY = QStringLiteral("/var/talvex/media-player/");

/// @{
/// The example media source built for testing: executable name, program, bus name.
inline const QString MPL_TEST_MEDIA_SOURCE_PROCESS_NAME = QStringLiteral("test_media_source");
inline const QString MPL_TEST_MEDIA_SOURCE_PROCESS_PATH =
    QStringLiteral("/opt/talvex/test/test_media_source/") + MPL_TEST_MEDIA_SOURCE_PROCESS_NAME;
inline const QString MPL_TEST_MEDIA_SOURCE_SERVICE_NAME =
    QStringLiteral("com.talvex.DBus.Examples.MediaSourceTest");
inline const QString MPL_TEST_MME_MOUNT_SERVICE_NAME =
    QStringLiteral("com.talvex.DBus.MediaPlayer.MMEMountService");
/// @}

/// @{
/// The two test accounts of the streaming service; the first is the default.
inline const QString MPL_TEST_PANDORA_USER_NAME_1 = QStringLiteral("media.tester.one@example.com");
inline const QString MPL_TEST_PANDORA_PASSWORD_1 = QStringLiteral("fobnix");
inline const QString MPL_TEST_PANDORA_USER_NAME_2 = QStringLiteral("media.tester.two@example.com");
inline const QString MPL_TEST_PANDORA_PASSWORD_2 = QStringLiteral("plumtree");
/// @}

/// @{
/// Separators of test texts; both are a blank.
inline const QString MPL_TEST_SEPARATOR_1 = QStringLiteral(" ");
inline const QString MPL_TEST_SEPARATOR_2 = QStringLiteral(" ");
/// @}

/// Lifecycle-manager names of the tuner processes.
inline const std::array MPL_TEST_TUNER_PROCESS_NAMES{QStringLiteral("audio-tuner-manager"),
                                                     QStringLiteral("tuner-device-manager")};

/// Lifecycle-manager names of the media sources. This list has Bluetooth where the two below have the disc.
inline const std::array MPL_TEST_MEDIA_SOURCE_SLM_NAMES{
    QStringLiteral("media-source-mass-storage"), QStringLiteral("media-source-apple"),
    QStringLiteral("media-source-pandora"), QStringLiteral("media-source-spotify"),
    QStringLiteral("media-source-btmedia")};

/// Bus names of the media sources that tests launch; entry i belongs to entry i of the process names.
inline const std::array MPL_TEST_MEDIA_SOURCE_SERVICE_NAMES{
    MPL::MPL_MASS_STORAGE_SERVICE_NAME, MPL::MPL_APPLE_SERVICE_NAME, MPL::MPL_PANDORA_SERVICE_NAME,
    MPL::MPL_DISC_SERVICE_NAME, MPL::MPL_SPOTIFY_SERVICE_NAME};

/// Executable names of the same sources.
inline const std::array MPL_TEST_MEDIA_SOURCE_PROCESS_NAMES{
    MPL::MPL_MASS_STORAGE_PROCESS_NAME, MPL::MPL_APPLE_PROCESS_NAME, MPL::MPL_PANDORA_PROCESS_NAME,
    MPL::MPL_DISC_PROCESS_NAME, MPL::MPL_SPOTIFY_PROCESS_NAME};
