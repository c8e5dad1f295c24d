// Waits with a time limit, each by the sandbox's faster clock: for the program they are as long as it asked
// for, on the machine they are over sooner.
#include <QElapsedTimer>
#include <QEventLoop>
#include <QMutex>
#include <QProcess>
#include <QSemaphore>
#include <QThread>
#include <QTimer>
#include <QWaitCondition>

#include <gtest/gtest.h>

#include <poll.h>
#include <semaphore.h>
#include <sys/epoll.h>
#include <sys/select.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <chrono>
#include <condition_variable>
#include <csignal>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <thread>

namespace
{

constexpr int kSeconds = 6;
constexpr int kWaitMs = 1000 * kSeconds;
constexpr int kMachineLimitMs = kWaitMs / 2; // a tenth of that on a machine that is idle
constexpr std::chrono::seconds kWaitTime(kSeconds);
constexpr timespec kWait = {kSeconds, 0};
constexpr timeval kWaitMicro = {kSeconds, 0};

qint64 MachineMs()
{
    timespec now{};
    syscall(SYS_clock_gettime, CLOCK_MONOTONIC, &now);
    return now.tv_sec * 1000 + now.tv_nsec / 1000000;
}

/// The moment at which a wait that begins now is over.
const timespec* End(clockid_t aClock)
{
    static thread_local timespec s_End{};
    clock_gettime(aClock, &s_End);
    s_End.tv_sec += kWait.tv_sec;
    return &s_End;
}

struct Wait {
    const char* name;
    std::function<void()> wait;
};

void ExpectShort(const Wait& aWait)
{
    QElapsedTimer timer;
    timer.start();
    const qint64 begin = MachineMs();
    aWait.wait();
    EXPECT_LT(MachineMs() - begin, kMachineLimitMs) << aWait.name;
    EXPECT_GE(timer.elapsed(), kWaitMs - 1) << aWait.name; // of whole milliseconds
}

/// All at once.
void ExpectShort(const std::vector<Wait>& aWaits)
{
    std::vector<std::unique_ptr<QThread>> threads;
    for (const Wait& wait : aWaits) {
        threads.emplace_back(QThread::create([&wait] { ExpectShort(wait); }))->start();
    }
    for (const auto& thread : threads) {
        thread->wait();
    }
}

void WaitInSelect()
{
    timeval limit = kWaitMicro;
    select(0, nullptr, nullptr, nullptr, &limit);
}

void WaitInEpoll()
{
    epoll_event event{};
    const int set = epoll_create1(EPOLL_CLOEXEC);
    epoll_wait(set, &event, 1, kWaitMs);
    close(set);
}

void WaitForTimer(int aFlags, const timespec& aTime)
{
    const int timer = timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC);
    const itimerspec time = {{}, aTime};
    timerfd_settime(timer, aFlags, &time, nullptr);
    quint64 expirations = 0;
    EXPECT_EQ(read(timer, &expirations, sizeof expirations), static_cast<ssize_t>(sizeof expirations));
    close(timer);
}

void WaitForSemaphore()
{
    sem_t semaphore{};
    sem_init(&semaphore, 0, 0);
    sem_timedwait(&semaphore, End(CLOCK_REALTIME));
}

void WaitForSignal()
{
    sigset_t none{};
    sigemptyset(&none);
    sigtimedwait(&none, nullptr, &kWait);
}

template <typename Wait>
void WaitForCondition(Wait aWait)
{
    std::mutex mutex;
    std::condition_variable condition;
    std::unique_lock<std::mutex> lock(mutex);
    aWait(condition, lock);
}

/// Waits for a lock that another thread holds.
template <typename Lock, typename Try>
void WaitForLocked(Try aTry)
{
    Lock lock;
    lock.lock();
    std::thread([&] { EXPECT_FALSE(aTry(lock)); }).join();
    lock.unlock();
}

void WaitForWaitCondition()
{
    QMutex mutex;
    const QMutexLocker lock(&mutex);
    QWaitCondition().wait(&mutex, kWaitMs);
}

void WaitForQTimer()
{
    QEventLoop loop;
    QTimer::singleShot(kWaitMs, Qt::PreciseTimer, &loop, &QEventLoop::quit);
    loop.exec();
}

void WaitForProcess()
{
    QProcess process;
    process.start("sleep", {"1000"});
    EXPECT_FALSE(process.waitForFinished(kWaitMs));
    process.kill();
    process.waitForFinished();
}

void WaitForAlarm()
{
    alarm(kSeconds);
    pause();
}

void WaitForIntervalTimer()
{
    const itimerval timer = {{}, kWaitMicro};
    setitimer(ITIMER_REAL, &timer, nullptr);
    pause();
}

void WaitForPosixTimer()
{
    timer_t timer{};
    const itimerspec time = {{}, kWait};
    timer_create(CLOCK_MONOTONIC, nullptr, &timer);
    timer_settime(timer, 0, &time, nullptr);
    pause();
    timer_delete(timer);
}

} // namespace

TEST(FasterClock, IsThatOfTheSystemsWaits)
{
    ExpectShort({
        {"nanosleep", [] { nanosleep(&kWait, nullptr); }},
        {"clock_nanosleep", [] { clock_nanosleep(CLOCK_MONOTONIC, 0, &kWait, nullptr); }},
        {"clock_nanosleep until",
         [] { clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, End(CLOCK_MONOTONIC), nullptr); }},
        {"usleep", [] { usleep(kWaitMs * 1000); }},
        {"poll", [] { poll(nullptr, 0, kWaitMs); }},
        {"ppoll", [] { ppoll(nullptr, 0, &kWait, nullptr); }},
        {"select", WaitInSelect},
        {"epoll_wait", WaitInEpoll},
        {"timerfd", [] { WaitForTimer(0, kWait); }},
        {"timerfd until", [] { WaitForTimer(TFD_TIMER_ABSTIME, *End(CLOCK_MONOTONIC)); }},
        {"sem_timedwait", WaitForSemaphore},
        {"sigtimedwait", WaitForSignal},
    });
}

TEST(FasterClock, IsThatOfCppsWaits)
{
    const auto untilTheEnd = [](auto& aCondition, auto& aLock) {
        aCondition.wait_until(aLock, std::chrono::system_clock::now() + kWaitTime);
    };
    ExpectShort({
        {"sleep_for", [] { std::this_thread::sleep_for(kWaitTime); }},
        {"condition variable",
         [] { WaitForCondition([](auto& aC, auto& aL) { aC.wait_for(aL, kWaitTime); }); }},
        {"condition variable until", [&] { WaitForCondition(untilTheEnd); }},
        {"timed mutex",
         [] { WaitForLocked<std::timed_mutex>([](auto& aLock) { return aLock.try_lock_for(kWaitTime); }); }},
        {"future", [] { std::promise<void>().get_future().wait_for(kWaitTime); }},
    });
}

TEST(FasterClock, IsThatOfQtsWaits)
{
    ExpectShort({
        {"QThread::msleep", [] { QThread::msleep(kWaitMs); }},
        {"QWaitCondition", WaitForWaitCondition},
        {"QSemaphore", [] { QSemaphore().tryAcquire(1, kWaitMs); }},
        {"QMutex", [] { WaitForLocked<QMutex>([](QMutex& aLock) { return aLock.tryLock(kWaitMs); }); }},
        {"QTimer", WaitForQTimer},
        {"QProcess", WaitForProcess},
    });
}

TEST(FasterClock, IsThatOfAlarms)
{
    std::signal(SIGALRM, [](int) {});
    for (const Wait& wait : {Wait{"alarm", WaitForAlarm}, Wait{"interval timer", WaitForIntervalTimer},
                             Wait{"timer", WaitForPosixTimer}}) {
        ExpectShort(wait);
    }
}
