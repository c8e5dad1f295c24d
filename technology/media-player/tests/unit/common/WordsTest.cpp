// The words keep the spellings that the services use, odd ones included.
#include <MPL_DeviceInfoKeys.h>
#include <MPL_MediaPlayerLib.h>
#include <MPL_TestEnvironmentNames.h>

#include <QStringList>

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <set>

namespace
{

template <std::size_t N>
QStringList ListOf(const std::array<QString, N>& aWords)
{
    QStringList list;
    std::copy(aWords.begin(), aWords.end(), std::back_inserter(list));
    return list;
}

// What a test program's own static objects make of the words.
const QString kPathOfABrowser = QStringLiteral("/disc") + MPL::MPL_OBJECT_PATH_SUFFIX_BROWSER;
const QStringList kRepeatModes = ListOf(MPL::MPL_REPEAT_MODES);
const QStringList kTuners = ListOf(MPL_TEST_TUNER_PROCESS_NAMES);

TEST(Words, AreThereBeforeTheStaticObjectsOfATestProgram)
{
    EXPECT_EQ(kPathOfABrowser, "/disc/Browser");
    EXPECT_EQ(kRepeatModes, QStringList({"REPEAT_MODE_ALL", "REPEAT_MODE_ONE", "REPEAT_MODE_OFF"}));
    EXPECT_EQ(kTuners, QStringList({"audio-tuner-manager", "tuner-device-manager"}));
}

TEST(Words, KeepTheOddSpellingsOfTheServices)
{
    using namespace MPL;
    EXPECT_EQ(MPL_PLAY_STATES.back(), "INVALID STATE");
    EXPECT_EQ(MPL_PLAYBACK_SPEEDS.back(), "SPEED-1_2X");
    EXPECT_EQ(MPL_OBJECT_PATH_SUFFIX_PLAYQUEUE, "/Playqueue");
    EXPECT_EQ(MPL_EVENTS.back(), "JUMP_CANCELED");
    EXPECT_EQ(MPL_SOURCE_STATE_ERROR, MPL_EVENT_TYPE_ERROR);
}

template <std::size_t N>
void ExpectDistinct(const std::array<QString, N>& aWords)
{
    const QStringList list = ListOf(aWords);
    EXPECT_EQ(std::set<QString>(list.begin(), list.end()).size(), N) << qPrintable(list.join(' '));
    EXPECT_FALSE(list.contains(QString()));
}

TEST(Words, AreDistinctWithinAGroup)
{
    using namespace MPL;
    ExpectDistinct(MPL_PLAYBACK_FUNCTIONS);
    ExpectDistinct(MPL_EVENTS);
    ExpectDistinct(MPL_BROWSE_PATH_KEYS);
    ExpectDistinct(MPL_BROWSE_CATEGORIES);
    ExpectDistinct(MPL_TRACK_INFO_KEYS);
    ExpectDistinct(MPL_RESULT_KEYS);
    ExpectDistinct(MPL_BROWSE_STATUS);
    ExpectDistinct(MPL_RESULT_LIST_KEYS);
    ExpectDistinct(MPL_BROWSE_ERROR_MESSAGES);
    ExpectDistinct(MPL_DEVICE_INFO_KEYS);
}

TEST(Words, OfFunctionsAreNeitherOptionsNorErrorTexts)
{
    using namespace MPL;
    EXPECT_EQ(ListOf(MPL_PLAYQUEUE_FUNCTIONS).filter("PLAYQUEUE-").size(), 4);
    EXPECT_EQ(MPL_PLAYQUEUE_FUNCTIONS.size(), 4U);
    EXPECT_EQ(ListOf(MPL_MEDIAINFO_FUNCTIONS).filter("MEDIAINFO-").size(), 5);
    EXPECT_EQ(MPL_MEDIAINFO_FUNCTIONS.size(), 5U);
    EXPECT_EQ(ListOf(MPL_MEDIAINFO_OPTIONS),
              QStringList({"playback_time_on_track_info_update", "reset_immediately", "reset_delayed"}));
}

TEST(Words, KeepTheDevicePathTemplateByteForByte)
{
    EXPECT_EQ(MPL::MPL_APPLE_DEVICE_LABEL.arg("a", "b"),
              "ddp//ab?PATH=iap% 3A% 2F% 2Fusb% 3A% 2F% 2F000% 2F001");
}

TEST(Words, PairTheLaunchableSourcesWithTheirServices)
{
    ASSERT_EQ(MPL_TEST_MEDIA_SOURCE_PROCESS_NAMES.size(), MPL_TEST_MEDIA_SOURCE_SERVICE_NAMES.size());
    for (std::size_t i = 0; i < MPL_TEST_MEDIA_SOURCE_PROCESS_NAMES.size(); ++i) {
        const QString process = QString(MPL_TEST_MEDIA_SOURCE_PROCESS_NAMES.at(i)).remove('_');
        const QString service =
            MPL_TEST_MEDIA_SOURCE_SERVICE_NAMES.at(i).section('.', -2).remove('.').toLower();
        EXPECT_EQ(process, service);
    }
    EXPECT_EQ(MPL_TEST_MEDIA_SOURCE_PROCESS_PATH, "/opt/talvex/test/test_media_source/test_media_source");
}

} // namespace
