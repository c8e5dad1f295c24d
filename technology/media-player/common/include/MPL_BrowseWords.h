/// @file
/// Words of browsing and of what is found: categories, record keys, search states, error texts.
#pragma once

#include <QString>

#include <array>

namespace MPL
{

/// Key of a configuration's list of top-level browse categories.
inline const QString MPL_TOP_LEVEL_CATEGORIES_KEY = QStringLiteral("top_level_categories");

/// @{
/// Browse categories.
inline const QString MPL_BROWSE_CATEGORY_GENRE = QStringLiteral("genre");
inline const QString MPL_BROWSE_CATEGORY_ARTIST = QStringLiteral("artist");
inline const QString MPL_BROWSE_CATEGORY_ALBUM = QStringLiteral("album");
inline const QString MPL_BROWSE_CATEGORY_COMPILATION = QStringLiteral("compilation");
inline const QString MPL_BROWSE_CATEGORY_SONG = QStringLiteral("song");
inline const QString MPL_BROWSE_CATEGORY_PLAYLIST = QStringLiteral("playlist");
inline const QString MPL_BROWSE_CATEGORY_AUDIO_BOOK = QStringLiteral("audio_book");
inline const QString MPL_BROWSE_CATEGORY_AUDIO_PODCAST = QStringLiteral("audio_podcast");
inline const QString MPL_BROWSE_CATEGORY_ITUNES_RADIO = QStringLiteral("itunes_radio");
inline const QString MPL_BROWSE_CATEGORY_FOLDER = QStringLiteral("folder");
inline const QString MPL_BROWSE_CATEGORY_COMPOSER = QStringLiteral("composer");
inline const QString MPL_BROWSE_CATEGORY_VIDEO = QStringLiteral("video");
inline const std::array MPL_BROWSE_CATEGORIES{
    MPL_BROWSE_CATEGORY_GENRE,       MPL_BROWSE_CATEGORY_ARTIST,        MPL_BROWSE_CATEGORY_ALBUM,
    MPL_BROWSE_CATEGORY_COMPILATION, MPL_BROWSE_CATEGORY_SONG,          MPL_BROWSE_CATEGORY_PLAYLIST,
    MPL_BROWSE_CATEGORY_AUDIO_BOOK,  MPL_BROWSE_CATEGORY_AUDIO_PODCAST, MPL_BROWSE_CATEGORY_ITUNES_RADIO,
    MPL_BROWSE_CATEGORY_FOLDER,      MPL_BROWSE_CATEGORY_COMPOSER,      MPL_BROWSE_CATEGORY_VIDEO};
/// @}

/// @{
/// Keys of a track-information record.
inline const QString MPL_TRACK_INFO_KEY_GENRE_NAME = QStringLiteral("genre_name");
inline const QString MPL_TRACK_INFO_KEY_ARTIST_NAME = QStringLiteral("artist_name");
inline const QString MPL_TRACK_INFO_KEY_ALBUM_NAME = QStringLiteral("album_name");
inline const QString MPL_TRACK_INFO_KEY_TRACK_NAME = QStringLiteral("track_name");
inline const QString MPL_TRACK_INFO_KEY_TRACK_ID = QStringLiteral("track_id");
inline const QString MPL_TRACK_INFO_KEY_COMPOSER_NAME = QStringLiteral("composer_name");
inline const QString MPL_TRACK_INFO_KEY_FOLDER_NAME = QStringLiteral("folder_name");
inline const QString MPL_TRACK_INFO_KEY_ALBUM_ARTIST = QStringLiteral("album_artist");
inline const QString MPL_TRACK_INFO_KEY_ALBUM_ART = QStringLiteral("album_art");
inline const QString MPL_TRACK_INFO_KEY_ALBUM_YEAR = QStringLiteral("album_year");
inline const QString MPL_TRACK_INFO_KEY_TRACK_LENGTH = QStringLiteral("track_length");
inline const QString MPL_TRACK_INFO_KEY_TRACK_NUMBER = QStringLiteral("track_number");
inline const QString MPL_TRACK_INFO_KEY_FILE_NAME = QStringLiteral("file_name");
inline const QString MPL_TRACK_INFO_KEY_TRACK_URL = QStringLiteral("track_url");
inline const QString MPL_TRACK_INFO_KEY_NOW_PLAYING_TRACK_INDEX = QStringLiteral("now_playing_track_index");
inline const QString MPL_TRACK_INFO_KEY_MEDIA_TYPE = QStringLiteral("media_type");
inline const QString MPL_TRACK_INFO_KEY_TRACK_COUNT = QStringLiteral("track_count");
inline const QString MPL_TRACK_INFO_KEY_ALBUM_COUNT = QStringLiteral("album_count");
inline const QString MPL_TRACK_INFO_KEY_TOTAL_DURATION = QStringLiteral("total_duration");
inline const QString MPL_TRACK_INFO_KEY_IAP_FLAGS = QStringLiteral("iap_flags");
inline const QString MPL_TRACK_INFO_KEY_IS_ITUNES_RADIO = QStringLiteral("is_itunes_radio");
inline const QString MPL_TRACK_INFO_KEY_NOW_PLAYING_APP_NAME = QStringLiteral("now_playing_app_name");
inline const QString MPL_TRACK_INFO_KEY_SONG_RATING = QStringLiteral("song_rating");
inline const QString MPL_TRACK_INFO_KEY_STATION_NAME = QStringLiteral("station_name");
inline const QString MPL_TRACK_INFO_KEY_IMAGE_URL = QStringLiteral("image_url");
inline const std::array MPL_TRACK_INFO_KEYS{MPL_TRACK_INFO_KEY_GENRE_NAME,
                                            MPL_TRACK_INFO_KEY_ARTIST_NAME,
                                            MPL_TRACK_INFO_KEY_ALBUM_NAME,
                                            MPL_TRACK_INFO_KEY_TRACK_NAME,
                                            MPL_TRACK_INFO_KEY_TRACK_ID,
                                            MPL_TRACK_INFO_KEY_COMPOSER_NAME,
                                            MPL_TRACK_INFO_KEY_FOLDER_NAME,
                                            MPL_TRACK_INFO_KEY_ALBUM_ARTIST,
                                            MPL_TRACK_INFO_KEY_ALBUM_ART,
                                            MPL_TRACK_INFO_KEY_ALBUM_YEAR,
                                            MPL_TRACK_INFO_KEY_TRACK_LENGTH,
                                            MPL_TRACK_INFO_KEY_TRACK_NUMBER,
                                            MPL_TRACK_INFO_KEY_FILE_NAME,
                                            MPL_TRACK_INFO_KEY_TRACK_URL,
                                            MPL_TRACK_INFO_KEY_NOW_PLAYING_TRACK_INDEX,
                                            MPL_TRACK_INFO_KEY_MEDIA_TYPE,
                                            MPL_TRACK_INFO_KEY_TRACK_COUNT,
                                            MPL_TRACK_INFO_KEY_ALBUM_COUNT,
                                            MPL_TRACK_INFO_KEY_TOTAL_DURATION,
                                            MPL_TRACK_INFO_KEY_IAP_FLAGS,
                                            MPL_TRACK_INFO_KEY_IS_ITUNES_RADIO,
                                            MPL_TRACK_INFO_KEY_NOW_PLAYING_APP_NAME,
                                            MPL_TRACK_INFO_KEY_SONG_RATING,
                                            MPL_TRACK_INFO_KEY_STATION_NAME,
                                            MPL_TRACK_INFO_KEY_IMAGE_URL};
/// @}

/// @{
/// The key "RESULT_TYPE" of a browse or search result record, its values, and the other keys of the record.
inline const QString MPL_RESULT_KEY_RESULT_TYPE = QStringLiteral("RESULT_TYPE");
inline const QString MPL_RESULT_KEY_TOPLEVEL = QStringLiteral("TOPLEVEL");
inline const QString MPL_RESULT_KEY_PLAYLIST = QStringLiteral("PLAYLIST");
inline const QString MPL_RESULT_KEY_GENRE = QStringLiteral("GENRE");
inline const QString MPL_RESULT_KEY_ARTIST = QStringLiteral("ARTIST");
inline const QString MPL_RESULT_KEY_ALBUM = QStringLiteral("ALBUM");
inline const QString MPL_RESULT_KEY_COMPILATION = QStringLiteral("COMPILATION");
inline const QString MPL_RESULT_KEY_SONG = QStringLiteral("SONG");
inline const QString MPL_RESULT_KEY_AUDIO_BOOK = QStringLiteral("AUDIO_BOOK");
inline const QString MPL_RESULT_KEY_AUDIO_PODCAST = QStringLiteral("AUDIO_PODCAST");
inline const QString MPL_RESULT_KEY_ITUNES_RADIO = QStringLiteral("ITUNES_RADIO");
inline const QString MPL_RESULT_KEY_ENTRY_ID = QStringLiteral("ENTRY_ID");
inline const QString MPL_RESULT_KEY_SCORE = QStringLiteral("SCORE");
inline const QString MPL_RESULT_KEY_COMPOSER = QStringLiteral("COMPOSER");
inline const QString MPL_RESULT_KEY_FOLDER = QStringLiteral("FOLDER");
inline const QString MPL_RESULT_KEY_FILE = QStringLiteral("FILE");
inline const QString MPL_RESULT_KEY_DURATION = QStringLiteral("DURATION");
inline const QString MPL_RESULT_KEY_ALBUM_ARTIST = QStringLiteral("ALBUM-ARTIST");
inline const QString MPL_RESULT_KEY_ALBUM_ART = QStringLiteral("ALBUM-ART");
inline const QString MPL_RESULT_KEY_ALBUM_YEAR = QStringLiteral("ALBUM-YEAR");
inline const QString MPL_RESULT_KEY_TRACK_NUMBER = QStringLiteral("TRACK-NUMBER");
inline const QString MPL_RESULT_KEY_SEARCH = QStringLiteral("SEARCH");
inline const QString MPL_RESULT_KEY_VIDEO = QStringLiteral("VIDEO");
inline const QString MPL_RESULT_KEY_TRACK_COUNT = QStringLiteral("TRACK-COUNT");
inline const QString MPL_RESULT_KEY_ALBUM_COUNT = QStringLiteral("ALBUM-COUNT");
inline const QString MPL_RESULT_KEY_PLAYLIST_DURATION_MS = QStringLiteral("PLAYLIST-DURATION-MS");
inline const QString MPL_RESULT_KEY_COMMAND = QStringLiteral("COMMAND");
inline const QString MPL_RESULT_KEY_SUB_MENU = QStringLiteral("SUB-MENU");
inline const QString MPL_RESULT_KEY_ART_DYNAMIC = QStringLiteral("ART-DYNAMIC");
inline const QString MPL_RESULT_KEY_STATION = QStringLiteral("STATION");
inline const QString MPL_RESULT_KEY_CONTAINER = QStringLiteral("CONTAINER");
inline const std::array MPL_RESULT_KEYS{MPL_RESULT_KEY_RESULT_TYPE,  MPL_RESULT_KEY_TOPLEVEL,
                                        MPL_RESULT_KEY_PLAYLIST,     MPL_RESULT_KEY_GENRE,
                                        MPL_RESULT_KEY_ARTIST,       MPL_RESULT_KEY_ALBUM,
                                        MPL_RESULT_KEY_COMPILATION,  MPL_RESULT_KEY_SONG,
                                        MPL_RESULT_KEY_AUDIO_BOOK,   MPL_RESULT_KEY_AUDIO_PODCAST,
                                        MPL_RESULT_KEY_ITUNES_RADIO, MPL_RESULT_KEY_ENTRY_ID,
                                        MPL_RESULT_KEY_SCORE,        MPL_RESULT_KEY_COMPOSER,
                                        MPL_RESULT_KEY_FOLDER,       MPL_RESULT_KEY_FILE,
                                        MPL_RESULT_KEY_DURATION,     MPL_RESULT_KEY_ALBUM_ARTIST,
                                        MPL_RESULT_KEY_ALBUM_ART,    MPL_RESULT_KEY_ALBUM_YEAR,
                                        MPL_RESULT_KEY_TRACK_NUMBER, MPL_RESULT_KEY_SEARCH,
                                        MPL_RESULT_KEY_VIDEO,        MPL_RESULT_KEY_TRACK_COUNT,
                                        MPL_RESULT_KEY_ALBUM_COUNT,  MPL_RESULT_KEY_PLAYLIST_DURATION_MS,
                                        MPL_RESULT_KEY_COMMAND,      MPL_RESULT_KEY_SUB_MENU,
                                        MPL_RESULT_KEY_ART_DYNAMIC,  MPL_RESULT_KEY_STATION,
                                        MPL_RESULT_KEY_CONTAINER};
/// @}

/// @{
/// Browse status: the key, its values, and the further keys and values of a status record.
inline const QString MPL_BROWSE_STATUS_BROWSE_STATUS = QStringLiteral("BROWSE_STATUS");
inline const QString MPL_BROWSE_STATUS_BROWSE_NEXT = QStringLiteral("BROWSE_NEXT");
inline const QString MPL_BROWSE_STATUS_BROWSE_BACK = QStringLiteral("BROWSE_BACK");
inline const QString MPL_BROWSE_STATUS_BROWSE_CANCELLED = QStringLiteral("BROWSE_CANCELLED");
inline const QString MPL_BROWSE_STATUS_BROWSE_RESULTS_SORT_INFO = QStringLiteral("BROWSE_RESULTS_SORT_INFO");
inline const QString MPL_BROWSE_STATUS_BROWSE_REQUIRES_HMI_SORT = QStringLiteral("BROWSE_REQUIRES_HMI_SORT");
inline const QString MPL_BROWSE_STATUS_BROWSE_RESULTS_COUNT = QStringLiteral("BROWSE_RESULTS_COUNT");
inline const QString MPL_BROWSE_STATUS_SUCCESS = QStringLiteral("SUCCESS");
inline const QString MPL_BROWSE_STATUS_FAILURE = QStringLiteral("FAILURE");
inline const std::array MPL_BROWSE_STATUS{MPL_BROWSE_STATUS_BROWSE_STATUS,
                                          MPL_BROWSE_STATUS_BROWSE_NEXT,
                                          MPL_BROWSE_STATUS_BROWSE_BACK,
                                          MPL_BROWSE_STATUS_BROWSE_CANCELLED,
                                          MPL_BROWSE_STATUS_BROWSE_RESULTS_SORT_INFO,
                                          MPL_BROWSE_STATUS_BROWSE_REQUIRES_HMI_SORT,
                                          MPL_BROWSE_STATUS_BROWSE_RESULTS_COUNT,
                                          MPL_BROWSE_STATUS_SUCCESS,
                                          MPL_BROWSE_STATUS_FAILURE};
/// @}

/// @{
/// Browser function and option names.
inline const QString MPL_BROWSER_FUNCTION_BROWSER_START = QStringLiteral("BROWSER-START");
inline const QString MPL_BROWSER_FUNCTION_BROWSER_BACK = QStringLiteral("BROWSER-BACK");
inline const QString MPL_BROWSER_FUNCTION_BROWSER_CANCEL = QStringLiteral("BROWSER-CANCEL");
inline const QString MPL_BROWSER_FUNCTION_BROWSER_SEARCH = QStringLiteral("BROWSER-SEARCH");
inline const QString MPL_BROWSER_FUNCTION_BROWSER_SELECT_INDEX = QStringLiteral("BROWSER-SELECT-INDEX");
inline const QString MPL_BROWSER_FUNCTION_BROWSER_GET_COUNT = QStringLiteral("BROWSER-GET-COUNT");
inline const QString MPL_BROWSER_FUNCTION_BROWSER_GET_RESULT = QStringLiteral("BROWSER-GET-RESULT");
inline const QString MPL_BROWSER_FUNCTION_BROWSER_PLAY_ALL = QStringLiteral("BROWSER-PLAY-ALL");
inline const QString MPL_BROWSER_FUNCTION_BROWSER_CHARACTER_INDEX = QStringLiteral("BROWSER-CHARACTER-INDEX");
inline const QString MPL_BROWSER_FUNCTION_BROWSER_HIERARCHY = QStringLiteral("BROWSER-HIERARCHY");
inline const QString MPL_BROWSER_FUNCTION_BROWSER_CURRENT_HIERARCHY_URL =
    QStringLiteral("BROWSER-CURRENT-HIERARCHY-URL");
inline const QString MPL_BROWSER_FUNCTION_BROWSER_CURRENT_SORT_MODE =
    QStringLiteral("BROWSER-CURRENT-SORT-MODE");
inline const QString MPL_BROWSER_FUNCTION_PLAYALL = QStringLiteral("PLAYALL");
inline const std::array MPL_BROWSER_FUNCTIONS{MPL_BROWSER_FUNCTION_BROWSER_START,
                                              MPL_BROWSER_FUNCTION_BROWSER_BACK,
                                              MPL_BROWSER_FUNCTION_BROWSER_CANCEL,
                                              MPL_BROWSER_FUNCTION_BROWSER_SEARCH,
                                              MPL_BROWSER_FUNCTION_BROWSER_SELECT_INDEX,
                                              MPL_BROWSER_FUNCTION_BROWSER_GET_COUNT,
                                              MPL_BROWSER_FUNCTION_BROWSER_GET_RESULT,
                                              MPL_BROWSER_FUNCTION_BROWSER_PLAY_ALL,
                                              MPL_BROWSER_FUNCTION_BROWSER_CHARACTER_INDEX,
                                              MPL_BROWSER_FUNCTION_BROWSER_HIERARCHY,
                                              MPL_BROWSER_FUNCTION_BROWSER_CURRENT_HIERARCHY_URL,
                                              MPL_BROWSER_FUNCTION_BROWSER_CURRENT_SORT_MODE,
                                              MPL_BROWSER_FUNCTION_PLAYALL};
/// @}

/// @{
/// Keys of the result lists by category.
inline const QString MPL_RESULT_LIST_KEY_TOP_LEVEL_RESULTS = QStringLiteral("top_level_results");
inline const QString MPL_RESULT_LIST_KEY_GENRE_RESULTS = QStringLiteral("genre_results");
inline const QString MPL_RESULT_LIST_KEY_ARTIST_RESULTS = QStringLiteral("artist_results");
inline const QString MPL_RESULT_LIST_KEY_ALBUM_RESULTS = QStringLiteral("album_results");
inline const QString MPL_RESULT_LIST_KEY_TRACK_RESULTS = QStringLiteral("track_results");
inline const QString MPL_RESULT_LIST_KEY_PLAYLIST_RESULTS = QStringLiteral("playlist_results");
inline const QString MPL_RESULT_LIST_KEY_FOLDER_RESULTS = QStringLiteral("folder_results");
inline const QString MPL_RESULT_LIST_KEY_COMPOSER_RESULTS = QStringLiteral("composer_results");
inline const QString MPL_RESULT_LIST_KEY_VIDEO_RESULTS = QStringLiteral("video_results");
inline const QString MPL_RESULT_LIST_KEY_AUDIO_BOOK_RESULTS = QStringLiteral("audio_book_results");
inline const QString MPL_RESULT_LIST_KEY_AUDIO_PODCAST_RESULTS = QStringLiteral("audio_podcast_results");
inline const QString MPL_RESULT_LIST_KEY_ITUNES_RADIO_RESULTS = QStringLiteral("itunes_radio_results");
inline const std::array MPL_RESULT_LIST_KEYS{
    MPL_RESULT_LIST_KEY_TOP_LEVEL_RESULTS,     MPL_RESULT_LIST_KEY_GENRE_RESULTS,
    MPL_RESULT_LIST_KEY_ARTIST_RESULTS,        MPL_RESULT_LIST_KEY_ALBUM_RESULTS,
    MPL_RESULT_LIST_KEY_TRACK_RESULTS,         MPL_RESULT_LIST_KEY_PLAYLIST_RESULTS,
    MPL_RESULT_LIST_KEY_FOLDER_RESULTS,        MPL_RESULT_LIST_KEY_COMPOSER_RESULTS,
    MPL_RESULT_LIST_KEY_VIDEO_RESULTS,         MPL_RESULT_LIST_KEY_AUDIO_BOOK_RESULTS,
    MPL_RESULT_LIST_KEY_AUDIO_PODCAST_RESULTS, MPL_RESULT_LIST_KEY_ITUNES_RADIO_RESULTS};
/// @}

/// @{
/// Search states.
inline const QString MPL_SEARCH_STATE_INQUIRY_SEARCH = QStringLiteral("INQUIRY_SEARCH");
inline const QString MPL_SEARCH_STATE_INQUIRY_BROWSE = QStringLiteral("INQUIRY_BROWSE");
inline const QString MPL_SEARCH_STATE_SEARCH_CANCELLED = QStringLiteral("SEARCH_CANCELLED");
inline const QString MPL_SEARCH_STATE_SEARCH_DONE = QStringLiteral("SEARCH_DONE");
inline const QString MPL_SEARCH_STATE_SEARCH_CLEARED = QStringLiteral("SEARCH_CLEARED");
inline const std::array MPL_SEARCH_STATES{MPL_SEARCH_STATE_INQUIRY_SEARCH, MPL_SEARCH_STATE_INQUIRY_BROWSE,
                                          MPL_SEARCH_STATE_SEARCH_CANCELLED, MPL_SEARCH_STATE_SEARCH_DONE,
                                          MPL_SEARCH_STATE_SEARCH_CLEARED};
/// @}

/// @{
/// Error texts of the browse and search services.
inline const QString MPL_BROWSE_ERROR_MESSAGE_RESULT_COUNT_IS_ZERO =
    QStringLiteral("SearchImpl::GetResults Count is 0.");
inline const QString MPL_BROWSE_ERROR_MESSAGE_FETCHING_RESULTS =
    QStringLiteral("SearchImpl::HandleGetResults fetching results error.");
inline const QString MPL_BROWSE_ERROR_MESSAGE_SELECTED_INDEX =
    QStringLiteral("SearchImpl::HandleSelectRecord selected index error.");
inline const QString MPL_BROWSE_ERROR_MESSAGE_SELECTED_INDEX_OUT_OF_RANGE =
    QStringLiteral("SearchImpl::SelectRecord selected index out of range.");
inline const QString MPL_BROWSE_ERROR_MESSAGE_INVALID_FUNCTION =
    QStringLiteral("Invalid function is called.");
inline const QString MPL_BROWSE_ERROR_MESSAGE_CATEGORIES_NOT_SUPPORTED =
    QStringLiteral("GetAvailableCategories() not supported!");
inline const QString MPL_BROWSE_ERROR_MESSAGE_SORT_METHODS_NOT_SUPPORTED =
    QStringLiteral("GetAvailableSortMethods() not supported!");
inline const std::array MPL_BROWSE_ERROR_MESSAGES{MPL_BROWSE_ERROR_MESSAGE_RESULT_COUNT_IS_ZERO,
                                                  MPL_BROWSE_ERROR_MESSAGE_FETCHING_RESULTS,
                                                  MPL_BROWSE_ERROR_MESSAGE_SELECTED_INDEX,
                                                  MPL_BROWSE_ERROR_MESSAGE_SELECTED_INDEX_OUT_OF_RANGE,
                                                  MPL_BROWSE_ERROR_MESSAGE_INVALID_FUNCTION,
                                                  MPL_BROWSE_ERROR_MESSAGE_CATEGORIES_NOT_SUPPORTED,
                                                  MPL_BROWSE_ERROR_MESSAGE_SORT_METHODS_NOT_SUPPORTED};
/// @}

/// @{
/// Play-queue function names.
inline const QString MPL_PLAYQUEUE_FUNCTION_PLAYQUEUE_GET_COUNT = QStringLiteral("PLAYQUEUE-GET-COUNT");
inline const QString MPL_PLAYQUEUE_FUNCTION_PLAYQUEUE_TRACK_INFO = QStringLiteral("PLAYQUEUE-TRACK-INFO");
inline const QString MPL_PLAYQUEUE_FUNCTION_PLAYQUEUE_GET_INDEX = QStringLiteral("PLAYQUEUE-GET-INDEX");
inline const QString MPL_PLAYQUEUE_FUNCTION_PLAYQUEUE_FUNC = QStringLiteral("PLAYQUEUE-FUNC");
inline const std::array MPL_PLAYQUEUE_FUNCTIONS{
    MPL_PLAYQUEUE_FUNCTION_PLAYQUEUE_GET_COUNT, MPL_PLAYQUEUE_FUNCTION_PLAYQUEUE_TRACK_INFO,
    MPL_PLAYQUEUE_FUNCTION_PLAYQUEUE_GET_INDEX, MPL_PLAYQUEUE_FUNCTION_PLAYQUEUE_FUNC};
/// @}

/// Error text of the play-queue database.
inline const QString MPL_PLAYQUEUE_DATABASE_ERROR_MESSAGE = QStringLiteral("PlayQueue database error.");

/// @{
/// Media-info function names.
inline const QString MPL_MEDIAINFO_FUNCTION_MEDIAINFO_TRACK_INFO = QStringLiteral("MEDIAINFO-TRACK-INFO");
inline const QString MPL_MEDIAINFO_FUNCTION_MEDIAINFO_TRACK_TIME = QStringLiteral("MEDIAINFO-TRACK-TIME");
inline const QString MPL_MEDIAINFO_FUNCTION_MEDIAINFO_TRACK_ART = QStringLiteral("MEDIAINFO-TRACK-ART");
inline const QString MPL_MEDIAINFO_FUNCTION_MEDIAINFO_STATION_ART = QStringLiteral("MEDIAINFO-STATION-ART");
inline const QString MPL_MEDIAINFO_FUNCTION_MEDIAINFO_BUFFER_INFO = QStringLiteral("MEDIAINFO-BUFFER-INFO");
inline const std::array MPL_MEDIAINFO_FUNCTIONS{
    MPL_MEDIAINFO_FUNCTION_MEDIAINFO_TRACK_INFO, MPL_MEDIAINFO_FUNCTION_MEDIAINFO_TRACK_TIME,
    MPL_MEDIAINFO_FUNCTION_MEDIAINFO_TRACK_ART, MPL_MEDIAINFO_FUNCTION_MEDIAINFO_STATION_ART,
    MPL_MEDIAINFO_FUNCTION_MEDIAINFO_BUFFER_INFO};
/// @}

/// @{
/// Media-info options.
inline const QString MPL_MEDIAINFO_OPTION_PLAYBACK_TIME_ON_TRACK_INFO_UPDATE =
    QStringLiteral("playback_time_on_track_info_update");
inline const QString MPL_MEDIAINFO_OPTION_RESET_IMMEDIATELY = QStringLiteral("reset_immediately");
inline const QString MPL_MEDIAINFO_OPTION_RESET_DELAYED = QStringLiteral("reset_delayed");
inline const std::array MPL_MEDIAINFO_OPTIONS{MPL_MEDIAINFO_OPTION_PLAYBACK_TIME_ON_TRACK_INFO_UPDATE,
                                              MPL_MEDIAINFO_OPTION_RESET_IMMEDIATELY,
                                              MPL_MEDIAINFO_OPTION_RESET_DELAYED};
/// @}

/// Error text of the media-info functionality.
inline const QString MPL_MEDIAINFO_FUNCTIONALITY_ERROR_MESSAGE =
    QStringLiteral("Media info functionality error!");

} // namespace MPL
