// What the time line makes of a recording, whatever that holds.
#include "SandboxRun.h"
#include "TraceFile.h"

#include <QDir>
#include <QElapsedTimer>

namespace sandbox
{

class RecordingLeft : public Sandbox
{
protected:
    /// Adds a fact of that time, in milliseconds from the first.
    void Fact(int aTime, const QStringList& aKindAndFields)
    {
        m_Facts += QString::number(1700000000000 + aTime).toUtf8() + "000000\t" +
                   aKindAndFields.join('\t').toUtf8() + "\t\n";
    }

    /// Two programs, of which the first is the test program.
    void TwoPrograms()
    {
        Fact(0, {"command", "my_test"});
        Fact(10, {"exec", "9", "3", "2", "No such file or directory", "/usr/local/bin/my_test", "my_test"});
        Fact(11, {"exec", "9", "3", "2", "", "/usr/bin/my_test", "my_test"});
        Fact(12, {"program", "9"});
        Fact(20, {"exec", "14", "13", "9", "", "/opt/talvex/bin/media_mme", "/opt/talvex/bin/media_mme",
                  "--test-dbus"});
    }

    TraceFile Tell()
    {
        const QString folder = m_Folder.filePath("run.json.recording");
        EXPECT_TRUE(QDir().mkpath(folder));
        WriteFile(folder + "/facts", m_Facts);
        EXPECT_EQ(Run({"--timeline-from", folder}).status, 0);
        return TraceFile(m_Folder.filePath("run.json"));
    }

    QTemporaryDir m_Folder;
    QByteArray m_Facts;
};

TEST_F(RecordingLeft, CountsFromTheProgramThatWasFoundAtLast)
{
    TwoPrograms();
    const TraceFile trace = Tell();
    EXPECT_EQ(TraceFile::Begin(trace.Event("process", "my_test")), 0);
    const QJsonObject service = trace.Event("process", "media_mme");
    EXPECT_EQ(TraceFile::Begin(service), 9000);
    EXPECT_EQ(TraceFile::Argument(service, "command"), "/opt/talvex/bin/media_mme --test-dbus");
    EXPECT_EQ(TraceFile::Argument(service, "startedBy"), "my_test (pid 9)"); // by a child of it that is gone
    EXPECT_EQ(TraceFile::Argument(service, "end"), "still ran at the end");
    EXPECT_EQ(trace.About("result"), "cut off");
}

TEST_F(RecordingLeft, BelievesAParentMoreThanWhatOthersSaw)
{
    TwoPrograms();
    Fact(30, {"kill", "9", "14", "15"});
    Fact(31, {"gone", "14", "", "0"});
    EXPECT_EQ(TraceFile::Argument(Tell().Event("process", "media_mme"), "end"), "signal 15 (Terminated)");
    Fact(32, {"gone", "14", "signal", "11"});
    const QJsonObject service = Tell().Event("process", "media_mme");
    EXPECT_EQ(TraceFile::Argument(service, "end"), "signal 11 (Segmentation fault)");
    EXPECT_EQ(TraceFile::Argument(service, "killedBy"), "");
    EXPECT_EQ(TraceFile::End(service), 20000);
}

TEST_F(RecordingLeft, HasTheProgramAtLeast)
{
    Fact(0, {"command", "/usr/bin/my_test", "--all"});
    Fact(12, {"program", "9"});
    Fact(40, {"program end", "139"});
    Fact(41, {"end", "139"});
    const TraceFile trace = Tell();
    EXPECT_EQ(TraceFile::Argument(trace.Event("process", "my_test"), "end"),
              "signal 11 (Segmentation fault)");
    EXPECT_EQ(trace.About("result"), "crashed");
}

TEST_F(RecordingLeft, HasTheTimesOfItsSandboxsClock)
{
    Fact(0, {"clock", "10", "1700000000005000000"});
    TwoPrograms();
    Fact(30, {"pause", "9", "10", "200000000"});
    const TraceFile trace = Tell();
    EXPECT_EQ(trace.About("speed"), "10");
    EXPECT_EQ(TraceFile::Begin(trace.Event("process", "media_mme")), 90000);
    EXPECT_EQ(TraceFile::Begin(trace.Event("pause", "2000 ms")), 190000);
}

TEST_F(RecordingLeft, ReadsLinesHoweverTheyCame)
{
    TwoPrograms();
    Fact(30, {"output", "out", "[ RUN      ] Suite.Ca"});
    Fact(31, {"output", "err", "     1.215 critical it is \\\\ bad\\nmedia_mme: ready\\n"});
    Fact(32, {"output", "out", "se\\n\\x1b[0;32m[       OK ] \\x1b[mSuite.Case (1 ms)\\nthe last"});
    m_Facts.replace("\\x1b", "\x1b");
    m_Facts += "1700000000040000000\toutput\tout\tcut off in the mid";
    const TraceFile trace = Tell();
    EXPECT_EQ(trace.CaseStates(), (std::vector<std::string>{"Suite.Case ok", "Suite: tear-down running"}));
    const QJsonObject bad = trace.Event("log", "     1.215 critical it is \\ bad");
    EXPECT_EQ(TraceFile::Argument(bad, "level"), "critical");
    EXPECT_EQ(TraceFile::Argument(bad, "process"), "my_test");
    EXPECT_EQ(TraceFile::Argument(trace.Event("log", "media_mme: ready"), "process"), "media_mme");
    trace.Event("log", "the last");
    EXPECT_EQ(trace.Events("log").size(), 5);
}

TEST_F(RecordingLeft, IsReadInNoTimeWhenItIsLong)
{
    constexpr int kLines = 50000;
    m_Facts.reserve(100 * kLines);
    TwoPrograms();
    for (int line = 0; line < kLines; ++line) {
        Fact(100 + line, {"output", "err", "     1.215 debug    line \\n"});
    }
    QElapsedTimer timer;
    timer.start();
    EXPECT_EQ(Tell().Events("log").size(), kLines);
    EXPECT_LT(timer.elapsed(), 10000); // half a second, on a machine that has nothing else to do
}

TEST_F(RecordingLeft, MayHoldAnything)
{
    m_Facts = "no "
              "time\texec\t\n12\t\n\n17\tgone\t\n18\texec\t\n19\tkill\t1\t\n20\tpause\t\n21\toutput\t\n22\tfo"
              "rk\t\n";
    EXPECT_EQ(Tell().About("result"), "cut off");
    m_Facts.clear();
    EXPECT_EQ(Tell().About("result"), "cut off");
}

} // namespace sandbox
