// What a real systemd makes of the services that it is asked for.
#include "Journal.h"
#include "LifecycleManager.h"
#include "LogRecorder.h"
#include "Require.h"
#include <MPL_ProcessInfo.h>

#include <QFile>

#include <gtest/gtest.h>

namespace
{

using namespace MPL::Detail;
using namespace MPL::Doubles;
using namespace std::chrono_literals;

class Systemd : public testing::Test
{
protected:
    void SetUp() override { RequireLifecycleManager(); }

    static void Install(const char* aService, const QByteArray& aContent)
    {
        QFile unit(QStringLiteral("/opt/talvex/etc/systemd/%1.service").arg(QLatin1String(aService)));
        ASSERT_TRUE(unit.open(QIODevice::WriteOnly));
        unit.write("[Service]\n" + aContent);
    }

    LogRecorder m_Log;
};

TEST_F(Systemd, StartsAndStopsWhatIsAlreadyAsAsked)
{
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(MPL_ProcessInfo::SlmStartService("media-mme"));
        EXPECT_NE(MPL_ProcessInfo::GetPidFromName("media_mme"), -1);
    }
    for (int i = 0; i < 2; ++i) {
        EXPECT_TRUE(MPL_ProcessInfo::SlmStopService("media-mme"));
        EXPECT_EQ(MPL_ProcessInfo::GetPidFromName("media_mme"), -1);
    }
    EXPECT_TRUE(MPL_ProcessInfo::SlmStopService("no-such-service"));
    EXPECT_EQ(Text(Notes()), "");
}

TEST_F(Systemd, SaysWhyAServiceDoesNotStart)
{
    Install("without-program", "Type=exec\nExecStart=/nonexistent/program\n");
    Install("never-ready", "Type=notify\nExecStart=/bin/sleep 60\n");
    EXPECT_FALSE(MPL_ProcessInfo::SlmStartService("no-such-service"));
    EXPECT_FALSE(MPL_ProcessInfo::SlmStartService("no such service"));
    EXPECT_FALSE(MPL_ProcessInfo::SlmStartService("without-program"));
    EXPECT_FALSE(RunServiceJob(ServiceJob::Start, "never-ready", 500ms));
    EXPECT_EQ(Text(Notes()), "critical: MPL_ProcessInfo::SlmStartService -- can't start no-such-service -- "
                             "systemd refused: Unit no-such-service.service not found.\n"
                             "critical: MPL_ProcessInfo::SlmStartService -- can't start no such service -- "
                             "systemd refused: Unit name no such service.service is not valid.\n"
                             "critical: MPL_ProcessInfo::SlmStartService -- can't start without-program -- "
                             "systemd ended the job with the result \"failed\"\n"
                             "critical: MPL_ProcessInfo::SlmStartService -- can't start never-ready -- "
                             "the job was not done in 500 ms");
}

} // namespace
