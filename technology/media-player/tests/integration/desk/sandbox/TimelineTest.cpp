// The time line of a run is there, and true, however the run ends.
#include "SandboxRun.h"
#include "TraceFile.h"
#include "WaitUntil.h"

#include <QDir>

#include <unistd.h>

#include <csignal>

namespace sandbox
{

using Texts = std::vector<std::string>;

class Timeline : public Sandbox
{
protected:
    /// Runs cases of the subject to their end.
    Outcome RunCases(const QString& aFilter)
    {
        return Run({"--no-lifecycle-manager", "--timeline", m_File, "--", MPL_REPORT_SUBJECT,
                    "--gtest_filter=" + aFilter});
    }

    Outcome RunScript(const QString& aScript, const QStringList& aOptions = {"--no-lifecycle-manager"})
    {
        return Sandbox::RunScript(aScript, QStringList{"--timeline", m_File} + aOptions);
    }

    /// Starts cases of the subject and waits until one hangs.
    void StartHanging(QProcess& aProcess)
    {
        Start(aProcess, {"--no-lifecycle-manager", "--timeline", m_File, "--", MPL_REPORT_SUBJECT,
                         "--gtest_filter=Subject.Passes:Subject.Hangs"});
        WaitForOutput(aProcess, "hanging");
    }

    bool IsAlone() const
    {
        return QDir(m_Folder.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries).size() == 1;
    }

    QTemporaryDir m_Folder;
    QString m_File = m_Folder.filePath("run.json");
};

TEST_F(Timeline, ShowsCasesAsTheyEnded)
{
    EXPECT_EQ(RunCases("Subject.Passes:Subject.Fails:Subject.IsSkipped:Unready.*").status, 1);
    const TraceFile trace(m_File);
    EXPECT_EQ(trace.About("result"), "failed");
    EXPECT_EQ(trace.About("resultText"), "exit status 1");
    EXPECT_EQ(trace.CaseStates(),
              (Texts{"Subject.Passes ok", "Subject.Fails failed", "Subject.IsSkipped skipped",
                     "Unready: set-up failed", "Unready.NeverRuns skipped", "Unready: tear-down failed"}));
    const QString failure = TraceFile::Argument(trace.Event("case", "Subject.Fails"), "failure");
    EXPECT_TRUE(failure.contains("ReportSubject.cpp:13: Failure\nExpected equality")) << qPrintable(failure);
    EXPECT_TRUE(IsAlone());
}

TEST_F(Timeline, NamesTheCaseThatACrashWasIn)
{
    EXPECT_EQ(RunCases("Subject.Passes:Subject.Crashes").status, 128 + SIGABRT);
    const TraceFile trace(m_File);
    EXPECT_EQ(trace.About("result"), "crashed");
    EXPECT_EQ(trace.About("resultText"), "signal 6 (Aborted) in Subject.Crashes");
    EXPECT_EQ(trace.CaseStates(), (Texts{"Subject.Passes ok", "Subject.Crashes killed"}));
    const QJsonObject program = trace.Event("process", "mpl_report_subject");
    EXPECT_EQ(TraceFile::Argument(program, "end"), "signal 6 (Aborted)");
    EXPECT_TRUE(TraceFile::Argument(program, "killedBy").startsWith("itself"));
    const QString crash = TraceFile::Argument(program, "crash");
    EXPECT_TRUE(crash.contains("\nSubject_Crashes_Test::TestBody() at ReportSubject.cpp:"))
        << qPrintable(crash);
}

TEST_F(Timeline, NamesTheSetUpOrTearDownThatACrashWasIn)
{
    EXPECT_EQ(RunCases("Dying.*").status, 128 + SIGABRT);
    EXPECT_EQ(TraceFile(m_File).About("resultText"), "signal 6 (Aborted) in the set-up of suite Dying");
    EXPECT_EQ(TraceFile(m_File).CaseStates(), Texts{"Dying: set-up killed"});
    EXPECT_EQ(RunCases("Closing.*").status, 128 + SIGABRT);
    EXPECT_EQ(TraceFile(m_File).About("resultText"), "signal 6 (Aborted) in the tear-down of suite Closing");
    const Outcome outcome = Run({"--no-lifecycle-manager", "--time-limit", "0.5", "--", MPL_REPORT_SUBJECT,
                                 "--gtest_filter=Opening.*"});
    EXPECT_NE(outcome.err.find(" ran out of its 0.5 s in the set-up of suite Opening\n"), std::string::npos)
        << outcome.err;
}

TEST_F(Timeline, ShowsEveryProcessFromStartToEnd)
{
    // Detached, killed by another, ended by a signal that it takes, gone before anybody looks, and never
    // there.
    const Outcome outcome =
        RunScript("(setsid sleep 1001 & echo $! >/tmp/detached.$$; "
                  "until_true grep -q sleep /proc/$!/comm; kill -9 $!)\n"
                  "(exec sh -c 'trap \"exit 7\" TERM; echo ready; while :; do sleep 0.01; done') &\n"
                  "sleep 0.3; kill $!; wait $!\n"
                  "sh -c 'exit 9'; /no/such/service; setsid -f sleep 1002; sleep 0.1");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const TraceFile trace(m_File);
    QStringList ends;
    for (const QJsonObject& process : trace.Events("process")) {
        ends += TraceFile::Argument(process, "command").section(' ', 0, 1) + ": " +
                TraceFile::Argument(process, "end");
    }
    EXPECT_TRUE(ends.contains("sleep 1001: signal 9 (Killed)")) << qPrintable(ends.join('\n'));
    EXPECT_TRUE(ends.contains("sh -c: exit status 7")) << qPrintable(ends.join('\n'));
    EXPECT_TRUE(ends.contains("sh -c: exit status 9"));
    EXPECT_TRUE(ends.contains("/no/such/service: could not be run: No such file or directory"));
    EXPECT_TRUE(ends.contains("sleep 1002: still ran at the end"));
    for (const QJsonObject& process : trace.Events("process", "sleep")) {
        if (TraceFile::Argument(process, "command") == "sleep 1001") {
            EXPECT_TRUE(TraceFile::Argument(process, "killedBy").startsWith("sh (pid "));
            EXPECT_EQ(TraceFile::Argument(process, "state"), "killed");
        }
    }
}

TEST_F(Timeline, HoldsWhatIsPrintedAndHowLongWasSlept)
{
    const Outcome outcome = RunScript("echo one; echo two >&2; sleep 0.25; printf three");
    EXPECT_EQ(outcome.out, "one\nthree");
    EXPECT_EQ(outcome.err, "two\n");
    const TraceFile trace(m_File);
    const QJsonObject pause = trace.Event("pause", "250 ms");
    EXPECT_LE(TraceFile::Begin(trace.Event("log", "one")), TraceFile::End(pause));
    EXPECT_LE(TraceFile::Begin(trace.Event("log", "two")), TraceFile::End(pause));
    EXPECT_GE(TraceFile::Begin(trace.Event("log", "three")), TraceFile::Begin(pause) + 250000);
    EXPECT_LT(TraceFile::End(pause) - TraceFile::Begin(pause), 260000);
}

TEST_F(Timeline, LeavesAProgramToLearnThatNobodyListens)
{
    QProcess shell;
    shell.setProcessEnvironment(m_Environment);
    shell.start("sh", {"-c", m_Command.first() + " --no-lifecycle-manager --timeline " + m_File +
                                 " -- yes | head -n 1"});
    EXPECT_EQ(WaitForEnd(shell).out, "y\n");
    EXPECT_EQ(TraceFile(m_File).About("resultText"), "signal 13 (Broken pipe)");
}

TEST_F(Timeline, IsAsGoodForAnOrdinaryUser)
{
    if (getuid() != 0) {
        GTEST_SKIP() << "only root can become another user; the other cases have shown it then";
    }
    BecomeOrdinaryUser();
    m_File = m_OpenFolder.filePath("run.json");
    ASSERT_TRUE(QFile::setPermissions(m_OpenFolder.path(), QFileDevice::Permissions(0x7777)));
    EXPECT_EQ(RunScript("sleep 0.1; sh -c 'kill -9 $$'; exit 4").status, 4);
    const TraceFile trace(m_File);
    EXPECT_EQ(trace.About("resultText"), "exit status 4");
    trace.Event("pause", "100 ms");
    QStringList killers;
    for (const QJsonObject& process : trace.Events("process", "sh")) {
        killers += TraceFile::Argument(process, "killedBy");
    }
    EXPECT_EQ(killers.last(), "itself, with signal 9 (Killed)");
}

TEST_F(Timeline, LeavesAProgramItsTerminal)
{
    QProcess terminal;
    terminal.setProcessEnvironment(m_Environment);
    terminal.start("script",
                   {"-qec",
                    "stty rows 33 cols 77; " + m_Command.first() + " --no-lifecycle-manager --timeline " +
                        m_File + " -- sh -c 'test -t 1 && test -t 2 && stty size <&1; echo said'",
                    "/dev/null"});
    const Outcome outcome = WaitForEnd(terminal);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "33 77\r\nsaid\r\n");
    TraceFile(m_File).Event("log", "said");
}

TEST_F(Timeline, KnowsWhoIsWhoOnABus)
{
    RequireLifecycleManager();
    const Outcome outcome =
        RunScript("manager() { busctl --user call org.freedesktop.systemd1 /org/freedesktop/systemd1 "
                  "org.freedesktop.systemd1.Manager \"$@\"; }\n"
                  "manager GetUnit s mpl-sandbox.target; manager GetUnit s nothing.target 2>/dev/null; true",
                  {});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const TraceFile trace(m_File);
    const QJsonObject name = trace.Event("name", "org.freedesktop.systemd1");
    EXPECT_TRUE(TraceFile::Argument(name, "process").startsWith("systemd (pid "));
    const QList<QJsonObject> calls = trace.Events("call", "Manager.GetUnit");
    ASSERT_EQ(calls.size(), 2);
    EXPECT_EQ(TraceFile::Argument(calls[0], "state"), "ok");
    EXPECT_EQ(TraceFile::Argument(calls[0], "request"), "\"mpl-sandbox.target\"");
    EXPECT_TRUE(TraceFile::Argument(calls[0], "from").startsWith(":1."));
    EXPECT_TRUE(TraceFile::Argument(calls[0], "to").contains(", systemd (pid "));
    EXPECT_EQ(TraceFile::Argument(calls[1], "state"), "failed");
    EXPECT_TRUE(TraceFile::Argument(calls[1], "error").startsWith("org.freedesktop.systemd1.NoSuchUnit: "));
}

// The stack's programs have systemd for their parent, and only a parent is told how its child ended.
TEST_F(Timeline, KnowsHowServicesOfTheLifecycleManagerEnd)
{
    RequireLifecycleManager();
    WriteFile(StackFile("bin/media_manager"),
              "#!/bin/sh\nulimit -c 0; ulimit -f 0; echo too much >/var/talvex/media-player/full\n",
              kProgram);
    EXPECT_EQ(RunScript("systemctl --user start media-manager\n"
                        "until_true systemctl --user -q is-failed media-manager",
                        {})
                  .status,
              0);
    const QJsonObject service = TraceFile(m_File).Event("process", "media_manager");
    EXPECT_EQ(TraceFile::Argument(service, "end"), "signal 25 (File size limit exceeded)");
    EXPECT_TRUE(TraceFile::Argument(service, "startedBy").startsWith("systemd (pid "));
}

TEST_F(Timeline, TellsWhereARunWasThatRanOutOfTime)
{
    const Outcome outcome = Run({"--no-lifecycle-manager", "--timeline", m_File, "--time-limit", "0.5", "--",
                                 MPL_REPORT_SUBJECT, "--gtest_filter=Subject.Hangs"});
    EXPECT_EQ(outcome.status, 124);
    EXPECT_EQ(outcome.err.find("mpl-sandbox: the program ran out of its 0.5 s; it is ended\n"), 0U)
        << outcome.err;
    const TraceFile trace(m_File);
    EXPECT_EQ(trace.About("result"), "timed out");
    EXPECT_EQ(trace.About("resultText"), "ran out of its 0.5 s in Subject.Hangs");
    EXPECT_EQ(trace.CaseStates(), Texts{"Subject.Hangs killed"});
    EXPECT_TRUE(TraceFile::Argument(trace.Event("process", "mpl_report_subject"), "killedBy")
                    .startsWith("mpl-sandbox (pid "));
}

TEST_F(Timeline, OutlivesTheKillOfItsProgram)
{
    QProcess sandbox;
    StartHanging(sandbox);
    for (const ProcessEntry& process : MarkedProcesses()) {
        if (process.arguments.rfind(MPL_REPORT_SUBJECT, 0) == 0) {
            ASSERT_EQ(kill(process.pid, SIGKILL), 0);
        }
    }
    EXPECT_EQ(WaitForEnd(sandbox).status, 128 + SIGKILL);
    const TraceFile trace(m_File);
    EXPECT_EQ(trace.About("result"), "killed");
    EXPECT_EQ(trace.About("resultText"), "signal 9 (Killed) in Subject.Hangs");
    EXPECT_TRUE(IsAlone());
}

TEST_F(Timeline, OutlivesTheKillOfItsSandbox)
{
    QProcess sandbox;
    StartHanging(sandbox);
    sandbox.kill();
    EXPECT_EQ(WaitForEnd(sandbox).status, 128 + SIGKILL);
    EXPECT_TRUE(WaitForNoProcess()) << MarkedProcesses().front().arguments;
    const TraceFile trace(m_File);
    EXPECT_EQ(trace.About("result"), "cut off");
    EXPECT_EQ(trace.About("resultText"),
              "the sandbox was killed in Subject.Hangs: what follows is what was known");
    EXPECT_EQ(trace.CaseStates(), (Texts{"Subject.Passes ok", "Subject.Hangs running"}));
    EXPECT_TRUE(IsAlone());
}

TEST_F(Timeline, OfARunThatIsKilledWithAllItsHelpersCanBeWrittenLater)
{
    QProcess sandbox;
    StartHanging(sandbox);
    for (const int signal : {SIGSTOP, SIGKILL}) { // as if all at once
        for (const ProcessEntry& process : MarkedProcesses()) {
            kill(process.pid, signal);
        }
    }
    WaitForEnd(sandbox);
    EXPECT_TRUE(WaitForNoProcess()) << MarkedProcesses().front().arguments;
    EXPECT_EQ(TraceFile(m_File).About("result"), "cut off");
    EXPECT_EQ(Run({"--timeline-from", m_File + ".recording"}).status, 0);
    const TraceFile trace(m_File);
    EXPECT_EQ(trace.About("result"), "cut off");
    EXPECT_EQ(trace.CaseStates().at(0), "Subject.Passes ok");
    EXPECT_TRUE(IsAlone());
}

TEST_F(Timeline, IsKeptOfAFailureOnlyWhenThatIsAskedFor)
{
    for (const auto& [script, isKept] : {std::pair("exit 0", false), std::pair("exit 1", true)}) {
        Run(QStringList{"--no-lifecycle-manager", "--timeline-on-failure", m_File} + ShellCommand(script));
        EXPECT_EQ(QFile::exists(m_File), isKept);
    }
}

TEST_F(Timeline, IsAPageATraceOrBoth)
{
    m_File = m_Folder.filePath("both");
    EXPECT_EQ(RunScript("echo '</script><!--'").status, 0);
    EXPECT_EQ(TraceFile(m_File + ".json").About("result"), "passed");
    const QByteArray page = ReadFile(m_File + ".html");
    EXPECT_TRUE(page.contains("<html") && page.contains("\"result\":\"passed\""))
        << page.left(200).constData();
}

TEST_F(Timeline, RefusesWhereItCannotBeWritten)
{
    const QStringList command = ShellCommand("echo never");
    ExpectRefusal(QStringList{"--timeline", m_Folder.filePath("run.txt")} + command, 2,
                  "(FILE.json) or both");
    ExpectRefusal(QStringList{"--timeline", ""} + command, 2, "--timeline needs the file to write");
    ExpectRefusal(QStringList{"--timeline", "/nonexistent/run.json"} + command, 125,
                  "the time line can't be written to /nonexistent/run.json");
    ExpectRefusal(QStringList{"--time-limit", "0"} + command, 2,
                  "--time-limit needs a number of seconds above 0");
    ExpectRefusal({"--timeline-from", m_Folder.path()}, 2, "needs the folder FILE.recording");
}

} // namespace sandbox
