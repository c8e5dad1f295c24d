#include "Journal.h"
#include "LogRecorder.h"
#include "ProcessTable.h"
#include "WaitUntil.h"
#include <MPL_ProcessInfo.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <fcntl.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <spawn.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <thread>

namespace
{

using namespace MPL::Doubles;

// Runs `work` on a thread for which a system call fails with the error given.
template <typename Work>
void RunWithout(long aSystemCall, int aError, Work aWork)
{
    std::thread([&] {
        sock_filter program[] = {
            BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<unsigned int>(aSystemCall), 0, 1),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | static_cast<unsigned int>(aError)),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW)};
        const sock_fprog filter{4, program};
        ASSERT_EQ(prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0), 0);
        ASSERT_EQ(prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter), 0);
        aWork();
    }).join();
}

class Processes : public testing::Test
{
protected:
    ~Processes() override
    {
        for (const pid_t pid : m_Children) {
            kill(pid, SIGKILL);
            waitpid(pid, nullptr, 0);
        }
    }

    // A program of that name that does nothing for as long as the test takes; returns its process id.
    pid_t Start(const QByteArray& aName, const char* aSeconds = "20")
    {
        const QString path = Path(aName);
        if (!QFile::exists(path)) {
            EXPECT_TRUE(QFile::copy("/bin/sleep", path));
        }
        return Spawn(path.toLocal8Bit(), aSeconds);
    }

    pid_t Spawn(QByteArray aPath, QByteArray aArgument)
    {
        char* arguments[] = {aPath.data(), aArgument.data(), nullptr};
        pid_t pid = -1;
        EXPECT_EQ(posix_spawn(&pid, aPath.constData(), nullptr, nullptr, arguments, environ), 0);
        m_Children << pid;
        // The program runs (where emulated: will), but the kernel may be a moment from giving it its name
        // and, after that, its arguments.
        siginfo_t info{};
        EXPECT_TRUE(WaitUntil("the program has its arguments", [&] {
            return Content(pid, "cmdline").contains(aPath) || HasEnded(pid, info);
        }));
        return pid;
    }

    // A program of that name that has renamed itself for the kernel by the time this returns.
    pid_t StartRenamed(const QByteArray& aName, const QByteArray& aNewName)
    {
        EXPECT_TRUE(QFile::exists(Path(aName)) || QFile::copy("/bin/sh", Path(aName)));
        const QByteArray steps = WriteScript("steps", "echo " + aNewName + " >/proc/$$/comm");
        const pid_t pid = Spawn(Path(aName).toLocal8Bit(), steps);
        EXPECT_TRUE(WaitUntil("it has its new name",
                              [&] { return Content(pid, "comm").startsWith(aNewName.left(15)); }));
        return pid;
    }

    // A script that waits at the end; returns its path.
    QByteArray WriteScript(const QByteArray& aName, const QByteArray& aText)
    {
        const QByteArray fifo = Path("fifo").toLocal8Bit();
        EXPECT_TRUE(QFile::exists(Path("fifo")) || mkfifo(fifo.constData(), 0600) == 0);
        QFile file(Path(aName));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(aText + "\nread line <'" + fifo + "'\n");
        file.close();
        file.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        return file.fileName().toLocal8Bit();
    }

    static QByteArray Content(pid_t aPid, const char* aFile)
    {
        QFile file(QStringLiteral("/proc/%1/%2").arg(aPid).arg(QLatin1String(aFile)));
        file.open(QIODevice::ReadOnly);
        return file.readAll();
    }

    static bool HasEnded(pid_t aPid, siginfo_t& aInfo)
    {
        return waitid(P_PID, static_cast<id_t>(aPid), &aInfo, WEXITED | WNOWAIT | WNOHANG) == 0 &&
               aInfo.si_pid == aPid;
    }

    // Waits for the child's end and returns the signal that ended it, 0 when none did.
    static int EndOf(pid_t aPid)
    {
        siginfo_t info{};
        EXPECT_TRUE(WaitUntil("the program has ended", [&] { return HasEnded(aPid, info); }));
        return info.si_code == CLD_KILLED ? info.si_status : 0;
    }

    QByteArray With(const char* aSuffix) const { return m_Name + aSuffix; }

    QString Path(const QByteArray& aName) const { return m_Folder.filePath(QString::fromLatin1(aName)); }

    // Unlike any other process of the machine, and longer than the 15 characters that the kernel keeps.
    const QByteArray m_Name = "mpl_media_source_" + QByteArray::number(getpid());
    QTemporaryDir m_Folder;
    QVector<pid_t> m_Children;
    LogRecorder m_Log;
};

TEST_F(Processes, AreKnownByTheirWholeName)
{
    const pid_t disc = Start(With("_disc"));
    EXPECT_EQ(MPL_ProcessInfo::GetPidFromName(m_Name), -1);
    EXPECT_EQ(MPL_ProcessInfo::GetPidFromName(With("_dis")), -1);
    EXPECT_EQ(MPL_ProcessInfo::GetPidFromName(With("_disc")), disc);
    EXPECT_EQ(MPL_ProcessInfo::GetPidFromName(""), -1);
    EXPECT_EQ(MPL_ProcessInfo::GetPidFromName(nullptr), -1);

    // The file may be replaced while the program runs.
    EXPECT_TRUE(QFile::remove(Path(With("_disc"))));
    EXPECT_EQ(MPL_ProcessInfo::GetPidFromName(With("_disc")), disc);

    QFile own("/proc/self/exe");
    EXPECT_FALSE(MPL::Detail::FindProcesses(QFile::symLinkTarget(own.fileName()).section('/', -1).toLatin1())
                     .contains(getpid()))
        << "a test never finds itself";
}

TEST_F(Processes, AreKnownByTheNameTheyWereStartedUnder)
{
    // The interpreter is what runs, with the script behind it or behind its option.
    for (const char* suffix : {"_script", "_script -e"}) {
        const QByteArray script = With(suffix);
        const pid_t running = Spawn(WriteScript(script, "#!/bin/sh" + QByteArray(suffix).mid(7)), "argument");
        EXPECT_EQ(MPL_ProcessInfo::GetPidFromName(script), running);
    }

    ASSERT_TRUE(QFile::link("/bin/sleep", Path(With("_link"))));
    const pid_t linked = Start(With("_link"));
    EXPECT_EQ(MPL_ProcessInfo::GetPidFromName(With("_link")), linked);
}

TEST_F(Processes, AreKnownByTheirFileOnceTheyHaveRenamedThemselves)
{
    const QByteArray newName = "mpl_new_name_" + QByteArray::number(getpid());
    const pid_t renamed = StartRenamed(m_Name, newName);
    EXPECT_EQ(MPL_ProcessInfo::GetPidFromName(m_Name), renamed);
    EXPECT_EQ(MPL_ProcessInfo::GetPidFromName(newName), -1);
    // What the kernel keeps of the new name may be what it keeps of another program's.
    const QByteArray posingName = "mpl_posing_" + QByteArray::number(getpid());
    const pid_t posing = StartRenamed(posingName, With("_disc"));
    EXPECT_EQ(MPL_ProcessInfo::GetPidFromName(With("_disc")), -1);
    EXPECT_EQ(MPL_ProcessInfo::GetPidFromName(posingName), posing);

    const pid_t plain = Spawn(Path(m_Name).toLocal8Bit(), WriteScript("wait", ""));
    EXPECT_TRUE(QFile::remove(Path(m_Name)));
    EXPECT_EQ(MPL_ProcessInfo::GetPidFromName(m_Name), plain);
    EXPECT_TRUE(MPL_ProcessInfo::KillProcess(m_Name, true));
    EXPECT_EQ(EndOf(renamed), SIGKILL);
    EXPECT_EQ(EndOf(plain), SIGKILL);
    EXPECT_EQ(MPL_ProcessInfo::GetPidFromName(posingName), posing);
}

TEST_F(Processes, DontRunAsZombies)
{
    const pid_t pid = Start(m_Name, "0");
    EXPECT_EQ(EndOf(pid), 0);
    EXPECT_EQ(MPL_ProcessInfo::GetPidFromName(m_Name), -1);
    EXPECT_FALSE(MPL_ProcessInfo::KillProcess(m_Name, false));
    EXPECT_EQ(Text(Notes()), "");
}

TEST_F(Processes, AreAllSignalled)
{
    const pid_t first = Start(m_Name);
    const pid_t second = Start(m_Name);
    const pid_t other = Start(With("_disc"));
    EXPECT_TRUE(MPL_ProcessInfo::KillProcess(m_Name, false));
    EXPECT_EQ(EndOf(first), SIGTERM);
    EXPECT_EQ(EndOf(second), SIGTERM);
    EXPECT_TRUE(MPL_ProcessInfo::KillProcess(With("_disc"), true));
    EXPECT_EQ(EndOf(other), SIGKILL);
    EXPECT_EQ(Text(Notes()), "");
}

TEST_F(Processes, AreSignalledOnKernelsWithoutProcessHandles)
{
    const pid_t pid = Start(m_Name);
    RunWithout(SYS_pidfd_open, ENOSYS, [this] { EXPECT_TRUE(MPL_ProcessInfo::KillProcess(m_Name, false)); });
    EXPECT_EQ(EndOf(pid), SIGTERM);
}

TEST_F(Processes, ThatMayNotBeSignalledAreReportedInOneLine)
{
    Start(m_Name);
    Start(m_Name);
    RunWithout(SYS_pidfd_send_signal, EPERM, [this] {
        // What root starts is out of the reach of others, and they can't read where its program lies.
        if (geteuid() == 0) {
            constexpr int kNobody = 65534;
            syscall(SYS_setresuid, kNobody, kNobody, kNobody);
        }
        EXPECT_FALSE(MPL_ProcessInfo::KillProcess(m_Name, true));
        EXPECT_NE(MPL_ProcessInfo::GetPidFromName(m_Name), -1);
    });
    EXPECT_EQ(Notes().size(), 1) << Text(Notes());
    EXPECT_EQ(Notes("critical: MPL_ProcessInfo::KillProcess -- may not signal " + QString::fromLatin1(m_Name))
                  .size(),
              1)
        << Text(Notes());
}

} // namespace
