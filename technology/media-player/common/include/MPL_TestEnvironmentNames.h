/// @file
/// Names that all test code of the stack shares: processes, lifecycle-manager services, test accounts.
/// The order of a list is the order in which the environment controller walks it.
#pragma once

#include <MPL_ServiceNames.h>
#include <MPL_Words.h>

/// @{
/// Executable names of the processes, and their lifecycle-manager names.
MPL_WORD(MPL_TEST_MEDIAMANAGER_PROCESS_NAME, "media_manager");
MPL_WORD(MPL_TEST_MEDIAMANAGER_SLM_NAME, "media-manager");
MPL_WORD(MPL_TEST_MME_PROCESS_NAME, "media_mme");
MPL_WORD(MPL_TEST_MME_SLM_NAME, "media-mme");
MPL_WORD(MPL_TEST_RECOGNITION_SERVER_NAME, "recognition-server");
/// @}

/// The media player's variable-data directory.
MPL_WORD(MPL_TEST_MEDIA_PLAYER_DIRECTORY, "/var/talvex/media-player/");

/// @{
/// The example media source built for testing: executable name, program, bus name.
MPL_WORD(MPL_TEST_MEDIA_SOURCE_PROCESS_NAME, "test_media_source");
MPL_WORD(MPL_TEST_MEDIA_SOURCE_PROCESS_PATH, "/opt/talvex/test/test_media_source/test_media_source");
MPL_WORD(MPL_TEST_MEDIA_SOURCE_SERVICE_NAME, "com.talvex.DBus.Examples.MediaSourceTest");
MPL_WORD(MPL_TEST_MME_MOUNT_SERVICE_NAME, "com.talvex.DBus.MediaPlayer.MMEMountService");
/// @}

/// @{
/// The two test accounts of the streaming service; the first is the default.
MPL_WORD(MPL_TEST_PANDORA_USER_NAME_1, "media.tester.one@example.com");
MPL_WORD(MPL_TEST_PANDORA_PASSWORD_1, "fobnix");
MPL_WORD(MPL_TEST_PANDORA_USER_NAME_2, "media.tester.two@example.com");
MPL_WORD(MPL_TEST_PANDORA_PASSWORD_2, "plumtree");
/// @}

/// @{
/// Separators of test texts; both are a blank.
MPL_WORD(MPL_TEST_SEPARATOR_1, " ");
MPL_WORD(MPL_TEST_SEPARATOR_2, " ");
/// @}

/// @{
/// Lifecycle-manager names of the tuner processes.
MPL_WORD(MPL_TEST_TUNER_PROCESS_NAME_AUDIO_TUNER_MANAGER, "audio-tuner-manager");
MPL_WORD(MPL_TEST_TUNER_PROCESS_NAME_TUNER_DEVICE_MANAGER, "tuner-device-manager");
MPL_GROUP(MPL_TEST_TUNER_PROCESS_NAMES, MPL_TEST_TUNER_PROCESS_NAME_AUDIO_TUNER_MANAGER,
          MPL_TEST_TUNER_PROCESS_NAME_TUNER_DEVICE_MANAGER);
/// @}

/// @{
/// Lifecycle-manager names of the media sources. This list has Bluetooth where the two below have the disc.
MPL_WORD(MPL_TEST_MEDIA_SOURCE_SLM_NAME_MEDIA_SOURCE_MASS_STORAGE, "media-source-mass-storage");
MPL_WORD(MPL_TEST_MEDIA_SOURCE_SLM_NAME_MEDIA_SOURCE_APPLE, "media-source-apple");
MPL_WORD(MPL_TEST_MEDIA_SOURCE_SLM_NAME_MEDIA_SOURCE_PANDORA, "media-source-pandora");
MPL_WORD(MPL_TEST_MEDIA_SOURCE_SLM_NAME_MEDIA_SOURCE_SPOTIFY, "media-source-spotify");
MPL_WORD(MPL_TEST_MEDIA_SOURCE_SLM_NAME_MEDIA_SOURCE_BTMEDIA, "media-source-btmedia");
MPL_GROUP(MPL_TEST_MEDIA_SOURCE_SLM_NAMES, MPL_TEST_MEDIA_SOURCE_SLM_NAME_MEDIA_SOURCE_MASS_STORAGE,
          MPL_TEST_MEDIA_SOURCE_SLM_NAME_MEDIA_SOURCE_APPLE,
          MPL_TEST_MEDIA_SOURCE_SLM_NAME_MEDIA_SOURCE_PANDORA,
          MPL_TEST_MEDIA_SOURCE_SLM_NAME_MEDIA_SOURCE_SPOTIFY,
          MPL_TEST_MEDIA_SOURCE_SLM_NAME_MEDIA_SOURCE_BTMEDIA);
/// @}

/// Bus names of the media sources that tests launch; entry i belongs to entry i of the process names.
MPL_GROUP(MPL_TEST_MEDIA_SOURCE_SERVICE_NAMES, MPL::MPL_MASS_STORAGE_SERVICE_NAME,
          MPL::MPL_APPLE_SERVICE_NAME, MPL::MPL_PANDORA_SERVICE_NAME, MPL::MPL_DISC_SERVICE_NAME,
          MPL::MPL_SPOTIFY_SERVICE_NAME);

/// Executable names of the same sources.
MPL_GROUP(MPL_TEST_MEDIA_SOURCE_PROCESS_NAMES, MPL::MPL_MASS_STORAGE_PROCESS_NAME,
          MPL::MPL_APPLE_PROCESS_NAME, MPL::MPL_PANDORA_PROCESS_NAME, MPL::MPL_DISC_PROCESS_NAME,
          MPL::MPL_SPOTIFY_PROCESS_NAME);
