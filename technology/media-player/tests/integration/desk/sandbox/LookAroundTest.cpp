// Running sandboxes can be found, entered and kept.
#include "SandboxRun.h"

namespace sandbox
{

class LookingAround : public Sandbox, public testing::WithParamInterface<bool>
{
protected:
    void SetUp() override
    {
        Sandbox::SetUp();
        if (GetParam() && getuid() == 0) {
            BecomeOrdinaryUser();
        }
    }
    static QString Id(const QProcess& aSandbox) { return QString::number(aSandbox.processId()); }
};

TEST_P(LookingAround, FindsASandboxAndActsInIt)
{
    const auto sandbox =
        StartScript("echo seen > $TMPDIR/file; echo $$ > $TMPDIR/pid; echo up; exec sleep 1001",
                    {"--no-lifecycle-manager", "--speed", "1"});
    const QString id = Id(*sandbox);
    const Outcome list = Run({"--list"});
    EXPECT_NE(list.out.find(" " + id.toStdString() + " "), std::string::npos) << list.out;
    EXPECT_NE(list.out.find("sleep 1001"), std::string::npos) << list.out;

    const Outcome look =
        Run({"--enter", id, "--", "sh", "-c",
             "cat $TMPDIR/file; test /proc/$(cat $TMPDIR/pid)/ns/mnt -ef /proc/self/ns/mnt && echo there; "
             "ls /opt/talvex/bin; "
             "busctl call org.freedesktop.DBus / org.freedesktop.DBus GetId >/dev/null || "
             "echo no bus; exit 7"});
    EXPECT_EQ(look.out, "seen\nthere\nmedia_manager\n") << look.err;
    EXPECT_EQ(look.status, 7);

    // What was started from outside ends with the sandbox too.
    QProcess visitor;
    Start(visitor, {"--enter", id, "--", "sh", "-c", "echo in; exec sleep 1002"});
    WaitForOutput(visitor, "in");
    sandbox->terminate();
    WaitForEnd(*sandbox);
    EXPECT_NE(WaitForEnd(visitor).status, 0);
    EXPECT_TRUE(WaitForNoProcess());
    EXPECT_EQ(Run({"--list"}).out.find(" " + id.toStdString() + " "), std::string::npos);
}

// Only one can trace a process, and the sandbox does until somebody else wants to.
TEST_P(LookingAround, CanAttachADebugger)
{
    const QString attach = "gdb -q -batch -p %1 2>&1 | grep -o 'Inferior 1.*detached\\|ptrace.*'";
    EXPECT_NE(RunScript(attach.arg("$$")).out.find("detached"), std::string::npos);
    const auto sandbox =
        StartScript("echo $$ > $TMPDIR/pid; echo up; exec sleep 1001", {"--no-lifecycle-manager"});
    const Outcome look = Run({"--enter", Id(*sandbox), "--", "sh", "-c", attach.arg("$(cat $TMPDIR/pid)")});
    EXPECT_NE(look.out.find("detached"), std::string::npos) << look.out << look.err;
    sandbox->terminate();
    WaitForEnd(*sandbox);
}

TEST_P(LookingAround, IsPossibleAfterAFailureInAKeptSandbox)
{
    QProcess sandbox;
    Start(sandbox,
          {"--keep", "--no-lifecycle-manager", "--", "sh", "-c", "echo left > $TMPDIR/file; exit 3"});
    sandbox.setReadChannel(QProcess::StandardError);
    ASSERT_TRUE(sandbox.canReadLine() || sandbox.waitForReadyRead(30000));
    const QString id = Id(sandbox);
    const QString line =
        "mpl-sandbox: the program ended with exit status 3; its sandbox stands for an hour: look "
        "around with 'mpl-sandbox --enter " +
        id + "', end it with Ctrl-C or 'kill " + id + "'\n";
    EXPECT_EQ(sandbox.readLine().toStdString(), line.toStdString());
    EXPECT_EQ(Run({"--enter", Id(sandbox), "--", "sh", "-c", "cat $TMPDIR/file"}).out, "left\n");
    sandbox.terminate();
    WaitForEnd(sandbox);
    EXPECT_TRUE(WaitForNoProcess());
}

INSTANTIATE_TEST_SUITE_P(As, LookingAround, testing::Bool(),
                         [](const auto& aInfo) { return aInfo.param ? "OrdinaryUser" : "Oneself"; });

TEST_F(Sandbox, IsRefusedToVisitorsWithTheReason)
{
    EXPECT_EQ(Run({"--enter", "nobody-runs-this"}).err,
              "mpl-sandbox: no sandbox 'nobody-runs-this' runs; mpl-sandbox --list shows those that do\n");
    if (getuid() != 0) {
        return; // only root can become another user
    }
    const auto first = StartScript("echo up; exec sleep 1001", {"--no-lifecycle-manager"});
    const QString id = QString::number(first->processId());
    BecomeOrdinaryUser();
    const Outcome other = Run({"--enter", id});
    EXPECT_EQ(other.status, 125);
    EXPECT_NE(other.err.find("belongs to another user"), std::string::npos) << other.err;
    EXPECT_EQ(Run({"--list"}).out.find(" " + id.toStdString() + " "), std::string::npos);
    first->kill();
    WaitForEnd(*first);
}

} // namespace sandbox
