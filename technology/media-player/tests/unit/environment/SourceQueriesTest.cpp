#include "BusesTest.h"
#include "FakeService.h"
#include <MPL_TestEnvironment.h>

using namespace MPL::Doubles;

namespace
{

const QString kService = "com.talvex.DBus.MediaPlayer.MediaSource.MassStorage";
const QString kSourceInterface = "com.talvex.DBus.MediaPlayer.MediaSource";
const QString kDone = "Indexing Completed";

class SourceQueries : public BusesTest
{
protected:
    SourceQueries()
    {
        MPL::RegisterAllMetaTypes();
        UseTestBus();
    }

    template <class Proxy>
    Proxy MakeProxy(const QString& aPath) const
    {
        return Proxy(kService, aPath, MPL_TestEnvironment::GetDbusConnection());
    }

    FakeService m_Service{SharedBus().Address(), kService};
};

using Indexer = ComTalvexDBusMediaPlayerIndexerInfoInterface;
using Source = ComTalvexDBusMediaPlayerMediaSourceInterface;
using Manager = ComTalvexDBusMediaPlayerMediaManagerInterface;

TEST_F(SourceQueries, NeedAProxy)
{
    QString status = "old";
    unsigned int progress = 7;
    QDBusObjectPath path("/old");
    EXPECT_FALSE(MPL_TestEnvironment::GetIndexStatus(nullptr, status));
    EXPECT_FALSE(MPL_TestEnvironment::GetIndexProgress(nullptr, progress));
    EXPECT_FALSE(MPL_TestEnvironment::GetMediaCapability(nullptr, "BROWSE", path));
    EXPECT_FALSE(MPL_TestEnvironment::SetActiveMediaSource({}, nullptr));
    EXPECT_EQ(Text(Notes()), "");
}

TEST_F(SourceQueries, LeaveTheOutArgumentsAloneOnAnErrorReply)
{
    m_Service.Fail("/i", "GetStatus", "no status");
    m_Service.Fail("/i", "GetProgress", "no progress");
    m_Service.Fail("/i", "GetCapability", "no capability");
    auto indexer = MakeProxy<Indexer>("/i");
    auto source = MakeProxy<Source>("/i");
    QString status = "old";
    unsigned int progress = 7;
    QDBusObjectPath path("/old");
    EXPECT_FALSE(MPL_TestEnvironment::GetIndexStatus(&indexer, status));
    EXPECT_FALSE(MPL_TestEnvironment::GetIndexProgress(&indexer, progress));
    EXPECT_FALSE(MPL_TestEnvironment::GetMediaCapability(&source, "BROWSE", path));
    EXPECT_EQ(status, "old");
    EXPECT_EQ(progress, 7U);
    EXPECT_EQ(path.path(), "/old");
    EXPECT_EQ(Text(Notes()),
              Text({"critical: IndexerInfo GetStatus DBus error  \"no status\"",
                    "critical: IndexerInfo GetStatus DBus error  \"no progress\"",
                    "critical: MPL_TestEnvironment::GetMediaCapability -- DBus error \"no capability\""}));
}

TEST_F(SourceQueries, WaitForTheIndexUntilStatusAndProgressAgree)
{
    m_Service.Reply("/i", "GetStatus", "Indexing");
    m_Service.Reply("/i", "GetStatus", kDone);
    m_Service.Reply("/i", "GetProgress", 40U);
    m_Service.Reply("/i", "GetProgress", 99U);
    m_Service.Reply("/i", "GetProgress", 100U);
    EXPECT_TRUE(MPL_TestEnvironment::WaitForIndexFinished("/i"));
    const QString prefix = "debug: MPL_TestEnvironment::WaitForIndexFinished -- ";
    const QString poll = "debug: IndexerInfo status: \"Indexing Completed\" , Progress: ";
    EXPECT_EQ(Text(Notes()), Text({prefix + "Object path = \"/i\"",
                                   prefix + "IndexerInfo status: \"Indexing\" , Progress: 40",
                                   "sleep 5000 ms", poll + "99 %,  1", "sleep 5000 ms", poll + "100 %,  2"}));
    const QString call = "/i com.talvex.DBus.MediaPlayer.IndexerInfo.";
    EXPECT_EQ(m_Service.Calls().mid(0, 4), (QStringList{call + "GetStatus", call + "GetProgress",
                                                        call + "GetProgress", call + "GetStatus"}));
}

TEST_F(SourceQueries, WaitForTheIndexAHundredTimesAndThenTrustTheStatus)
{
    m_Service.Reply("/i", "GetStatus", "Indexing");
    m_Service.Reply("/i", "GetProgress", 100U);
    EXPECT_FALSE(MPL_TestEnvironment::WaitForIndexFinished("/i"));
    EXPECT_EQ(Notes("sleep 5000 ms").size(), 100);
    EXPECT_EQ(Notes().last(), "debug: IndexerInfo status: \"Indexing\" , Progress: 100 %,  100");

    ClearNotes();
    m_Service.Reply("/j", "GetStatus", kDone);
    m_Service.Reply("/j", "GetProgress", 99U);
    EXPECT_TRUE(MPL_TestEnvironment::WaitForIndexFinished("/j"));
    EXPECT_EQ(Notes("sleep").size(), 100);
}

TEST_F(SourceQueries, StopWaitingForAnIndexerThatFails)
{
    m_Service.Reply("/i", "GetStatus", "Indexing");
    m_Service.Reply("/i", "GetProgress", 0U);
    m_Service.Fail("/i", "GetProgress", "gone");
    EXPECT_FALSE(MPL_TestEnvironment::WaitForIndexFinished("/i"));
    EXPECT_EQ(Notes("sleep").size(), 1);
    EXPECT_EQ(m_Service.Calls().size(), 3);
}

TEST_F(SourceQueries, FindTheSourceByItsNameAndListWhatItOffers)
{
    World().owned << kService;
    World().objects[kService + ' ' + kSourceInterface] = QStringList{"/a", "/b", "/c", "/d"};
    m_Service.Fail("/a", "GetSourceName", "asleep");
    m_Service.Reply("/b", "GetSourceName", "OTHER");
    m_Service.Reply("/c", "GetSourceName", "MUSIC");
    m_Service.Reply("/c", "GetCapability", QVariant::fromValue(QDBusObjectPath("/c/first")));
    m_Service.Fail("/c", "GetCapability", "not offered");
    m_Service.Reply("/c", "GetCapability", QVariant::fromValue(QDBusObjectPath("/c/rest")));
    QMap<QString, QDBusObjectPath> capabilities{{"LOGIN", QDBusObjectPath("/kept")}};
    QString path;
    EXPECT_TRUE(MPL_TestEnvironment::GetMediaSourceCapabilities("MUSIC", capabilities, path));
    EXPECT_EQ(path, "/c");
    const QMap<QString, QDBusObjectPath> expected{{"LOGIN", QDBusObjectPath("/kept")},
                                                  {"BROWSE", QDBusObjectPath("/c/first")},
                                                  {"INDEX", QDBusObjectPath("/c/rest")},
                                                  {"MEDIA_INFO", QDBusObjectPath("/c/rest")},
                                                  {"PLAYQUEUE", QDBusObjectPath("/c/rest")}};
    EXPECT_EQ(capabilities, expected);
    EXPECT_EQ(m_Service.Calls().size(), 3 + 5) << "the search goes on behind the match";
    const QString prefix = "debug: MPL_TestEnvironment::GetMediaSourceCapabilities -- ";
    EXPECT_EQ(Text(Notes()),
              Text({prefix + "Calling MPL::FindServiceObjectPathsByInterface",
                    prefix + "Finished MPL::FindServiceObjectPathsByInterface. mediaSourceList has 4 items",
                    "critical: DBus error \"asleep\"",
                    "critical: MPL_TestEnvironment::GetMediaCapability -- DBus error \"not offered\""}));
}

TEST_F(SourceQueries, LeaveTheOutArgumentsAloneWhenNoSourceHasTheName)
{
    QMap<QString, QDBusObjectPath> capabilities;
    QString path = "/old";
    EXPECT_FALSE(MPL_TestEnvironment::GetMediaSourceCapabilities("MUSIC", capabilities, path));
    EXPECT_EQ(Text(Notes()), Text({"critical: Service not running: \"" + kService + "\""}));

    World().owned << kService;
    World().objects[kService + ' ' + kSourceInterface] = QStringList{"/a"};
    m_Service.Reply("/a", "GetSourceName", "music");
    EXPECT_FALSE(MPL_TestEnvironment::GetMediaSourceCapabilities("MUSIC", capabilities, path));
    EXPECT_EQ(path, "/old");
    EXPECT_TRUE(capabilities.isEmpty());
}

TEST_F(SourceQueries, ReadTheStateOutOfTheStatus)
{
    m_Service.Reply("/a", "GetMediaSourceStatus", "active_state=x;source_state=READY");
    m_Service.Reply("/a", "GetMediaSourceStatus", "active_state=x");
    m_Service.Fail("/a", "GetMediaSourceStatus", "asleep");
    auto source = MakeProxy<Source>("/a");
    EXPECT_EQ(MPL_TestEnvironment::GetActiveSourceStatus(&source), "READY");
    EXPECT_EQ(MPL_TestEnvironment::GetActiveSourceStatus(&source), "");
    EXPECT_EQ(Text(Notes()), "");
    EXPECT_EQ(MPL_TestEnvironment::GetActiveSourceStatus(&source), "");
    EXPECT_EQ(Text(Notes()),
              "critical: MPL_TestEnvironment::GetActiveSourceStatus Failed to get media source status "
              "of active source. Received error of QDBusError(\"com.talvex.Error.Test\", \"asleep\")");
}

TEST_F(SourceQueries, ActivateAListedSource)
{
    const MPL::ServiceObject wanted{"s", QDBusObjectPath("/two")};
    const QList<MPL::ServiceObject> list{{"s", QDBusObjectPath("/one")}, {"t", QDBusObjectPath("/two")}};
    m_Service.Fail("/m", "GetAvailableMediaSources", "asleep");
    m_Service.Reply("/m", "GetAvailableMediaSources", QVariant::fromValue(list));
    m_Service.Reply("/m", "GetAvailableMediaSources", QVariant::fromValue(list + QList{wanted}));
    m_Service.Reply("/m", "SetActiveMediaSource", {});
    m_Service.Fail("/m", "SetActiveMediaSource", "refused");
    auto manager = MakeProxy<Manager>("/m");
    EXPECT_FALSE(MPL_TestEnvironment::SetActiveMediaSource(wanted, &manager));
    EXPECT_FALSE(MPL_TestEnvironment::SetActiveMediaSource(wanted, &manager));
    EXPECT_EQ(m_Service.Calls().filter("SetActive").size(), 0);
    EXPECT_TRUE(MPL_TestEnvironment::SetActiveMediaSource(wanted, &manager));
    const auto sent = qdbus_cast<MPL::ServiceObject>(m_Service.LastArguments().value(0));
    EXPECT_EQ(sent.serviceName + sent.objectPath.path(), "s/two");
    EXPECT_FALSE(MPL_TestEnvironment::SetActiveMediaSource(wanted, &manager));
    EXPECT_EQ(Text(Notes()), Text({"critical: MediaManager::GetAvailableMediaSource error "
                                   "QDBusError(\"com.talvex.Error.Test\", \"asleep\")",
                                   "critical: MediaManager SetActiveMediaSource error "
                                   "QDBusError(\"com.talvex.Error.Test\", \"refused\")"}));
}

} // namespace
