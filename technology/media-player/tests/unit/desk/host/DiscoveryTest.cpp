#include "Discovery.h"

#include "FakeService.h"
#include "IntrospectionText.h"
#include "Journal.h"
#include "LogRecorder.h"
#include "PrivateBus.h"
#include <MPL_DBusUtils.h>

#include <QDBusError>
#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <memory>

namespace
{

using namespace MPL::Doubles;
using namespace std::chrono_literals;

const QString kService = "com.talvex.Test.Discovered";
const QString kInterface = "com.talvex.Test.Wanted";

// The introspection text of an object that has the interface wanted, and these children.
QString Object(const QStringList& aChildren)
{
    QString text = QStringLiteral("<node><interface name=\"%1\"/>").arg(kInterface);
    for (const QString& child : aChildren) {
        text += QStringLiteral("<node name=\"%1\"/>").arg(child);
    }
    return text + "</node>";
}

class Discovery : public testing::Test
{
protected:
    ~Discovery() override { QDBusConnection::disconnectFromBus("discovery test"); }

    // A service whose objects introspect as `aText` says by their path: an empty text is an error reply, the
    // text "mute" no reply at all.
    void Offer(const std::function<QString(const QString& aPath)>& aText)
    {
        m_Service.reset();
        m_Service = std::make_unique<FakeService>(
            SharedBus().Address(), kService,
            [aText](const QDBusMessage& aCall, QDBusConnection& aConnection) {
                const QString answer = aText(aCall.path());
                if (answer.isEmpty()) {
                    aConnection.send(aCall.createErrorReply(QDBusError::Failed, "no"));
                } else if (answer != "mute") {
                    aConnection.send(aCall.createReply(answer));
                }
            });
    }

    bool Find(const MPL::Detail::DiscoveryLimits& aLimits = {})
    {
        m_Timer.start();
        return MPL::Detail::FindObjects(kService, kInterface, m_Connection, aLimits, m_Paths);
    }

    QDBusConnection m_Connection = QDBusConnection::connectToBus(SharedBus().Address(), "discovery test");
    LogRecorder m_Log;
    std::unique_ptr<FakeService> m_Service;
    QStringList m_Paths{"before"};
    QElapsedTimer m_Timer;
};

TEST_F(Discovery, FollowsTheOwnerOfAName)
{
    EXPECT_FALSE(MPL::IsServiceRunning(kService, m_Connection));
    Offer([](const QString&) { return QString(); });
    EXPECT_TRUE(MPL::IsServiceRunning(kService, m_Connection));
    m_Service.reset();
    EXPECT_FALSE(MPL::IsServiceRunning(kService, m_Connection));
    EXPECT_FALSE(MPL::IsServiceRunning("not a name", m_Connection));
    EXPECT_FALSE(MPL::IsServiceRunning(kService, QDBusConnection("never opened")));
}

TEST_F(Discovery, FindsTheObjectsOfAnInterfaceAtAllLevels)
{
    const QMap<QString, QString> tree{
        {"/", "<node><interface name='x'/><node name='b'/><node name='a'/>"
              "<node name='a'/><node name='broken'/></node>"},
        {"/a", Object({"c/d"})},
        {"/a/c/d", Object({})},
        {"/b", QStringLiteral("<node name='/b'><node name='e'><interface name='%1'/></node></node>")
                   .arg(kInterface)},
        {"/b/e", Object({})}};
    Offer([tree](const QString& aPath) { return tree.value(aPath); });
    EXPECT_TRUE(MPL::FindServiceObjectPathsByInterface(kService, kInterface, m_Connection, m_Paths));
    EXPECT_EQ(Text(m_Paths), "/a\n/a/c/d\n/b/e");
    EXPECT_TRUE(MPL::FindServiceObjectPathsByInterface(kService, "none", m_Connection, m_Paths));
    EXPECT_EQ(Text(m_Paths), "");
    EXPECT_EQ(Text(Notes()), "");
}

TEST_F(Discovery, FailsWithoutARootThatAnswers)
{
    EXPECT_FALSE(Find());
    QString answer;
    Offer([&answer](const QString&) { return answer; });
    for (const char* text :
         {"", "no XML", "<html/>", "<node><interface", "<node></node", "<node>&bomb;</node>"}) {
        answer = QLatin1String(text);
        EXPECT_FALSE(Find()) << text;
    }
    EXPECT_LT(m_Timer.elapsed(), 1000);
    EXPECT_EQ(Text(m_Paths), "before");
    EXPECT_EQ(Text(Notes()), "");
}

TEST_F(Discovery, WaitsOnceForAllObjectsThatDontAnswer)
{
    MPL::Detail::DiscoveryLimits limits;
    limits.time = 300ms;
    Offer([](const QString& aPath) {
        QStringList children{"well"};
        for (int i = 0; i < 150; ++i) {
            children << QStringLiteral("mute%1").arg(i);
        }
        return aPath == "/" ? Object(children) : (aPath == "/well" ? Object({}) : "mute");
    });
    EXPECT_TRUE(Find(limits));
    EXPECT_LT(m_Timer.elapsed(), 2000);
    EXPECT_EQ(Text(m_Paths), "/\n/well");
    EXPECT_EQ(Text(Notes()),
              "warning: MPL::FindServiceObjectPathsByInterface -- the walk through "
              "com.talvex.Test.Discovered stopped at 300 ms -- it hangs or has no end of objects");

    Offer([](const QString&) { return "mute"; });
    EXPECT_FALSE(Find(limits));
    EXPECT_LT(m_Timer.elapsed(), 2000);
}

TEST_F(Discovery, ComesBackFromATreeWithoutEnd)
{
    MPL::Detail::DiscoveryLimits limits;
    limits.objects = 500;
    // More children than the bus allows calls in flight.
    QStringList wide;
    for (int i = 0; i < 200; ++i) {
        wide << QStringLiteral("n%1").arg(i);
    }
    Offer([wide](const QString&) { return Object(wide); });
    EXPECT_TRUE(Find(limits));
    EXPECT_EQ(m_Paths.size(), 500);

    Offer([](const QString&) { return Object({"deeper", "..", QString()}); });
    EXPECT_TRUE(Find(limits));
    EXPECT_EQ(m_Paths.size(), 17);
    const QString stopped =
        "warning: MPL::FindServiceObjectPathsByInterface -- the walk through " + kService + " stopped at ";
    EXPECT_EQ(Notes(stopped + "500 objects").size(), 1) << Text(Notes());
    EXPECT_EQ(Notes(stopped + "16 levels").size(), 1) << Text(Notes());
}

} // namespace
