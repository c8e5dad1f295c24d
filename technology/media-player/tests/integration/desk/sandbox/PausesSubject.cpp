// Waits in the ways in which the library does, and prints what it logs and each of its pauses: "pause" with
// the length asked for, and after it "too short" if it was that by the program's own clock, both in
// milliseconds. What is waited for comes in a pause of a certain number, not at a certain time, so that the
// pauses are the same on any machine.
#include "WaitUntil.h"
#include <MPL_ProcessInfo.h>
#include <MPL_TestEnvironment.h>
#include <MPL_TestUtils.h>

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <dlfcn.h>

#include <csignal>
#include <cstdio>
#include <ctime>
#include <functional>

namespace
{

const QString kService = "com.example.Late";

std::function<void()> s_InPause;

// Both of the C library's functions end here, whichever of them Qt sleeps with.
template <typename Sleep>
int Pause(const timespec& aLength, Sleep aSleep)
{
    const qint64 lengthMs = aLength.tv_sec * 1000LL + aLength.tv_nsec / 1000000;
    std::printf("pause %lld\n", lengthMs);
    if (s_InPause) {
        s_InPause();
    }
    QElapsedTimer timer;
    timer.start();
    const int result = aSleep();
    if (timer.elapsed() < lengthMs - 1) { // of whole milliseconds
        std::printf("too short: %lld\n", timer.elapsed());
    }
    return result;
}

/// Runs an action in the pause of that number from now on.
void InPause(int aNumber, std::function<void()> aAction)
{
    s_InPause = [left = aNumber, action = std::move(aAction)]() mutable {
        if (--left == 0) {
            action();
        }
    };
}

void EndStubbornProcess()
{
    const QTemporaryDir folder;
    const QString program = folder.filePath("stubborn");
    QFile::copy("/bin/sleep", program);
    QProcess process;
    process.setStandardOutputFile(QProcess::nullDevice());
    process.start("sh", {"-c", "trap '' TERM; exec " + program + " 1000"});
    const auto runs = [] { return MPL_ProcessInfo::GetPidFromName("stubborn") > 0; };
    std::printf("runs %d\n", static_cast<int>(WaitUntil("it has its name", runs, 100000)));
    InPause(2, [&] {
        process.kill();
        process.waitForFinished();
    });
    std::printf("killed %d\n", static_cast<int>(MPL_TestEnvironment::KillMediaProcess("stubborn")));
}

void WaitForService()
{
    InPause(1, [] { MPL_TestEnvironment::GetDbusConnection().registerService(kService); });
    std::printf("running %d\n", static_cast<int>(MPL_TestEnvironment::WaitForServiceRunning(kService)));
}

void WaitForSignalInVain()
{
    QObject silent;
    const QSignalSpy spy(&silent, &QObject::destroyed);
    std::printf("waited %u\n", MPL::TestUtils::WaitForSignal(spy, 1, 500));
}

template <typename Function>
Function* CLibrary(const char* aName)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, aName));
}

} // namespace

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
extern "C" int nanosleep(const timespec* aLength, timespec* aLeft)
{
    return Pause(*aLength, [&] { return CLibrary<decltype(nanosleep)>("nanosleep")(aLength, aLeft); });
}

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    std::setvbuf(stdout, nullptr, _IOLBF, 0);
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& aText) {
        std::printf("log %s\n", qPrintable(aText));
    });
    EndStubbornProcess();
    WaitForService();
    WaitForSignalInVain();
}
