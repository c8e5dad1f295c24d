/// @file
/// Words of a media source: its states, events, functionalities, configuration and records.
#pragma once

#include <QString>

#include <array>

namespace MPL
{

/// @{
/// Keys of a media-source status record.
inline const QString MPL_SOURCE_STATUS_KEY_ACTIVE_STATE = QStringLiteral("active_state");
inline const QString MPL_SOURCE_STATUS_KEY_SOURCE_STATE = QStringLiteral("source_state");
inline const QString MPL_SOURCE_STATUS_KEY_ERROR_TYPE = QStringLiteral("error_type");
inline const std::array MPL_SOURCE_STATUS_KEYS{
    MPL_SOURCE_STATUS_KEY_ACTIVE_STATE, MPL_SOURCE_STATUS_KEY_SOURCE_STATE, MPL_SOURCE_STATUS_KEY_ERROR_TYPE};
/// @}

/// @{
/// Values of the key "source_state".
inline const QString MPL_SOURCE_STATE_ACTIVE = QStringLiteral("ACTIVE");
inline const QString MPL_SOURCE_STATE_INACTIVE = QStringLiteral("INACTIVE");
inline const QString MPL_SOURCE_STATE_UNAVAILABLE = QStringLiteral("UNAVAILABLE");
inline const QString MPL_SOURCE_STATE_INITIALIZING = QStringLiteral("INITIALIZING");
inline const QString MPL_SOURCE_STATE_READY = QStringLiteral("READY");
inline const QString MPL_SOURCE_STATE_ERROR = QStringLiteral("ERROR");
inline const std::array MPL_SOURCE_STATES{MPL_SOURCE_STATE_ACTIVE,      MPL_SOURCE_STATE_INACTIVE,
                                          MPL_SOURCE_STATE_UNAVAILABLE, MPL_SOURCE_STATE_INITIALIZING,
                                          MPL_SOURCE_STATE_READY,       MPL_SOURCE_STATE_ERROR};
/// @}

/// @{
/// Values of the key "error_type".
inline const QString MPL_SOURCE_ERROR_TYPE_INITIALIZATION_FAILED = QStringLiteral("INITIALIZATION_FAILED");
inline const QString MPL_SOURCE_ERROR_TYPE_MEDIA_SERVER_INIT_FAILED =
    QStringLiteral("MEDIA_SERVER_INIT_FAILED");
inline const QString MPL_SOURCE_ERROR_TYPE_AUTHENTICATION_FAILED = QStringLiteral("AUTHENTICATION_FAILED");
inline const QString MPL_SOURCE_ERROR_TYPE_CREDENTIALS_MISSING = QStringLiteral("CREDENTIALS_MISSING");
inline const QString MPL_SOURCE_ERROR_TYPE_DEVICE_COMMUNICATION_LOST =
    QStringLiteral("DEVICE_COMMUNICATION_LOST");
inline const QString MPL_SOURCE_ERROR_TYPE_INTERNET_CONNECTIVITY_LOST =
    QStringLiteral("INTERNET_CONNECTIVITY_LOST");
inline const QString MPL_SOURCE_ERROR_TYPE_NO_PLAYABLE_MEDIA = QStringLiteral("NO_PLAYABLE_MEDIA");
inline const QString MPL_SOURCE_ERROR_TYPE_UNABLE_TO_OPEN_MEDIA = QStringLiteral("UNABLE_TO_OPEN_MEDIA");
inline const QString MPL_SOURCE_ERROR_TYPE_LOGIN_WAITING_FOR_CONNECTIVITY =
    QStringLiteral("LOGIN_WAITING_FOR_CONNECTIVITY");
inline const std::array MPL_SOURCE_ERROR_TYPES{MPL_SOURCE_ERROR_TYPE_INITIALIZATION_FAILED,
                                               MPL_SOURCE_ERROR_TYPE_MEDIA_SERVER_INIT_FAILED,
                                               MPL_SOURCE_ERROR_TYPE_AUTHENTICATION_FAILED,
                                               MPL_SOURCE_ERROR_TYPE_CREDENTIALS_MISSING,
                                               MPL_SOURCE_ERROR_TYPE_DEVICE_COMMUNICATION_LOST,
                                               MPL_SOURCE_ERROR_TYPE_INTERNET_CONNECTIVITY_LOST,
                                               MPL_SOURCE_ERROR_TYPE_NO_PLAYABLE_MEDIA,
                                               MPL_SOURCE_ERROR_TYPE_UNABLE_TO_OPEN_MEDIA,
                                               MPL_SOURCE_ERROR_TYPE_LOGIN_WAITING_FOR_CONNECTIVITY};
/// @}

/// @{
/// Keys of an event record.
inline const QString MPL_EVENT_KEY_EVENT_TYPE = QStringLiteral("event_type");
inline const QString MPL_EVENT_KEY_EVENT = QStringLiteral("event");
inline const QString MPL_EVENT_KEY_TEXT_INFO = QStringLiteral("text_info");
inline const std::array MPL_EVENT_KEYS{MPL_EVENT_KEY_EVENT_TYPE, MPL_EVENT_KEY_EVENT,
                                       MPL_EVENT_KEY_TEXT_INFO};
/// @}

/// @{
/// Values of the key "event_type".
inline const QString MPL_EVENT_TYPE_ERROR = QStringLiteral("ERROR");
inline const QString MPL_EVENT_TYPE_INFO = QStringLiteral("INFO");
inline const std::array MPL_EVENT_TYPES{MPL_EVENT_TYPE_ERROR, MPL_EVENT_TYPE_INFO};
/// @}

/// @{
/// Event names: disc and file errors, then play queue and rating errors of streaming sources,
/// then the antenna, channel, save and replay events of the satellite-radio tuner.
inline const QString MPL_EVENT_CORRUPTED_MEDIA = QStringLiteral("CORRUPTED_MEDIA");
inline const QString MPL_EVENT_UNRECOGNIZED_FORMAT = QStringLiteral("UNRECOGNIZED_FORMAT");
inline const QString MPL_EVENT_REGION_MISMATCH = QStringLiteral("REGION_MISMATCH");
inline const QString MPL_EVENT_DISC_ERROR = QStringLiteral("DISC_ERROR");
inline const QString MPL_EVENT_FILE_READ_ERROR = QStringLiteral("FILE_READ_ERROR");
inline const QString MPL_EVENT_DISC_EJECTED = QStringLiteral("DISC_EJECTED");
inline const QString MPL_EVENT_MAX_BITRATE_EXCEEDED = QStringLiteral("MAX_BITRATE_EXCEEDED");
inline const QString MPL_EVENT_MAX_RESOLUTION_EXCEEDED = QStringLiteral("MAX_RESOLUTION_EXCEEDED");
inline const QString MPL_EVENT_DEFAULT_PLAYQUEUE_CREATED = QStringLiteral("DEFAULT_PLAYQUEUE_CREATED");
inline const QString MPL_EVENT_NO_MEDIA_AVAILABLE = QStringLiteral("NO_MEDIA_AVAILABLE");
inline const QString MPL_EVENT_SKIP_LIMIT_NOT_REACHED = QStringLiteral("SKIP_LIMIT_NOT_REACHED");
inline const QString MPL_EVENT_SKIP_LIMIT_REACHED = QStringLiteral("SKIP_LIMIT_REACHED");
inline const QString MPL_EVENT_PLAYQUEUE_INIT_FAILED = QStringLiteral("PLAYQUEUE_INIT_FAILED");
inline const QString MPL_EVENT_SELECT_TRACK_FAILED = QStringLiteral("SELECT_TRACK_FAILED");
inline const QString MPL_EVENT_LIKE_ERROR = QStringLiteral("LIKE_ERROR");
inline const QString MPL_EVENT_DISLIKE_ERROR = QStringLiteral("DISLIKE_ERROR");
inline const QString MPL_EVENT_REMOVE_INVALID_PARAMETER = QStringLiteral("REMOVE_INVALID_PARAMETER");
inline const QString MPL_EVENT_LIKE_INVALID_PARAMETER = QStringLiteral("LIKE_INVALID_PARAMETER");
inline const QString MPL_EVENT_DISLIKE_INVALID_PARAMETER = QStringLiteral("DISLIKE_INVALID_PARAMETER");
inline const QString MPL_EVENT_BOOKMARK_INVALID_PARAMETER = QStringLiteral("BOOKMARK_INVALID_PARAMETER");
inline const QString MPL_EVENT_CREATE_STATION_FROM_TRACK_INVALID_PARAMETER =
    QStringLiteral("CREATE_STATION_FROM_TRACK_INVALID_PARAMETER");
inline const QString MPL_EVENT_CREATE_STATION_FROM_ARTIST_INVALID_PARAMETER =
    QStringLiteral("CREATE_STATION_FROM_ARTIST_INVALID_PARAMETER");
inline const QString MPL_EVENT_EMPTY_BROWSE_RESULTS = QStringLiteral("EMPTY_BROWSE_RESULTS");
inline const QString MPL_EVENT_CHECK_TUNER = QStringLiteral("CHECK_TUNER");
inline const QString MPL_EVENT_CHECK_ANTENNA = QStringLiteral("CHECK_ANTENNA");
inline const QString MPL_EVENT_ANTENNA_DISCONNECTED = QStringLiteral("ANTENNA_DISCONNECTED");
inline const QString MPL_EVENT_ANTENNA_SHORTED = QStringLiteral("ANTENNA_SHORTED");
inline const QString MPL_EVENT_NO_SIGNAL = QStringLiteral("NO_SIGNAL");
inline const QString MPL_EVENT_CHANNEL_UNAVAILABLE = QStringLiteral("CHANNEL_UNAVAILABLE");
inline const QString MPL_EVENT_CHANNEL_UNSUBSCRIBED = QStringLiteral("CHANNEL_UNSUBSCRIBED");
inline const QString MPL_EVENT_SUBSCRIPTION_UPDATED = QStringLiteral("SUBSCRIPTION_UPDATED");
inline const QString MPL_EVENT_CHANNEL_LOCKED = QStringLiteral("CHANNEL_LOCKED");
inline const QString MPL_EVENT_INCORRECT_PASS_CODE = QStringLiteral("INCORRECT_PASS_CODE");
inline const QString MPL_EVENT_SAVE_ARTIST = QStringLiteral("SAVE_ARTIST");
inline const QString MPL_EVENT_SAVE_SONG = QStringLiteral("SAVE_SONG");
inline const QString MPL_EVENT_NO_ARTIST_AVAILABLE = QStringLiteral("NO_ARTIST_AVAILABLE");
inline const QString MPL_EVENT_ARTIST_SAVED = QStringLiteral("ARTIST_SAVED");
inline const QString MPL_EVENT_NO_SONG_AVAILABLE = QStringLiteral("NO_SONG_AVAILABLE");
inline const QString MPL_EVENT_SONG_SAVED = QStringLiteral("SONG_SAVED");
inline const QString MPL_EVENT_SAVE_TEAM = QStringLiteral("SAVE_TEAM");
inline const QString MPL_EVENT_UPDATING_TEAMS = QStringLiteral("UPDATING_TEAMS");
inline const QString MPL_EVENT_ALERT_USAGE = QStringLiteral("ALERT_USAGE");
inline const QString MPL_EVENT_MEMORY_FULL = QStringLiteral("MEMORY_FULL");
inline const QString MPL_EVENT_REPLAY_MEMORY_ALMOST_FULL = QStringLiteral("REPLAY_MEMORY_ALMOST_FULL");
inline const QString MPL_EVENT_REPLAY_MEMORY_FULL = QStringLiteral("REPLAY_MEMORY_FULL");
inline const QString MPL_EVENT_NO_CITY_SELECTED = QStringLiteral("NO_CITY_SELECTED");
inline const QString MPL_EVENT_JUMP_PENDING = QStringLiteral("JUMP_PENDING");
inline const QString MPL_EVENT_JUMP_CANCELED = QStringLiteral("JUMP_CANCELED");
inline const std::array MPL_EVENTS{MPL_EVENT_CORRUPTED_MEDIA,
                                   MPL_EVENT_UNRECOGNIZED_FORMAT,
                                   MPL_EVENT_REGION_MISMATCH,
                                   MPL_EVENT_DISC_ERROR,
                                   MPL_EVENT_FILE_READ_ERROR,
                                   MPL_EVENT_DISC_EJECTED,
                                   MPL_EVENT_MAX_BITRATE_EXCEEDED,
                                   MPL_EVENT_MAX_RESOLUTION_EXCEEDED,
                                   MPL_EVENT_DEFAULT_PLAYQUEUE_CREATED,
                                   MPL_EVENT_NO_MEDIA_AVAILABLE,
                                   MPL_EVENT_SKIP_LIMIT_NOT_REACHED,
                                   MPL_EVENT_SKIP_LIMIT_REACHED,
                                   MPL_EVENT_PLAYQUEUE_INIT_FAILED,
                                   MPL_EVENT_SELECT_TRACK_FAILED,
                                   MPL_EVENT_LIKE_ERROR,
                                   MPL_EVENT_DISLIKE_ERROR,
                                   MPL_EVENT_REMOVE_INVALID_PARAMETER,
                                   MPL_EVENT_LIKE_INVALID_PARAMETER,
                                   MPL_EVENT_DISLIKE_INVALID_PARAMETER,
                                   MPL_EVENT_BOOKMARK_INVALID_PARAMETER,
                                   MPL_EVENT_CREATE_STATION_FROM_TRACK_INVALID_PARAMETER,
                                   MPL_EVENT_CREATE_STATION_FROM_ARTIST_INVALID_PARAMETER,
                                   MPL_EVENT_EMPTY_BROWSE_RESULTS,
                                   MPL_EVENT_CHECK_TUNER,
                                   MPL_EVENT_CHECK_ANTENNA,
                                   MPL_EVENT_ANTENNA_DISCONNECTED,
                                   MPL_EVENT_ANTENNA_SHORTED,
                                   MPL_EVENT_NO_SIGNAL,
                                   MPL_EVENT_CHANNEL_UNAVAILABLE,
                                   MPL_EVENT_CHANNEL_UNSUBSCRIBED,
                                   MPL_EVENT_SUBSCRIPTION_UPDATED,
                                   MPL_EVENT_CHANNEL_LOCKED,
                                   MPL_EVENT_INCORRECT_PASS_CODE,
                                   MPL_EVENT_SAVE_ARTIST,
                                   MPL_EVENT_SAVE_SONG,
                                   MPL_EVENT_NO_ARTIST_AVAILABLE,
                                   MPL_EVENT_ARTIST_SAVED,
                                   MPL_EVENT_NO_SONG_AVAILABLE,
                                   MPL_EVENT_SONG_SAVED,
                                   MPL_EVENT_SAVE_TEAM,
                                   MPL_EVENT_UPDATING_TEAMS,
                                   MPL_EVENT_ALERT_USAGE,
                                   MPL_EVENT_MEMORY_FULL,
                                   MPL_EVENT_REPLAY_MEMORY_ALMOST_FULL,
                                   MPL_EVENT_REPLAY_MEMORY_FULL,
                                   MPL_EVENT_NO_CITY_SELECTED,
                                   MPL_EVENT_JUMP_PENDING,
                                   MPL_EVENT_JUMP_CANCELED};
/// @}

/// @{
/// Functionality (capability) names of a media source.
inline const QString MPL_FUNCTIONALITY_BROWSE = QStringLiteral("BROWSE");
inline const QString MPL_FUNCTIONALITY_PLAYBACK_CONTROL = QStringLiteral("PLAYBACK_CONTROL");
inline const QString MPL_FUNCTIONALITY_INDEX = QStringLiteral("INDEX");
inline const QString MPL_FUNCTIONALITY_MEDIA_INFO = QStringLiteral("MEDIA_INFO");
inline const QString MPL_FUNCTIONALITY_PARENTAL_CONTROL = QStringLiteral("PARENTAL_CONTROL");
inline const QString MPL_FUNCTIONALITY_PLAYQUEUE = QStringLiteral("PLAYQUEUE");
inline const QString MPL_FUNCTIONALITY_LOGIN = QStringLiteral("LOGIN");
inline const QString MPL_FUNCTIONALITY_CUSTOM_ACTION = QStringLiteral("CUSTOM_ACTION");
inline const QString MPL_FUNCTIONALITY_SIRIUSXM_TUNER = QStringLiteral("SIRIUSXM_TUNER");
inline const QString MPL_FUNCTIONALITY_VIDEO_DISPLAY = QStringLiteral("VIDEO_DISPLAY");
inline const QString MPL_FUNCTIONALITY_VIDEO_CONTROL = QStringLiteral("VIDEO_CONTROL");
inline const std::array MPL_FUNCTIONALITIES{
    MPL_FUNCTIONALITY_BROWSE,        MPL_FUNCTIONALITY_PLAYBACK_CONTROL, MPL_FUNCTIONALITY_INDEX,
    MPL_FUNCTIONALITY_MEDIA_INFO,    MPL_FUNCTIONALITY_PARENTAL_CONTROL, MPL_FUNCTIONALITY_PLAYQUEUE,
    MPL_FUNCTIONALITY_LOGIN,         MPL_FUNCTIONALITY_CUSTOM_ACTION,    MPL_FUNCTIONALITY_SIRIUSXM_TUNER,
    MPL_FUNCTIONALITY_VIDEO_DISPLAY, MPL_FUNCTIONALITY_VIDEO_CONTROL};
/// @}

/// @{
/// Keys of the media-player configuration.
inline const QString MPL_CONFIG_KEY_CONFIG = QStringLiteral("config");
inline const QString MPL_CONFIG_KEY_BROWSE_CONFIG = QStringLiteral("browse_config");
inline const QString MPL_CONFIG_KEY_PLAYQUEUE_CONFIG = QStringLiteral("playqueue_config");
inline const QString MPL_CONFIG_KEY_INDEXER_CONFIG = QStringLiteral("indexer_config");
inline const QString MPL_CONFIG_KEY_MEDIA_INFO_CONFIG = QStringLiteral("media_info_config");
inline const QString MPL_CONFIG_KEY_TRACK_INFO = QStringLiteral("track_info");
inline const QString MPL_CONFIG_KEY_ON_PLAYQUEUE_FINISHED = QStringLiteral("on_playqueue_finished");
inline const QString MPL_CONFIG_KEY_CREATE_DEFAULT_PLAYLIST = QStringLiteral("create_default_playlist");
inline const QString MPL_CONFIG_KEY_PAUSE_AT_FIRST_TRACK = QStringLiteral("pause_at_first_track");
inline const QString MPL_CONFIG_KEY_STOP = QStringLiteral("stop");
inline const std::array MPL_CONFIG_KEYS{MPL_CONFIG_KEY_CONFIG,
                                        MPL_CONFIG_KEY_BROWSE_CONFIG,
                                        MPL_CONFIG_KEY_PLAYQUEUE_CONFIG,
                                        MPL_CONFIG_KEY_INDEXER_CONFIG,
                                        MPL_CONFIG_KEY_MEDIA_INFO_CONFIG,
                                        MPL_CONFIG_KEY_TRACK_INFO,
                                        MPL_CONFIG_KEY_ON_PLAYQUEUE_FINISHED,
                                        MPL_CONFIG_KEY_CREATE_DEFAULT_PLAYLIST,
                                        MPL_CONFIG_KEY_PAUSE_AT_FIRST_TRACK,
                                        MPL_CONFIG_KEY_STOP};
/// @}

/// @{
/// Indexer status texts.
inline const QString MPL_INDEX_STATUS_INACTIVE = QStringLiteral("Inactive");
inline const QString MPL_INDEX_STATUS_INDEXING_COMPLETED = QStringLiteral("Indexing Completed");
inline const std::array MPL_INDEX_STATUSES{MPL_INDEX_STATUS_INACTIVE, MPL_INDEX_STATUS_INDEXING_COMPLETED};
/// @}

/// @{
/// Suffixes of a media source's sub-objects, appended to the source's object path.
inline const QString MPL_OBJECT_PATH_SUFFIX_BROWSER = QStringLiteral("/Browser");
inline const QString MPL_OBJECT_PATH_SUFFIX_PLAYBACKCONTROL = QStringLiteral("/PlaybackControl");
inline const QString MPL_OBJECT_PATH_SUFFIX_INDEXER = QStringLiteral("/Indexer");
inline const QString MPL_OBJECT_PATH_SUFFIX_MEDIAINFO = QStringLiteral("/MediaInfo");
inline const QString MPL_OBJECT_PATH_SUFFIX_PLAYQUEUE = QStringLiteral("/Playqueue");
inline const QString MPL_OBJECT_PATH_SUFFIX_LOGIN = QStringLiteral("/Login");
inline const QString MPL_OBJECT_PATH_SUFFIX_CUSTOMACTION = QStringLiteral("/CustomAction");
inline const QString MPL_OBJECT_PATH_SUFFIX_VIDEODISPLAY = QStringLiteral("/VideoDisplay");
inline const QString MPL_OBJECT_PATH_SUFFIX_VIDEOCONTROL = QStringLiteral("/VideoControl");
inline const QString MPL_OBJECT_PATH_SUFFIX_SIRIUSXMTUNER = QStringLiteral("/SiriusXmTuner");
inline const QString MPL_OBJECT_PATH_SUFFIX_PARENTALCONTROL = QStringLiteral("/ParentalControl");
inline const std::array MPL_OBJECT_PATH_SUFFIXES{
    MPL_OBJECT_PATH_SUFFIX_BROWSER,        MPL_OBJECT_PATH_SUFFIX_PLAYBACKCONTROL,
    MPL_OBJECT_PATH_SUFFIX_INDEXER,        MPL_OBJECT_PATH_SUFFIX_MEDIAINFO,
    MPL_OBJECT_PATH_SUFFIX_PLAYQUEUE,      MPL_OBJECT_PATH_SUFFIX_LOGIN,
    MPL_OBJECT_PATH_SUFFIX_CUSTOMACTION,   MPL_OBJECT_PATH_SUFFIX_VIDEODISPLAY,
    MPL_OBJECT_PATH_SUFFIX_VIDEOCONTROL,   MPL_OBJECT_PATH_SUFFIX_SIRIUSXMTUNER,
    MPL_OBJECT_PATH_SUFFIX_PARENTALCONTROL};
/// @}

/// @{
/// Keys of a device/media record.
inline const QString MPL_DEVICE_RECORD_KEY_DEVICE_ID = QStringLiteral("device_id");
inline const QString MPL_DEVICE_RECORD_KEY_DEVICE_PATH = QStringLiteral("device_path");
inline const QString MPL_DEVICE_RECORD_KEY_DEVICE_TYPE = QStringLiteral("device_type");
inline const QString MPL_DEVICE_RECORD_KEY_SERVICE_NAME = QStringLiteral("service_name");
inline const QString MPL_DEVICE_RECORD_KEY_OBJECT_PATH = QStringLiteral("object_path");
inline const QString MPL_DEVICE_RECORD_KEY_MEDIA_NAME = QStringLiteral("media_name");
inline const std::array MPL_DEVICE_RECORD_KEYS{
    MPL_DEVICE_RECORD_KEY_DEVICE_ID,    MPL_DEVICE_RECORD_KEY_DEVICE_PATH, MPL_DEVICE_RECORD_KEY_DEVICE_TYPE,
    MPL_DEVICE_RECORD_KEY_SERVICE_NAME, MPL_DEVICE_RECORD_KEY_OBJECT_PATH, MPL_DEVICE_RECORD_KEY_MEDIA_NAME};
/// @}

/// @{
/// Mount states of a device.
inline const QString MPL_MOUNT_STATE_DISMOUNTED = QStringLiteral("Dismounted");
inline const QString MPL_MOUNT_STATE_MOUNTED = QStringLiteral("Mounted");
inline const std::array MPL_MOUNT_STATES{MPL_MOUNT_STATE_DISMOUNTED, MPL_MOUNT_STATE_MOUNTED};
/// @}

/// @{
/// Keys of a media source's start parameters.
inline const QString MPL_SOURCE_PARAMETER_KEY_SERVICE_NAME = QStringLiteral("SERVICE_NAME");
inline const QString MPL_SOURCE_PARAMETER_KEY_DEVICE_NAME = QStringLiteral("DEVICE_NAME");
inline const QString MPL_SOURCE_PARAMETER_KEY_DEVICE_ID = QStringLiteral("DEVICE_ID");
inline const QString MPL_SOURCE_PARAMETER_KEY_DEVICE_PATH = QStringLiteral("DEVICE_PATH");
inline const QString MPL_SOURCE_PARAMETER_KEY_VOLUME_PATH = QStringLiteral("VOLUME_PATH");
inline const QString MPL_SOURCE_PARAMETER_KEY_INDEX_PATH = QStringLiteral("INDEX_PATH");
inline const std::array MPL_SOURCE_PARAMETER_KEYS{
    MPL_SOURCE_PARAMETER_KEY_SERVICE_NAME, MPL_SOURCE_PARAMETER_KEY_DEVICE_NAME,
    MPL_SOURCE_PARAMETER_KEY_DEVICE_ID,    MPL_SOURCE_PARAMETER_KEY_DEVICE_PATH,
    MPL_SOURCE_PARAMETER_KEY_VOLUME_PATH,  MPL_SOURCE_PARAMETER_KEY_INDEX_PATH};
/// @}

/// @{
/// Keys of the browse-path parameters.
inline const QString MPL_BROWSE_PATH_KEY_AUDIO_PODCASTS_PATH = QStringLiteral("AUDIO_PODCASTS_PATH");
inline const QString MPL_BROWSE_PATH_KEY_AUDIO_BOOKS_PATH = QStringLiteral("AUDIO_BOOKS_PATH");
inline const QString MPL_BROWSE_PATH_KEY_MUSIC_PATH = QStringLiteral("MUSIC_PATH");
inline const QString MPL_BROWSE_PATH_KEY_GENRES_PATH = QStringLiteral("GENRES_PATH");
inline const QString MPL_BROWSE_PATH_KEY_ARTISTS_PATH = QStringLiteral("ARTISTS_PATH");
inline const QString MPL_BROWSE_PATH_KEY_COMPOSERS_PATH = QStringLiteral("COMPOSERS_PATH");
inline const QString MPL_BROWSE_PATH_KEY_ALBUMS_PATH = QStringLiteral("ALBUMS_PATH");
inline const QString MPL_BROWSE_PATH_KEY_COMPILATIONS_PATH = QStringLiteral("COMPILATIONS_PATH");
inline const QString MPL_BROWSE_PATH_KEY_SONGS_PATH = QStringLiteral("SONGS_PATH");
inline const QString MPL_BROWSE_PATH_KEY_PLAYLISTS_PATH = QStringLiteral("PLAYLISTS_PATH");
inline const QString MPL_BROWSE_PATH_KEY_ITUNES_RADIO_PATH = QStringLiteral("ITUNES_RADIO_PATH");
inline const QString MPL_BROWSE_PATH_KEY_VIDEO_PATH = QStringLiteral("VIDEO_PATH");
inline const QString MPL_BROWSE_PATH_KEY_VIDEO_FILES_PATH = QStringLiteral("VIDEO_FILES_PATH");
inline const QString MPL_BROWSE_PATH_KEY_CORRECTED_PATH = QStringLiteral("CORRECTED_PATH");
inline const QString MPL_BROWSE_PATH_KEY_CORRECTED_GENRE_PATH = QStringLiteral("CORRECTED_GENRE_PATH");
inline const QString MPL_BROWSE_PATH_KEY_CORRECTED_ARTIST_PATH = QStringLiteral("CORRECTED_ARTIST_PATH");
inline const QString MPL_BROWSE_PATH_KEY_CORRECTED_ALBUM_PATH = QStringLiteral("CORRECTED_ALBUM_PATH");
inline const QString MPL_BROWSE_PATH_KEY_CORRECTED_SONGS_PATH = QStringLiteral("CORRECTED_SONGS_PATH");
inline const std::array MPL_BROWSE_PATH_KEYS{
    MPL_BROWSE_PATH_KEY_AUDIO_PODCASTS_PATH,  MPL_BROWSE_PATH_KEY_AUDIO_BOOKS_PATH,
    MPL_BROWSE_PATH_KEY_MUSIC_PATH,           MPL_BROWSE_PATH_KEY_GENRES_PATH,
    MPL_BROWSE_PATH_KEY_ARTISTS_PATH,         MPL_BROWSE_PATH_KEY_COMPOSERS_PATH,
    MPL_BROWSE_PATH_KEY_ALBUMS_PATH,          MPL_BROWSE_PATH_KEY_COMPILATIONS_PATH,
    MPL_BROWSE_PATH_KEY_SONGS_PATH,           MPL_BROWSE_PATH_KEY_PLAYLISTS_PATH,
    MPL_BROWSE_PATH_KEY_ITUNES_RADIO_PATH,    MPL_BROWSE_PATH_KEY_VIDEO_PATH,
    MPL_BROWSE_PATH_KEY_VIDEO_FILES_PATH,     MPL_BROWSE_PATH_KEY_CORRECTED_PATH,
    MPL_BROWSE_PATH_KEY_CORRECTED_GENRE_PATH, MPL_BROWSE_PATH_KEY_CORRECTED_ARTIST_PATH,
    MPL_BROWSE_PATH_KEY_CORRECTED_ALBUM_PATH, MPL_BROWSE_PATH_KEY_CORRECTED_SONGS_PATH};
/// @}

/// @{
/// Booleans as text.
inline const QString MPL_TEXTUAL_BOOLEAN_FALSE = QStringLiteral("false");
inline const QString MPL_TEXTUAL_BOOLEAN_TRUE = QStringLiteral("true");
inline const std::array MPL_TEXTUAL_BOOLEANS{MPL_TEXTUAL_BOOLEAN_FALSE, MPL_TEXTUAL_BOOLEAN_TRUE};
/// @}

/// @{
/// Keys of the functionalities JSON text.
inline const QString MPL_FUNCTIONALITY_JSON_KEY_AVAILABLE_FUNCTIONALITIES =
    QStringLiteral("available_functionalities");
inline const QString MPL_FUNCTIONALITY_JSON_KEY_FUNCTIONALITY_STATE = QStringLiteral("functionality_state");
inline const QString MPL_FUNCTIONALITY_JSON_KEY_OPTIONS = QStringLiteral("options");
inline const std::array MPL_FUNCTIONALITY_JSON_KEYS{MPL_FUNCTIONALITY_JSON_KEY_AVAILABLE_FUNCTIONALITIES,
                                                    MPL_FUNCTIONALITY_JSON_KEY_FUNCTIONALITY_STATE,
                                                    MPL_FUNCTIONALITY_JSON_KEY_OPTIONS};
/// @}

/// @{
/// Values of the key "functionality_state".
inline const QString MPL_FUNCTIONALITY_STATE_DISABLED = QStringLiteral("DISABLED");
inline const QString MPL_FUNCTIONALITY_STATE_ENABLED = QStringLiteral("ENABLED");
inline const std::array MPL_FUNCTIONALITY_STATES{MPL_FUNCTIONALITY_STATE_DISABLED,
                                                 MPL_FUNCTIONALITY_STATE_ENABLED};
/// @}

} // namespace MPL
