#include "MediaFixture.h"

#include <MPL_MediaPlayerLib.h>
#include <MPL_TestEnvironmentNames.h>

#include <QDBusMetaType>

namespace
{

QString MakeStandardFiles(const QString& aFolder)
{
    const AudioFile files[] = {{"wave/1.wav", "Ebb", "Wave", "Tides", "Ambient", 1, 0.5},
                               {"wave/2.flac", "Flöd", "Wave", "Tides", "Ambient", 2, 0.5},
                               {"wave/3.mp3", "Neap", "Wave", "Tides", "Ambient", 3, 0.5},
                               {"wave/4.ogg", "Spring", "Wave", "Tides", "Ambient", 4, 0.5},
                               {"other/a.wav", "Alpha Tides", "Quartz", "Minerals", "Rock", 1, 10},
                               {"b.flac", "Basalt", "Quartz", "Minerals", "Rock", 2, 10}};
    QString error;
    for (AudioFile file : files) {
        file.path.prepend(aFolder);
        error += MakeAudioFile(file);
    }
    return error;
}

} // namespace

QStringList Column(const QList<MPL::ResultDictionary>& aRecords, const QString& aKey)
{
    QStringList texts;
    for (const MPL::ResultDictionary& record : aRecords) {
        texts.append(record.value(aKey).toString());
    }
    return texts;
}

QString MediaFixture::Folder()
{
    return MPL_TEST_MEDIA_PLAYER_DIRECTORY + "test/";
}

void MediaFixture::SetUp()
{
    ASSERT_NO_FATAL_FAILURE(StackFixture::SetUp());
    qDBusRegisterMetaType<QList<qulonglong>>();
    ASSERT_EQ(MakeStandardFiles(Folder()), "");
    m_Source = &StartMassStorage();
    const auto connect = [this](auto& aProxy, const QString& aSuffix) {
        using Proxy = typename std::decay_t<decltype(aProxy)>::element_type;
        const MPL::ServiceObject& source = MassStorage();
        aProxy = std::make_unique<Proxy>(source.serviceName, source.GetPathString() + aSuffix, m_Bus);
    };
    connect(m_Browser, MPL::MPL_OBJECT_PATH_SUFFIX_BROWSER);
    connect(m_Control, MPL::MPL_OBJECT_PATH_SUFFIX_PLAYBACKCONTROL);
    connect(m_Indexer, MPL::MPL_OBJECT_PATH_SUFFIX_INDEXER);
    connect(m_Info, MPL::MPL_OBJECT_PATH_SUFFIX_MEDIAINFO);
    connect(m_Queue, MPL::MPL_OBJECT_PATH_SUFFIX_PLAYQUEUE);
    ASSERT_TRUE(WaitUntil("the media are indexed", [this] {
        return Value(m_Indexer->GetStatus()) == MPL::MPL_INDEX_STATUS_INDEXING_COMPLETED;
    }));
}

void MediaFixture::TearDown()
{
    if (m_Source != nullptr) { // what a sanitizer finds in it shows here
        EXPECT_EQ(Stop(*m_Source), 0) << m_Source->readAllStandardError().constData();
    }
    StackFixture::TearDown();
}

void MediaFixture::PlayAlbum()
{
    Value(m_Browser->Start());
    EXPECT_TRUE(SelectByText(MPL::MPL_RESULT_KEY_TOPLEVEL, MPL::MPL_BROWSE_CATEGORY_ALBUM));
    EXPECT_TRUE(SelectByText(MPL::MPL_RESULT_KEY_ALBUM, "Tides"));
    EXPECT_TRUE(Value(m_Browser->PlayAll()));
}

QList<MPL::ResultDictionary> MediaFixture::Records()
{
    QSignalSpy results(m_Browser.get(), &ComTalvexDBusMediaPlayerBrowserInterface::SignalBrowsingResults);
    static uint s_Transaction = 100;
    EXPECT_TRUE(Value(m_Browser->RequestRecords(0, 1000, ++s_Transaction)));
    EXPECT_TRUE(IsSignalled(results));
    const QVariantList answer = results.value(0);
    EXPECT_EQ(answer.value(1).toUInt(), s_Transaction);
    return answer.value(0).value<QList<MPL::ResultDictionary>>();
}

bool MediaFixture::SelectByText(const QString& aKey, const QString& aText)
{
    const auto index = Column(Records(), aKey).indexOf(aText);
    return index >= 0 && Value(m_Browser->SelectRecord(static_cast<uint>(index)));
}
