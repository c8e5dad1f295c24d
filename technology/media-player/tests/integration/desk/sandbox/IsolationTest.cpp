// What a program sees in the sandbox, what the machine sees of it, and how its end is reported.
#include "SandboxRun.h"

#include <QDir>
#include <QFile>

#include <unistd.h>

namespace sandbox
{

TEST_F(Sandbox, EndsAsItsProgramDoes)
{
    const std::pair<const char*, int> ends[] = {{"exit 0", 0},          {"exit 7", 7},
                                                {"kill -KILL $$", 137}, {"kill -TERM $$", 143},
                                                {"kill -INT $$", 130},  {"ulimit -c 0; kill -SEGV $$", 139}};
    for (const auto& [script, status] : ends) {
        EXPECT_EQ(RunScript(script).status, status) << script;
    }
}

TEST_F(Sandbox, EndsWithoutAWordOfWhatStillStartsPrograms)
{
    EXPECT_EQ(RunScript("for i in 1 2 3 4; do (while :; do /bin/true; done) & done; sleep 0.1").err, "");
}

const struct {
    QStringList arguments;
    int status;
    const char* message;
} kWrongs[] = {
    {{}, 2, "no program to run"},
    {{"--wrong", "--", "true"}, 2, "unknown option --wrong; see mpl-sandbox --help"},
    {{"--stack"}, 2, "--stack needs the folder"},
    {{"--record-bus=", "--", "true"}, 2, "--record-bus needs the file"},
    {{"--stack", "/nonexistent", "--", "true"}, 125, "/nonexistent does not exist: build"},
    {{"--stack", "/usr", "--", "true"}, 125, "has no programs (bin/media_manager is missing"},
    {{"--record-bus", "/nonexistent/bus", "--", "true"}, 125, "can't be written to /nonexistent/bus"},
    {{"--no-lifecycle-manager", "--", "/no-such-program"}, 127, "the program /no-such-program was not found"},
    {{"--no-lifecycle-manager", "--", "/etc/passwd"},
     126,
     "the program /etc/passwd can't be run: Permission"},
};

TEST_F(Sandbox, SaysWhatIsWrongAndWhatToDo)
{
    for (const auto& wrong : kWrongs) {
        ExpectRefusal(wrong.arguments, wrong.status, wrong.message);
    }
    EXPECT_EQ(SandboxGroups(), QStringList());
}

TEST_F(Sandbox, SaysWhatToDoWithoutAStack)
{
    m_Environment.remove("MPL_STACK");
    m_Command = QStringList(m_OpenFolder.filePath("mpl-sandbox")); // away from the stack it came with
    ASSERT_TRUE(QFile::copy(MPL_SANDBOX_PROGRAM, m_Command.first()));
    ExpectRefusal({"--", "true"}, 125, "install the package mpl-test-support-simulated-stack");
}

TEST_F(Sandbox, SaysWhatToDoWithoutBubblewrapOrWhenItRefuses)
{
    m_Environment.insert("PATH", "/nonexistent");
    ExpectRefusal({"--", "true"}, 125, "install the package bubblewrap");
    m_Environment.insert("PATH", m_OpenFolder.path());
    const std::pair<const char*, const char*> refusals[] = {
        {"No permissions to create new namespace", "(bwrap: No permissions to create new namespace)."},
        {"Failed to make / slave: Invalid argument", "run 'mount --bind DIR DIR'"}};
    for (const auto& [said, message] : refusals) {
        WriteFile(m_OpenFolder.filePath("bwrap"),
                  QByteArray("#!/bin/sh\necho 'bwrap: ") + said + "' >&2\nexit 1\n", kProgram);
        ExpectRefusal({"--", "true"}, 125, message);
    }
}

// Its child waits for its word then, for ever if nobody ends it.
TEST_F(Sandbox, SaysWhyBubblewrapGaveUpBesideItsChild)
{
    WriteFile(m_OpenFolder.filePath("bwrap"),
              "#!/bin/sh\nPATH=${PATH#*:}\nexec bwrap --info-fd 0 \"$@\" 0>/dev/full\n", kProgram);
    m_Environment.insert("PATH", m_OpenFolder.path() + ':' + m_Environment.value("PATH"));
    ExpectRefusal({"--no-lifecycle-manager", "--", "true"}, 125, "No space left on device");
    EXPECT_TRUE(WaitForNoProcess());
}

TEST_F(Sandbox, SaysThatItNeedsProc)
{
    m_Command = QStringList{"bwrap", "--dev-bind", "/", "/", "--tmpfs", "/proc", MPL_SANDBOX_PROGRAM};
    EXPECT_NE(Run({"--", "true"}).err.find("/proc is missing here"), std::string::npos);
}

TEST_F(Sandbox, ShowsTheStackAndAnEmptyWorldAroundIt)
{
    const Outcome outcome = RunScript(QStringLiteral(R"sh(
        check() { "$@" || { echo "not so: $*"; exit 1; }; }
        refuse() { if "$@" 2>/dev/null; then echo "allowed: $*"; exit 1; fi; }
        check test -x /opt/talvex/bin/media_manager
        refuse touch /opt/talvex/bin/new
        check test "$(cat /opt/talvex/etc/mplConfig.json)" = '{}'
        check test "$(find /var/talvex)" = "$(printf '/var/talvex\n/var/talvex/media-player')"
        refuse test -d /proc/%1
        check test "$(ls -d /proc/[0-9]* | wc -l)" -lt 10
        check test "$MPL_SANDBOX$MPL_SANDBOX_LIFECYCLE_MANAGER" = 1none
        check test "$DBUS_SYSTEM_BUS_ADDRESS" = "$DBUS_SESSION_BUS_ADDRESS"
        check dbus-send --system --print-reply --dest=org.freedesktop.DBus / org.freedesktop.DBus.GetId
        check test -w "$TMPDIR" -a -z "$(ls -A "$TMPDIR")"
        check test "$(pwd)" = '%2'
        refuse ls /run/mpl-sandbox/machine)sh")
                                          .arg(getpid())
                                          .arg(QDir::currentPath()));
    EXPECT_EQ(outcome.status, 0) << outcome.out << outcome.err;
    EXPECT_EQ(outcome.err, "");
}

TEST_F(Sandbox, ChangesNothingOfTheMachine)
{
    const QString name = "mpl-" + m_Environment.value("MPL_TEST_MARK");
    const QStringList places = {"/",           "/opt/", "/var/", "/run/", "/dev/shm/", "/opt/talvex/etc/",
                                "/var/talvex/"};
    for (const QString& place : places) {
        const Outcome outcome = RunScript("echo x > " + place + name + " && cat " + place + name);
        EXPECT_EQ(outcome.out, "x\n") << qPrintable(place) << outcome.err;
        EXPECT_FALSE(QFile::exists(place + name)) << qPrintable(place);
    }
    RunScript("echo broken > /opt/talvex/etc/mplConfig.json");
    EXPECT_EQ(ReadFile(StackFile("etc/mplConfig.json")), "{}");
}

constexpr const char* kMeetingScript = R"(mkdir /var/talvex/media-player/test /dev/shm/mpl-test || exit 1
    user=$(id -u); echo $user
    sleep 100$user & until_true grep -q sleep /proc/$!/comm
    dbus-send --system --print-reply=literal --dest=org.freedesktop.DBus / org.freedesktop.DBus.GetId; echo
    read until_both_are_up
    for process in /proc/[0-9]*; do tr '\0' ' ' < $process/cmdline; echo; done | grep '^sleep 100')";

// Neither sandboxes of one user nor those of two users.
TEST_F(Sandbox, DoesNotMeetAnother)
{
    for (const bool isOfTwoUsers : {false, true}) {
        const auto first = StartScript(kMeetingScript, {"--no-lifecycle-manager"});
        if (isOfTwoUsers && getuid() == 0) {
            BecomeOrdinaryUser();
        }
        const auto second = StartScript(kMeetingScript, {"--no-lifecycle-manager"});
        for (QProcess* process : {first.get(), second.get()}) {
            process->write("\n");
        }
        const Outcome ofFirst = WaitForEnd(*first);
        const Outcome ofSecond = WaitForEnd(*second);
        EXPECT_EQ(ofFirst.err + ofSecond.err, "");
        EXPECT_NE(ofFirst.out, ofSecond.out);
        for (const std::string& out : {ofFirst.out, ofSecond.out}) {
            const std::string user = out.substr(0, out.find('\n'));
            EXPECT_EQ(std::count(out.begin(), out.end(), '\n'), 3) << out;
            EXPECT_NE(out.find("\nsleep 100" + user + " \n"), std::string::npos) << out;
        }
    }
}

constexpr const char* kRecordingScript = R"(
    bus=unix:path=/var/talvex/media-player/testDbus
    for daemon in First Second; do
        dbus-daemon --config-file=/opt/talvex/etc/mpl-dbus.conf --nofork 2> $TMPDIR/$daemon &
        until_true grep -q 'became a monitor' $TMPDIR/$daemon
        dbus-send --bus=$bus --type=signal / com.example.On$daemon
        until_true grep -q On$daemon $RECORD # a bus that ends may keep what it has not passed on
        kill $!; wait $!
    done
    dbus-send --system --type=signal / com.example.OnSystem)";

TEST_F(Sandbox, RecordsItsBusesThroughRestarts)
{
    QTemporaryDir folder;
    m_Environment.insert("RECORD", folder.filePath("bus.pcap"));
    const Outcome outcome =
        RunScript(kRecordingScript, {"--no-lifecycle-manager", "--record-bus", folder.filePath("bus.pcap")});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const std::pair<const char*, QList<QByteArray>> records[] = {{"bus.pcap", {"OnFirst", "OnSecond"}},
                                                                 {"bus.system.pcap", {"OnSystem"}}};
    for (const auto& [name, words] : records) {
        const QByteArray bytes = ReadFile(folder.filePath(name));
        EXPECT_EQ(bytes.left(4), QByteArray::fromHex("d4c3b2a1")) << name;
        for (const QByteArray& word : words) {
            EXPECT_EQ(bytes.count(word), 1) << name << word.constData();
        }
    }
}

// Root runs the sandbox without a user namespace, everybody else with one.
TEST_F(Sandbox, ServesAnOrdinaryUser)
{
    if (getuid() != 0) {
        return; // all cases of this program are such a user's
    }
    BecomeOrdinaryUser();
    const Outcome outcome = RunScript("id -u; grep -c '^Cap.*:.*0000000000000000$' /proc/self/status; cat "
                                      "/opt/talvex/etc/mplConfig.json; exit 5",
                                      {});
    EXPECT_EQ(outcome.status, 5);
    EXPECT_EQ(outcome.out, "65534\n5\n{}"); // none of the five sets of capabilities holds one
    // Nobody has a control group of its own, so there is no manager, and one line says so.
    EXPECT_EQ(outcome.err.find("mpl-sandbox: the lifecycle manager is not available ("), 0U) << outcome.err;
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
}

} // namespace sandbox
