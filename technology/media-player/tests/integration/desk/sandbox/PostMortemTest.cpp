// Each cause for which a service does not come up has its own words at the end of the output.
#include "SandboxRun.h"
#include "WaitUntil.h"

#include <QDir>

#include <algorithm>
#include <csignal>
#include <cstring>
#include <functional>
#include <regex>

namespace sandbox
{

class PostMortem : public Sandbox
{
protected:
    /// The simulated stack, of which each test changes something.
    void SetUp() override
    {
        Sandbox::SetUp();
        QFile::remove(StackFile("bin/media_manager"));
        QFile::remove(StackFile("etc/mpl-dbus.conf"));
        ASSERT_TRUE(QFile::copy(MPL_SIMULATED_STACK "/etc/mpl-dbus.conf", StackFile("etc/mpl-dbus.conf")));
        const QDir programs(MPL_SIMULATED_STACK "/bin");
        for (const QString& name : programs.entryList(QDir::Files)) {
            ASSERT_TRUE(QFile::link(programs.filePath(name), StackFile("bin/" + name)));
        }
    }

    /// A program of the stack is a shell script from now on.
    void Replace(const char* aProgram, const QByteArray& aScript, int aPermissions = kProgram)
    {
        QFile::remove(StackFile("bin/") + aProgram);
        WriteFile(StackFile("bin/") + aProgram, "#!/bin/sh\n" + aScript + "\n", aPermissions);
    }

    void Plant(const QByteArray& aFaultsOfManager)
    {
        WriteFile(StackFile("etc/simulated-stack.json"),
                  R"({"programs": {"media_manager": )" + aFaultsOfManager + "}}");
    }

    /// Runs a case; its lines from the sandbox.
    std::string Answer(const QString& aCase = "OfTheManager",
                       const QStringList& aOptions = {"--no-lifecycle-manager"})
    {
        return Explanation(Run(QStringList{"--speed", "20"} + aOptions +
                               QStringList{"--", MPL_BRING_UP_SUBJECT, "--gtest_filter=BringUp." + aCase}));
    }

    void KillProgram() const
    {
        for (const ProcessEntry& process : MarkedProcesses()) {
            if (process.arguments.rfind(MPL_BRING_UP_SUBJECT, 0) == 0) {
                kill(process.pid, SIGKILL);
            }
        }
    }

    /// Runs a case, and something is killed while the library waits; the lines from the sandbox.
    std::string AnswerToKill(const std::function<void(QProcess&)>& aKill)
    {
        QProcess sandbox;
        const QString output = m_OpenFolder.filePath("output"); // that lives longer than the process
        sandbox.setStandardErrorFile(output);
        Start(sandbox,
              {"--no-lifecycle-manager", "--", MPL_BRING_UP_SUBJECT, "--gtest_filter=*.OfTheManager"});
        EXPECT_TRUE(WaitUntil(
            "the library waits", [&] { return ReadFile(output).count("pausing for 2 seconds..") > 1; },
            20000));
        aKill(sandbox);
        WaitForEnd(sandbox);
        EXPECT_TRUE(WaitForNoProcess());
        return Explanation({0, {}, ReadFile(output).toStdString()});
    }

    /// What the sandbox says, with a letter for each number that differs from run to run.
    static std::string Explanation(const Outcome& aOutcome)
    {
        std::string said;
        std::istringstream lines(aOutcome.err);
        bool isAnswer = false;
        for (std::string line; std::getline(lines, line);) {
            const bool isSandbox = line.rfind("mpl-sandbox: ", 0) == 0;
            isAnswer = isSandbox || (isAnswer && line.rfind("  ", 0) == 0 && line[2] != ' ');
            said += isAnswer ? line + "\n" : "";
        }
        said = std::regex_replace(said, std::regex("[0-9]+\\.[0-9]+ s"), "T");
        said = std::regex_replace(said, std::regex("pid [0-9]+"), "pid P");
        said = std::regex_replace(said, std::regex("\\.cpp:[0-9]+"), ".cpp:N");
        return std::regex_replace(said, std::regex(":1\\.[0-9]+"), ":1.N");
    }

    static const std::string kName;
    static const std::string kNameWait;   ///< the headline of a wait for the manager's name
    static const std::string kObjectWait; ///< and for its object
    static const std::string kMount;      ///< the line of the service that is well
};

const std::string PostMortem::kName = "com.talvex.DBus.MediaPlayer.MediaManagerService";
const std::string PostMortem::kNameWait =
    "mpl-sandbox: post-mortem: " + kName + " was waited for in vain from T to T\n";
const std::string PostMortem::kObjectWait =
    "mpl-sandbox: post-mortem: the object of " + kName + " was waited for in vain from T to T\n";
const std::string PostMortem::kMount =
    "  media_mme (pid P) started at T, joined the private bus as :1.N at T, owned "
    "com.talvex.DBus.MediaPlayer.MMEMountService from T, still ran at the end\n";

TEST_F(PostMortem, TellsThatAProgramCannotBeRun)
{
    const std::string headline = "mpl-sandbox: post-mortem: media_mme could not be started at T\n";
    QFile::remove(StackFile("bin/media_mme"));
    EXPECT_EQ(Answer(), headline + "  media_mme could not be run at T: No such file or directory "
                                   "(/opt/talvex/bin/media_mme)\n");
    Replace("media_mme", "exit 0", 0x6644);
    EXPECT_EQ(Answer(), headline + "  media_mme could not be run at T: Permission denied "
                                   "(/opt/talvex/bin/media_mme)\n");
}

TEST_F(PostMortem, TellsThatAServiceEndedAndHow)
{
    Replace("media_manager", "echo 'media_manager: no licence' >&2; exit 3");
    EXPECT_EQ(Answer(),
              "mpl-sandbox: media_manager (pid P) ended with exit status 3, and nobody had asked it to\n" +
                  kNameWait +
                  "  media_manager (pid P) started at T, joined no bus, exited with status 3 at T; its "
                  "last line: \"no licence\"\n" +
                  kMount);
}

TEST_F(PostMortem, TellsWhereAServiceCrashed)
{
    Plant(R"({"never_own_name": true, "crash_after_ms": 4000})");
    const std::string crash =
        "mpl-sandbox: media_manager (pid P) ended by signal 6 (Aborted), and nobody had asked it to\n" +
        kNameWait +
        "  media_manager (pid P) started at T, joined the private bus as :1.N at T, never asked for " +
        kName + ", crashed with signal 6 (Aborted) at T, which it sent itself";
    EXPECT_EQ(Answer(), crash +
                            ", in sim::(anonymous namespace)::Crash() at Program.cpp:N, from "
                            "sim::Program::Run() at Program.cpp:N, from main at "
                            "main.cpp:N\n" +
                            kMount);
    // And where nobody can read stacks.
    m_Command = QStringList{"bwrap",
                            "--dev-bind",
                            "/",
                            "/",
                            "--bind",
                            "/dev/null",
                            "/usr/lib/" MPL_LIBRARY_ARCHITECTURE "/libdw.so.1"} +
                m_Command;
    EXPECT_EQ(Answer(), crash + "\n" + kMount);
}

TEST_F(PostMortem, TellsWhichBusAServiceJoined)
{
    Replace("media_manager", "exec " MPL_SIMULATED_STACK "/bin/media_manager");
    EXPECT_EQ(Answer(),
              kNameWait +
                  "  media_manager (pid P) started at T, joined the system bus as :1.N at T and not the "
                  "private bus, where it was waited for, still ran at the end\n" +
                  kMount);
    Replace("media_manager", "exec sleep 1000");
    EXPECT_EQ(Answer(), kNameWait +
                            "  media_manager (pid P) started at T, joined no bus, still ran at the end\n" +
                            kMount);
}

TEST_F(PostMortem, TellsWhoHasTheName)
{
    Plant(R"({"never_own_name": true})");
    EXPECT_EQ(Answer(),
              kNameWait +
                  "  media_manager (pid P) started at T, joined the private bus as :1.N at T, never asked "
                  "for " +
                  kName + ", still ran at the end\n" + kMount);
    Plant("{}");
    // One that goes at once may be gone before the bus can be asked who it is.
    Replace("media_mme", "exec " MPL_RUDE_SERVICE " " + QByteArray::fromStdString(kName) + " error");
    Replace("media_manager", "sleep 2; exec " MPL_SIMULATED_STACK "/bin/media_manager --test-dbus");
    const std::string answer = Answer();
    EXPECT_NE(answer.find("exited with status 3 at T; its last line: \"can't own " + kName +
                          ": another process owns it"),
              std::string::npos)
        << answer;
    EXPECT_EQ(answer.find("joined no bus"), std::string::npos) << answer;
}

TEST_F(PostMortem, TellsThatAServiceCameTooLate)
{
    Plant(R"({"start_delay_ms": 24000})");
    EXPECT_EQ(Answer(),
              kNameWait +
                  "  media_manager (pid P) started at T, joined the private bus as :1.N at T, owned " +
                  kName + " from T, too late for the wait that ended at T, still ran at the end\n" + kMount);
}

TEST_F(PostMortem, TellsHowManyObjectsAServiceHad)
{
    const std::string begin =
        "  media_manager (pid P) started at T, joined the private bus as :1.N at T, owned " + kName +
        " from T, had ";
    Plant(R"({"manager_objects": 0})");
    EXPECT_EQ(Answer(), kObjectWait + begin +
                            "none of the objects that were waited for up to T, still ran at the end\n" +
                            kMount);
    Plant(R"({"manager_objects": 2})");
    EXPECT_EQ(Answer(), "mpl-sandbox: post-mortem: " + kName + " had too many objects at T (and 1 more)\n" +
                            begin + "2 objects where there is to be one, still ran at the end\n" + kMount);
}

TEST_F(PostMortem, TellsHowAServiceAnsweredIntrospection)
{
    const std::string begin =
        kObjectWait + "  media_manager (pid P) started at T, joined the private bus as :1.N at T, owned " +
        kName + " from T, ";
    const QByteArray rude = "exec " MPL_RUDE_SERVICE " " + QByteArray::fromStdString(kName);
    Replace("media_manager", rude + " error");
    EXPECT_EQ(Answer(),
              begin +
                  "answered introspection of / with the error org.freedesktop.DBus.Error.AccessDenied: This "
                  "is private., still ran at the end\n" +
                  kMount);
    Replace("media_manager", rude + " silence");
    EXPECT_EQ(Answer(),
              begin + "no answer of it to introspection of / was seen, still ran at the end\n" + kMount);
}

TEST_F(PostMortem, TellsThatAServiceIgnoredSigterm)
{
    Plant(R"({"never_own_name": true, "ignore_sigterm": true})");
    const std::string answer = Answer("AndEndOfTheManager");
    EXPECT_NE(answer.find(kName + ", ignored SIGTERM from mpl_bring_up_subject at T, was ended by signal 9 "
                                  "(Killed) at T from mpl_bring_up_subject\n"),
              std::string::npos)
        << answer;
}

TEST_F(PostMortem, TellsThatTheBusDaemonRefusedItsConfiguration)
{
    WriteFile(StackFile("etc/mpl-dbus.conf"), "<busconfig><nonsense/></busconfig>");
    // The daemon prints its line in pieces, between which others may print theirs.
    const std::string answer = Answer();
    EXPECT_EQ(
        answer.find("mpl-sandbox: dbus-daemon (pid P) ended with exit status 1, and nobody had asked it to\n"
                    "mpl-sandbox: post-mortem: the private bus was waited for in vain from T to T\n"
                    "  dbus-daemon (pid P) started at T, exited with status 1 at T; its last line: \""),
        0U)
        << answer;
}

TEST_F(PostMortem, TellsWhatTheLifecycleManagerSaysOfAUnit)
{
    RequireLifecycleManager();
    WriteFile(StackFile("etc/systemd/media-manager.service"),
              "[Service]\nType=dbus\nBusName=com.example.Manager\nExecStart=/opt/talvex/bin/media_manager\n");
    Replace("media_manager", "exit 3");
    std::string answer = Answer("OfTheManagersUnit", {});
    // The program's connection for the start is short: on a busy machine nobody can say any more that it
    // was not the service's.
    if (const std::size_t clause = answer.find("joined no bus, "); clause != std::string::npos) {
        answer.erase(clause, std::strlen("joined no bus, "));
    }
    EXPECT_EQ(
        answer,
        "mpl-sandbox: media_manager (pid P) ended with exit status 3, and nobody had asked it to\n"
        "mpl-sandbox: post-mortem: media-manager could not be started at T\n"
        "  media_manager (pid P) started at T, exited with status 3 at T, systemd ended the job of "
        "media-manager.service at T with the result \"failed\", its unit media-manager.service: Failed with "
        "result 'exit-code'.\n");
}

TEST_F(PostMortem, NamesTheProgramThatCrashedAndItsCase)
{
    EXPECT_EQ(
        Answer("AndCrash"),
        "mpl-sandbox: post-mortem: mpl_bring_up_subject (pid P) ended by signal 11 (Segmentation fault) "
        "in BringUp.AndCrash\n"
        "  mpl_bring_up_subject crashed in BringUp_AndCrash_Test::TestBody() at "
        "BringUpSubject.cpp:N\n" +
            kMount +
            "  media_manager (pid P) started at T, joined the private bus as :1.N at T, "
            "owned " +
            kName + " from T, still ran at the end\n");
}

// Whoever is killed while the library waits.
TEST_F(PostMortem, IsPrintedWhenTheProgramOrTheSandboxIsKilled)
{
    Replace("media_manager", "echo 'media_manager: hanging' >&2; exec sleep 1000");
    const std::string services =
        kMount + "  media_manager (pid P) started at T, joined no bus, still ran at the end; its last line: "
                 "\"hanging\"\n";
    EXPECT_EQ(AnswerToKill([this](QProcess&) { KillProgram(); }),
              "mpl-sandbox: post-mortem: mpl_bring_up_subject (pid P) ended by signal 9 (Killed) in "
              "BringUp.OfTheManager\n" +
                  services);
    EXPECT_EQ(AnswerToKill([](QProcess& aSandbox) { aSandbox.kill(); }),
              "mpl-sandbox: post-mortem: the sandbox was killed in BringUp.OfTheManager while "
              "mpl_bring_up_subject (pid P) ran\n" +
                  services);
}

TEST_F(PostMortem, KnowsWhatWentToATerminal)
{
    Replace("media_manager", "test -t 2 && echo 'media_manager: no licence' >&2; exit 3");
    QProcess terminal;
    terminal.setProcessEnvironment(m_Environment);
    terminal.start("script",
                   {"-qec",
                    m_Command.first() + " --no-lifecycle-manager --speed 20 -- " MPL_BRING_UP_SUBJECT
                                        " --gtest_filter=BringUp.OfTheManager",
                    "/dev/null"});
    Outcome outcome = WaitForEnd(terminal);
    EXPECT_EQ(outcome.status, 1);
    outcome.out.erase(std::remove(outcome.out.begin(), outcome.out.end(), '\r'), outcome.out.end());
    EXPECT_EQ(Explanation({0, {}, outcome.out}),
              "mpl-sandbox: media_manager (pid P) ended with exit status 3, and nobody had asked it to\n" +
                  kNameWait +
                  "  media_manager (pid P) started at T, joined no bus, exited with status 3 at T; its "
                  "last line: \"no licence\"\n" +
                  kMount);
    EXPECT_LT(outcome.out.find("[ RUN      ]"), outcome.out.find("no licence"));
    EXPECT_LT(outcome.out.find("no licence"), outcome.out.find("[  FAILED  ]"));
}

TEST_F(PostMortem, LooksAtTheFirst64MegabytesOfAStream)
{
    Replace("media_manager", "echo 'media_manager: early'; head -c 67108864 /dev/zero; echo; "
                             "echo 'media_manager: late'; exit 3");
    const Outcome outcome = RunScript("/opt/talvex/bin/media_manager; kill -9 $$");
    EXPECT_EQ(outcome.status, 128 + SIGKILL);
    EXPECT_EQ(outcome.out.size(), 67108864U + sizeof "media_manager: early\n\nmedia_manager: late");
    EXPECT_EQ(
        Explanation(outcome),
        "mpl-sandbox: media_manager (pid P) ended with exit status 3, and nobody had asked it to\n"
        "mpl-sandbox: post-mortem: sh (pid P) ended by signal 9 (Killed)\n"
        "  media_manager (pid P) started at T, joined no bus, exited with status 3 at T; its last line: "
        "\"early\"\n");
}

TEST_F(PostMortem, IsNotPrintedWhenThereIsNothingToExplain)
{
    EXPECT_EQ(Answer("HasNothingToDoWithAFailure"), "");
    EXPECT_EQ(Answer("OfTheManager"), "");
    EXPECT_EQ(Answer("OfTheManagersUnit"), "");
    Replace("media_manager", "exec sleep 1000");
    EXPECT_EQ(Answer("IsExpectedToFail"), "");
}

} // namespace sandbox
