// Another speed of the sandbox's clock: refused where it can't be had, and one for all where it can.
#include "SandboxRun.h"
#include "TraceFile.h"

#include <QDateTime>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>
#include <QtEndian>

#include <link.h>
#include <sys/stat.h>

#include <algorithm>
#include <functional>
#include <iterator>
#include <sstream>

namespace sandbox
{

namespace
{

constexpr int kSpeed = 20;
constexpr long long kSecond = 1000000000;

std::vector<long long> Numbers(const std::string& aText)
{
    std::istringstream text(aText);
    return {std::istream_iterator<long long>(text), {}};
}

struct RecordedMessage {
    long long seconds;
    QByteArray bytes;
};

std::vector<RecordedMessage> ReadRecord(const QString& aFile)
{
    const QByteArray bytes = ReadFile(aFile);
    const auto number = [&](int aOffset) { return qFromLittleEndian<qint32>(bytes.constData() + aOffset); };
    std::vector<RecordedMessage> messages;
    for (int begin = 24; begin + 16 < bytes.size(); begin += 16 + number(begin + 8)) {
        messages.push_back({number(begin), bytes.mid(begin + 16, number(begin + 8))});
    }
    return messages;
}

} // namespace

class Speed : public Sandbox
{
protected:
    void SetUp() override
    {
        Sandbox::SetUp();
        m_Environment.remove("MPL_SANDBOX_SPEED");
        // The time on the sandbox's clock between two readings of the machine's, by which a program without
        // the preloaded library lives. In nanoseconds.
        WriteFile(StackFile("bin/read_clock"), R"(#!/bin/sh
            echo $(env -u LD_PRELOAD date +%s%N) $(date +%s%N) $(env -u LD_PRELOAD date +%s%N))",
                  kProgram);
    }

    Outcome RunFast(const QString& aScript, const QStringList& aOptions = {"--no-lifecycle-manager"})
    {
        return RunScript(aScript, aOptions + QStringList{"--speed", QString::number(kSpeed)});
    }

    /// A copy of a program of this machine, with some of its bytes changed.
    QString MakeProgram(const std::function<void(QByteArray&)>& aChange) const
    {
        QByteArray bytes = ReadFile("/bin/sleep");
        aChange(bytes);
        WriteFile(m_OpenFolder.filePath("program"), bytes, kProgram);
        return m_OpenFolder.filePath("program");
    }

    /// The text is the moment at which the clock started and that many readings.
    static void ExpectOneClock(const std::string& aText, size_t aCount)
    {
        const std::vector<long long> numbers = Numbers(aText);
        ASSERT_EQ(numbers.size(), 1 + 3 * aCount) << aText;
        const auto shownAt = [&](long long aMachine) {
            return numbers[0] + kSpeed * (aMachine - numbers[0]);
        };
        for (size_t reading = 1; reading < numbers.size(); reading += 3) {
            EXPECT_GE(numbers[reading + 1], shownAt(numbers[reading]));
            EXPECT_LE(numbers[reading + 1], shownAt(numbers[reading + 2]));
        }
    }
};

TEST_F(Speed, IsANumberFromOneToAHundred)
{
    for (const char* speed : {"", "0", "0.99", "100.1", "-1", "1e1", "nan", "fast", "10x", " 10"}) {
        ExpectRefusal({"--speed", speed, "--", "true"}, 2, "--speed needs a number from 1 to 100");
    }
    m_Environment.insert("MPL_SANDBOX_SPEED", "fast");
    ExpectRefusal({"--", "true"}, 2,
                  "MPL_SANDBOX_SPEED needs a number from 1 to 100, such as 10 or 2.5, not 'fast'");
    const auto told = [&](const QStringList& aOptions) {
        return RunScript("echo $MPL_SANDBOX_SPEED ${LD_PRELOAD:+preloads}",
                         QStringList{"--no-lifecycle-manager"} + aOptions)
            .out;
    };
    EXPECT_EQ(told({"--speed", "2.5"}), "2.5 preloads\n");
    EXPECT_EQ(told({"--speed", "1"}), "1\n");
    m_Environment.insert("MPL_SANDBOX_SPEED", "100");
    EXPECT_EQ(told({}), "100 preloads\n");
    m_Environment.remove("MPL_SANDBOX_SPEED");
    EXPECT_EQ(told({}), "1\n");
}

TEST_F(Speed, IsRefusedForProgramsThatWouldNotHaveIt)
{
    const auto refuse = [&](const QString& aProgram, const char* aWhy) {
        ExpectRefusal({"--no-lifecycle-manager", "--speed", "20", "--", aProgram, "0"}, 126, aWhy);
    };
    refuse("/sbin/ldconfig",
           "the program /sbin/ldconfig is statically linked, so it can't run at speed 20: use --speed 1");
    refuse(MakeProgram([](QByteArray& aBytes) { aBytes.replace("libc.so.6", "libasan.8"); }),
           "is built with a sanitizer (libasan.8), which must be loaded first");
    refuse(MakeProgram([](QByteArray& aBytes) { aBytes[int(offsetof(ElfW(Ehdr), e_machine))] = '\x7f'; }),
           "is made for another architecture");
    for (const mode_t privilege : {mode_t(S_ISUID), mode_t(S_ISGID)}) {
        const QString program = MakeProgram([](QByteArray&) {});
        ASSERT_EQ(chmod(qPrintable(program), 0755 | privilege), 0);
        refuse(program, "has privileges of its own");
    }
    const QString script = m_OpenFolder.filePath("script");
    WriteFile(script, "#!/sbin/ldconfig\n", kProgram);
    refuse(script, "is statically linked");
}

TEST_F(Speed, IsRefusedForAStackThatWouldNotHaveIt)
{
    ASSERT_TRUE(QDir(m_Stack.path()).mkpath("test/source"));
    ASSERT_TRUE(QFile::copy("/sbin/ldconfig", StackFile("test/source/source")));
    ExpectRefusal({"--speed", "20", "--", "true"}, 125,
                  "test/source/source is statically linked, so it can't run");
    EXPECT_EQ(RunScript("exit 3").status, 3);
}

TEST_F(Speed, IsRefusedWithoutItsLibraries)
{
    m_Command = QStringList{"bwrap", "--dev-bind", "/", "/"};
    for (const char* lib :
         {"/usr/lib/" MPL_LIBRARY_ARCHITECTURE "/faketime", "/usr/lib/faketime", "/usr/lib64/faketime"}) {
        if (QFile::exists(lib)) {
            m_Command += QStringList{"--tmpfs", lib};
        }
    }
    m_Command += MPL_SANDBOX_PROGRAM;
    ExpectRefusal({"--speed", "2", "--", "true"}, 125, "install the package libfaketime");
    const QString alone = m_OpenFolder.filePath("mpl-sandbox");
    ASSERT_TRUE(QFile::copy(MPL_SANDBOX_PROGRAM, alone));
    m_Command = QStringList{alone};
    ExpectRefusal({"--speed", "2", "--", "true"}, 125, "libmpl-clock.so is missing");
}

// Whenever a program starts.
TEST_F(Speed, IsThatOfOneClock)
{
    const Outcome outcome = RunFast(R"(
        PATH=/opt/talvex/bin:$PATH
        echo $MPL_SANDBOX_CLOCK_START; read_clock; sleep 5; read_clock; setsid read_clock)");
    ExpectOneClock(outcome.out, 3);
    EXPECT_EQ(outcome.err, "");
}

TEST_F(Speed, IsThatOfServicesButNotOfTheSandboxItself)
{
    RequireLifecycleManager();
    if (IsSkipped() || HasFailure()) {
        return;
    }
    WriteFile(StackFile("bin/media_manager"),
              "#!/bin/sh\ncd /var/talvex; /opt/talvex/bin/read_clock > new; "
              "mv new clock; exec sleep 1000\n",
              kProgram);
    const Outcome outcome = RunFast(R"(
        echo $MPL_SANDBOX_CLOCK_START
        systemctl --user start media-manager || exit 1
        until_true test -e /var/talvex/clock; cat /var/talvex/clock
        for program in mpl-sandbox systemd dbus-daemon; do
            cat /proc/$(ps -o pid= -C $program | tr -d ' ')/maps | grep faketime
        done)",
                                    {});
    ExpectOneClock(outcome.out, 1);
    EXPECT_EQ(outcome.err, "");
}

// A sandbox in a sandbox has its own limits too, and a clock that is not the outer one's times another.
TEST_F(Speed, IsCountedFromTheMachinesClockInASandboxInASandbox)
{
    m_Environment.insert("INNER", MPL_SANDBOX_PROGRAM);
    const Outcome outcome = RunFast(R"($INNER --no-lifecycle-manager --speed 20 -- sh -c '
        echo $MPL_SANDBOX_CLOCK_START; /opt/talvex/bin/read_clock; cat /proc/1/maps | grep faketime')");
    ExpectOneClock(outcome.out, 1);
}

TEST_F(Speed, IsThatOfFileTimes)
{
    const Outcome outcome = RunFast(R"(
        cd /var/talvex
        changed() { stat -c %.9Y $1 | tr -d .; }
        date +%s%N; touch file; changed file; date +%s%N
        sleep 20
        date +%s%N; echo x >> file; changed file; date +%s%N
        touch -d '2040-01-02 03:04:05Z' file; cp -p file copy; stat -c %Y file; stat -c %Y copy
        stat -c %Y /opt/talvex/bin/media_manager)");
    const std::vector<long long> numbers = Numbers(outcome.out);
    ASSERT_EQ(numbers.size(), 9U) << outcome.out << outcome.err;
    // The kernel stamps files by a clock that is up to ten milliseconds late.
    constexpr long long kLate = kSpeed * kSecond / 100;
    for (const size_t before : {0U, 3U}) {
        EXPECT_GE(numbers[before + 1], numbers[before] - kLate);
        EXPECT_LE(numbers[before + 1], numbers[before + 2]);
    }
    EXPECT_EQ(numbers[6], 2209086245);
    EXPECT_EQ(numbers[7], numbers[6]);
    EXPECT_EQ(numbers[8], QFileInfo(StackFile("bin/media_manager")).lastModified().toSecsSinceEpoch());
}

TEST_F(Speed, IsToldInRecords)
{
    const QString file = m_OpenFolder.filePath("bus.pcap");
    const Outcome outcome =
        // A loaded machine's recorder may be some fast seconds late.
        RunFast("sleep 20; date +%s; dbus-send --system --type=signal / com.example.Marked; sleep 10; "
                "date +%s",
                {"--no-lifecycle-manager", "--record-bus", file});
    const std::vector<long long> around = Numbers(outcome.out);
    const std::vector<RecordedMessage> messages = ReadRecord(m_OpenFolder.filePath("bus.system.pcap"));
    const auto marked = std::find_if(messages.begin(), messages.end(), [](const RecordedMessage& aMessage) {
        return aMessage.bytes.contains("Marked");
    });
    ASSERT_NE(marked, messages.end());
    EXPECT_GE(marked->seconds, around.at(0));
    EXPECT_LE(marked->seconds, around.at(1));
    const QByteArray& first = messages.front().bytes;
    EXPECT_TRUE(first.contains("com.talvex.MplSandbox.Recorder") && first.contains("Clock"));
}

TEST_F(Speed, KeepsOrderNumberAndLengthOfThePauses)
{
    const auto run = [&](const char* aSpeed) {
        return Run({"--no-lifecycle-manager", "--speed", aSpeed, "--", MPL_PAUSES_SUBJECT}).out;
    };
    QElapsedTimer timer;
    timer.start();
    const std::string fast = run("20");
    const qint64 fastMs = timer.restart();
    const std::string exact = run("1");
    EXPECT_LT(2 * fastMs, timer.elapsed());
    EXPECT_EQ(fast, exact);
    EXPECT_EQ(fast.find("too short"), std::string::npos) << fast;
    const QStringList pauses =
        QString::fromStdString(exact).split('\n').filter(QRegularExpression("^pause "));
    EXPECT_EQ(pauses.join(' '),
              "pause 1000 pause 1000 pause 2000 pause 100 pause 100 pause 100 pause 100 pause 100");
}

// By the kernel, which knows nothing of that clock.
TEST_F(Speed, LeavesThePausesOfATimeLineTheLengthThatWasAskedFor)
{
    const QString file = m_OpenFolder.filePath("run.json");
    const std::string out =
        Run({"--no-lifecycle-manager", "--speed", "20", "--timeline", file, "--", MPL_PAUSES_SUBJECT}).out;
    std::string pauses;
    for (const QJsonObject& pause : TraceFile(file).Events("pause")) {
        const std::string asked = TraceFile::Argument(pause, "asked").toStdString();
        if (asked == "1000000") {
            continue; // of a process that is to be killed
        }
        pauses += "pause " + asked + "\n";
        EXPECT_NEAR(TraceFile::End(pause) - TraceFile::Begin(pause), std::stod(asked) * 1000, 1);
    }
    std::string printed;
    for (const QString& line :
         QString::fromStdString(out).split('\n').filter(QRegularExpression("^pause "))) {
        printed += QString(line + '\n').toStdString();
    }
    EXPECT_EQ(pauses, printed);
    EXPECT_FALSE(printed.empty());
}

} // namespace sandbox
