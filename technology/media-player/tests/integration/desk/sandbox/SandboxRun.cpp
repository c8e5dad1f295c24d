#include "SandboxRun.h"

#include "Require.h"
#include "WaitUntil.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QUuid>

#include <sys/stat.h>

#include <algorithm>
#include <csignal>

namespace sandbox
{

namespace
{

constexpr int kEndLimitMs = 60000;
constexpr int kGoneLimitMs = 10000;
const QString kMark = "MPL_TEST_MARK";

pid_t ParentOf(const QString& aPid)
{
    // pid (name) state parent …, and a name may hold anything
    const QByteArray status = ReadFile("/proc/" + aPid + "/stat");
    return status.mid(status.lastIndexOf(')')).split(' ').value(2).toInt();
}

} // namespace

void WriteFile(const QString& aPath, const QByteArray& aText, int aPermissions)
{
    QFile file(aPath);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << qPrintable(aPath);
    file.write(aText);
    file.setPermissions(QFileDevice::Permissions(aPermissions));
}

QByteArray ReadFile(const QString& aPath)
{
    QFile file(aPath);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QStringList Sandbox::ShellCommand(const QString& aScript)
{
    const char* const waitForIt =
        "until_true() { for i in $(seq 3000); do \"$@\" && return; sleep 0.02; done; "
        "echo \"waited in vain for: $*\" >&2; exit 1; }\n";
    return {"--", "sh", "-c", waitForIt + aScript};
}

Sandbox::Sandbox() : m_Environment(QProcessEnvironment::systemEnvironment())
{
    m_Environment.insert(kMark, QUuid::createUuid().toString(QUuid::WithoutBraces));
    m_Environment.insert("MPL_STACK", m_Stack.path());
}

void Sandbox::SetUp()
{
    umask(022); // every user reads the stack
    const QDir stack(m_Stack.path());
    ASSERT_TRUE(stack.mkpath("bin") && stack.mkpath("etc/systemd"));
    WriteFile(StackFile("bin/media_manager"), "#!/bin/sh\nexec sleep 1000\n", kProgram);
    ASSERT_TRUE(QFile::setPermissions(m_Stack.path(), QFileDevice::Permissions(0x7755)));
    WriteFile(StackFile("etc/mplConfig.json"), "{}");
    WriteFile(
        StackFile("etc/mpl-dbus.conf"),
        "<busconfig><listen>unix:path=/var/talvex/media-player/testDbus</listen><policy context='default'>"
        "<allow user='*'/><allow own='*'/><allow send_destination='*'/><allow "
        "eavesdrop='true'/></policy></busconfig>");
    WriteFile(StackFile("etc/systemd/media-manager.service"),
              "[Service]\nExecStart=/opt/talvex/bin/media_manager\n");
}

void Sandbox::Start(QProcess& aProcess, const QStringList& aArguments)
{
    aProcess.setProcessEnvironment(m_Environment);
    aProcess.setWorkingDirectory(m_WorkingFolder);
    const QStringList command = m_Command + aArguments;
    aProcess.start(command.first(), command.mid(1));
    m_SandboxIds += aProcess.processId();
}

void Sandbox::BecomeOrdinaryUser()
{
    const QString program = m_OpenFolder.filePath("mpl-sandbox");
    ASSERT_TRUE(QFile::copy(MPL_SANDBOX_PROGRAM, program));
    ASSERT_TRUE(QFile::setPermissions(program, QFileDevice::Permissions(kProgram)));
    ASSERT_TRUE(QFile::setPermissions(m_OpenFolder.path(), QFileDevice::Permissions(0x7755)));
    m_Command = QStringList{"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups", program};
    m_WorkingFolder = m_OpenFolder.path();
}

Outcome Sandbox::Run(const QStringList& aArguments)
{
    QProcess process;
    Start(process, aArguments);
    return WaitForEnd(process);
}

void Sandbox::ExpectRefusal(const QStringList& aArguments, int aStatus, const char* aMessage)
{
    const Outcome outcome = Run(aArguments);
    EXPECT_EQ(outcome.status, aStatus) << aMessage;
    EXPECT_NE(outcome.err.find(aMessage), std::string::npos) << outcome.err;
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
}

Outcome Sandbox::RunScript(const QString& aScript, const QStringList& aOptions)
{
    return Run(aOptions + ShellCommand(aScript));
}

void Sandbox::RequireLifecycleManager()
{
    const Outcome outcome = RunScript("echo $MPL_SANDBOX_LIFECYCLE_MANAGER", {});
    Require(outcome.out == "systemd\n", QString::fromStdString(outcome.err));
}

std::unique_ptr<QProcess> Sandbox::StartScript(const QString& aScript, const QStringList& aOptions)
{
    auto process = std::make_unique<QProcess>();
    Start(*process, aOptions + ShellCommand(aScript));
    WaitForOutput(*process, "\n");
    return process;
}

Outcome Sandbox::WaitForEnd(QProcess& aProcess) const
{
    Outcome outcome;
    if (aProcess.state() != QProcess::NotRunning && !aProcess.waitForFinished(kEndLimitMs)) {
        aProcess.kill();
        aProcess.waitForFinished();
    } else {
        outcome.status = (aProcess.exitStatus() == QProcess::CrashExit ? 128 : 0) + aProcess.exitCode();
    }
    outcome.out = aProcess.readAllStandardOutput().toStdString();
    outcome.err = aProcess.readAllStandardError().toStdString();
    return outcome;
}

std::vector<ProcessEntry> Sandbox::MarkedProcesses() const
{
    const QByteArray mark = (kMark + '=' + m_Environment.value(kMark)).toUtf8();
    std::vector<ProcessEntry> found;
    for (const QString& name : QDir("/proc").entryList(QDir::Dirs)) {
        if (name.toInt() > 0 && ReadFile("/proc/" + name + "/environ").contains(mark)) {
            const QByteArray arguments = ReadFile("/proc/" + name + "/cmdline").replace('\0', ' ');
            found.push_back({name.toInt(), ParentOf(name), arguments.toStdString()});
        }
    }
    return found;
}

void Sandbox::WaitForOutput(QProcess& aProcess, const QByteArray& aPiece)
{
    const auto isThere = [&] { return aProcess.peek(aProcess.bytesAvailable()).contains(aPiece); };
    const auto isOver = [&] {
        aProcess.waitForReadyRead(10);
        return isThere() || aProcess.state() == QProcess::NotRunning;
    };
    EXPECT_TRUE(WaitUntil("the program has printed what it should, or has ended", isOver, kEndLimitMs));
    EXPECT_TRUE(isThere()) << aProcess.readAllStandardError().toStdString();
}

testing::AssertionResult Sandbox::WaitForNoProcess() const
{
    return WaitUntil(
        "no process of the case runs", [this] { return MarkedProcesses().empty(); }, kGoneLimitMs);
}

QStringList Sandbox::SandboxGroups() const
{
    QStringList groups;
    QDirIterator folders("/sys/fs/cgroup", {"mpl-sandbox.*"}, QDir::Dirs, QDirIterator::Subdirectories);
    while (folders.hasNext()) {
        folders.next();
        if (m_SandboxIds.contains(folders.fileName().section('.', 1).section('-', 0, 0).toLongLong())) {
            groups += folders.filePath();
        }
    }
    return groups;
}

} // namespace sandbox
