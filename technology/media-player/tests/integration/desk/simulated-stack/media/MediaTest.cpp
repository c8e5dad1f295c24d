#include "MediaTest.h"

#include "Require.h"
#include <MPL_MediaPlayerLib.h>
#include <MPL_TestEnvironmentNames.h>

#include <QCoreApplication>
#include <QDBusConnectionInterface>
#include <QDBusMetaType>
#include <QDir>
#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTimer>

namespace
{

constexpr int kPatienceMs = 5000;

QString SourcePath(const QString& aSuffix)
{
    return QStringLiteral("/com/talvex/DBus/MediaPlayer/MediaSource/MassStorage/1") + aSuffix;
}

// As the faults of one program.
QByteArray ReplyFaults(const QMap<QString, QString>& aFaults)
{
    QJsonObject replies;
    for (auto fault = aFaults.begin(); fault != aFaults.end(); ++fault) {
        replies.insert(QStringLiteral("com.talvex.DBus.MediaPlayer.") + fault.key(), *fault);
    }
    return QJsonDocument(QJsonObject{{QStringLiteral("replies"), replies}}).toJson();
}

} // namespace

bool Wait(const std::function<bool()>& aCondition)
{
    QElapsedTimer time;
    QTimer tick; // so that waiting for events ends
    tick.start(50);
    for (time.start(); !aCondition() && time.elapsed() < kPatienceMs;) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return aCondition();
}

QStringList Column(const QList<MPL::ResultDictionary>& aRecords, const QString& aKey)
{
    QStringList texts;
    for (const MPL::ResultDictionary& record : aRecords) {
        texts.append(record.value(aKey).toString());
    }
    return texts;
}

QString MediaTest::Folder()
{
    return MPL_TEST_MEDIA_PLAYER_DIRECTORY + QStringLiteral("test/");
}

QString MediaTest::MakeStandardFiles()
{
    const QString wave = QStringLiteral("Wave");
    const QString tides = QStringLiteral("Tides");
    const QString ambient = QStringLiteral("Ambient");
    const AudioFile files[] = {
        {QStringLiteral("wave/1.wav"), QStringLiteral("Ebb"), wave, tides, ambient, 1, 0.5},
        {QStringLiteral("wave/2.flac"), QStringLiteral("Flöd"), wave, tides, ambient, 2, 0.5},
        {QStringLiteral("wave/3.mp3"), QStringLiteral("Neap"), wave, tides, ambient, 3, 0.5},
        {QStringLiteral("wave/4.ogg"), QStringLiteral("Spring"), wave, tides, ambient, 4, 0.5},
        {QStringLiteral("other/a.wav"), QStringLiteral("Alpha Tides"), QStringLiteral("Quartz"),
         QStringLiteral("Minerals"), QStringLiteral("Rock"), 1, 10},
        {QStringLiteral("b.flac"), QStringLiteral("Basalt"), QStringLiteral("Quartz"),
         QStringLiteral("Minerals"), QStringLiteral("Rock"), 2, 10}};
    for (AudioFile file : files) {
        file.path.prepend(Folder());
        QString error = MakeAudioFile(file);
        if (!error.isEmpty()) {
            return error;
        }
    }
    return {};
}

void MediaTest::SetUpTestSuite()
{
    MPL::RegisterAllMetaTypes();
    qDBusRegisterMetaType<QList<qulonglong>>();
}

void MediaTest::SetUp()
{
    RequireSandbox();
    if (HasFatalFailure() || IsSkipped()) {
        return;
    }
    QDir(Folder()).removeRecursively();
    const QString error = MakeStandardFiles();
    ASSERT_TRUE(error.isEmpty()) << error.toStdString();
}

void MediaTest::TearDown()
{
    if (m_Process.state() != QProcess::NotRunning) {
        m_Process.terminate();
        EXPECT_TRUE(m_Process.waitForFinished(kPatienceMs)) << "the source does not end";
        EXPECT_EQ(QProcess::NormalExit, m_Process.exitStatus());
        EXPECT_EQ(m_Process.exitCode(), 0); // what a sanitizer finds in the source shows here
    }
}

void MediaTest::StartSource(const QMap<QString, QString>& aFaults)
{
    m_Faults.reset(); // takes the old faults away before the new ones are written
    m_Faults = std::make_unique<StackFaults>(MPL::MPL_MASS_STORAGE_PROCESS_NAME, ReplyFaults(aFaults));
    m_Process.setProcessChannelMode(QProcess::ForwardedChannels);
    m_Process.start(QStringLiteral("/opt/talvex/bin/") + MPL::MPL_MASS_STORAGE_PROCESS_NAME, QStringList());
    const QDBusConnection bus = QDBusConnection::systemBus();
    const QString service = MPL::MPL_MASS_STORAGE_SERVICE_NAME;
    ASSERT_TRUE(Wait([&] { return bus.interface()->isServiceRegistered(service).value(); }));

    const auto connect = [&](auto& aProxy, const QString& aSuffix) {
        using Proxy = typename std::decay_t<decltype(aProxy)>::element_type;
        aProxy = std::make_unique<Proxy>(service, SourcePath(aSuffix), bus);
    };
    connect(m_Browser, MPL::MPL_OBJECT_PATH_SUFFIX_BROWSER);
    connect(m_Control, MPL::MPL_OBJECT_PATH_SUFFIX_PLAYBACKCONTROL);
    connect(m_Indexer, MPL::MPL_OBJECT_PATH_SUFFIX_INDEXER);
    connect(m_Info, MPL::MPL_OBJECT_PATH_SUFFIX_MEDIAINFO);
    connect(m_Queue, MPL::MPL_OBJECT_PATH_SUFFIX_PLAYQUEUE);
    ASSERT_TRUE(
        Wait([this] { return Value(m_Indexer->GetStatus()) == MPL::MPL_INDEX_STATUS_INDEXING_COMPLETED; }));
}

void MediaTest::PlayAlbum()
{
    Value(m_Browser->Start());
    EXPECT_TRUE(SelectByText(MPL::MPL_RESULT_KEY_TOPLEVEL, MPL::MPL_BROWSE_CATEGORY_ALBUM));
    EXPECT_TRUE(SelectByText(MPL::MPL_RESULT_KEY_ALBUM, QStringLiteral("Tides")));
    EXPECT_TRUE(Value(m_Browser->PlayAll()));
}

QList<MPL::ResultDictionary> MediaTest::Records()
{
    QSignalSpy results(m_Browser.get(), &ComTalvexDBusMediaPlayerBrowserInterface::SignalBrowsingResults);
    static uint s_Transaction = 100;
    EXPECT_TRUE(Value(m_Browser->RequestRecords(0, 1000, ++s_Transaction)));
    EXPECT_TRUE(Wait([&] { return !results.isEmpty(); }));
    const QVariantList answer = results.value(0);
    EXPECT_EQ(s_Transaction, answer.value(1).toUInt());
    return answer.value(0).value<QList<MPL::ResultDictionary>>();
}

bool MediaTest::SelectByText(const QString& aKey, const QString& aText)
{
    const int index = Column(Records(), aKey).indexOf(aText);
    return index >= 0 && Value(m_Browser->SelectRecord(static_cast<uint>(index)));
}
