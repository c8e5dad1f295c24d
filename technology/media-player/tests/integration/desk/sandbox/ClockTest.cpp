// Waits with a time limit, each by the sandbox's faster clock: for the program they are as long as it asked
// for, on the machine they are over sooner.
#include <QElapsedTimer>
#include <QEventLoop>
#include <QMutex>
#include <QProcess>
#include <QReadWriteLock>
#include <QSemaphore>
#include <QThread>
#include <QTimer>
#include <QWaitCondition>

#include <gtest/gtest.h>

#include <poll.h>
#include <pthread.h>
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

qint64 MachineMs()
{
    timespec now{};
    syscall(SYS_clock_gettime, CLOCK_MONOTONIC, &now);
    return now.tv_sec * 1000 + now.tv_nsec / 1000000;
}

timespec End(clockid_t aClock)
{
    timespec end{};
    clock_gettime(aClock, &end);
    end.tv_sec += kWait.tv_sec;
    return end;
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

void WaitForTimer(int aFlags, const itimerspec& aTime)
{
    const int timer = timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC);
    timerfd_settime(timer, aFlags, &aTime, nullptr);
    quint64 expirations = 0;
    EXPECT_EQ(read(timer, &expirations, sizeof expirations), static_cast<ssize_t>(sizeof expirations));
    close(timer);
}

/// Waits for a lock that another thread holds.
template <typename Lock, typename Try>
void WaitForLocked(Lock& aLock, Try aTry)
{
    aLock.lock();
    std::thread([&] { EXPECT_FALSE(aTry(aLock)); }).join();
    aLock.unlock();
}

} // namespace

TEST(FasterClock, IsThatOfTheSystemsWaits)
{
    ExpectShort({
        {"nanosleep", [] { nanosleep(&kWait, nullptr); }},
        {"clock_nanosleep", [] { clock_nanosleep(CLOCK_MONOTONIC, 0, &kWait, nullptr); }},
        {"clock_nanosleep until",
         [] {
             const timespec end = End(CLOCK_MONOTONIC);
             clock_nanosleep(CLOCK_MONOTONIC, TIMER_ABSTIME, &end, nullptr);
         }},
        {"usleep", [] { usleep(kWaitMs * 1000); }},
        {"poll", [] { poll(nullptr, 0, kWaitMs); }},
        {"ppoll", [] { ppoll(nullptr, 0, &kWait, nullptr); }},
        {"select",
         [] {
             timeval limit = {kWait.tv_sec, 0};
             select(0, nullptr, nullptr, nullptr, &limit);
         }},
        {"epoll_wait",
         [] {
             epoll_event event{};
             const int set = epoll_create1(EPOLL_CLOEXEC);
             epoll_wait(set, &event, 1, kWaitMs);
             close(set);
         }},
        {"timerfd",
         [] {
             WaitForTimer(0, {{}, kWait});
         }},
        {"timerfd until",
         [] {
             WaitForTimer(TFD_TIMER_ABSTIME, {{}, End(CLOCK_MONOTONIC)});
         }},
        {"sem_timedwait",
         [] {
             sem_t semaphore{};
             sem_init(&semaphore, 0, 0);
             const timespec end = End(CLOCK_REALTIME);
             sem_timedwait(&semaphore, &end);
         }},
        {"sigtimedwait",
         [] {
             sigset_t none{};
             sigemptyset(&none);
             sigtimedwait(&none, nullptr, &kWait);
         }},
    });
}

TEST(FasterClock, IsThatOfCppsWaits)
{
    ExpectShort({
        {"sleep_for", [] { std::this_thread::sleep_for(kWaitTime); }},
        {"condition variable",
         [] {
             std::mutex mutex;
             std::condition_variable condition;
             std::unique_lock<std::mutex> lock(mutex);
             condition.wait_for(lock, kWaitTime);
         }},
        {"condition variable until",
         [] {
             std::mutex mutex;
             std::condition_variable condition;
             std::unique_lock<std::mutex> lock(mutex);
             condition.wait_until(lock, std::chrono::system_clock::now() + kWaitTime);
         }},
        {"timed mutex",
         [] {
             std::timed_mutex mutex;
             WaitForLocked(mutex, [](auto& aLock) { return aLock.try_lock_for(kWaitTime); });
         }},
        {"future", [] { std::promise<void>().get_future().wait_for(kWaitTime); }},
    });
}

TEST(FasterClock, IsThatOfQtsWaits)
{
    ExpectShort({
        {"QThread::msleep", [] { QThread::msleep(kWaitMs); }},
        {"QWaitCondition",
         [] {
             QMutex mutex;
             const QMutexLocker lock(&mutex);
             QWaitCondition().wait(&mutex, kWaitMs);
         }},
        {"QSemaphore", [] { QSemaphore().tryAcquire(1, kWaitMs); }},
        {"QMutex",
         [] {
             QMutex mutex;
             WaitForLocked(mutex, [](auto& aLock) { return aLock.tryLock(kWaitMs); });
         }},
        {"QTimer",
         [] {
             QEventLoop loop;
             QTimer::singleShot(kWaitMs, Qt::PreciseTimer, &loop, &QEventLoop::quit);
             loop.exec();
         }},
        {"QProcess",
         [] {
             QProcess process;
             process.start("sleep", {"1000"});
             EXPECT_FALSE(process.waitForFinished(kWaitMs));
             process.kill();
             process.waitForFinished();
         }},
    });
}

TEST(FasterClock, IsThatOfAlarms)
{
    std::signal(SIGALRM, [](int) {});
    ExpectShort(Wait{"alarm", [] {
                         alarm(kSeconds);
                         pause();
                     }});
    ExpectShort(Wait{"interval timer", [] {
                         const itimerval timer = {{}, {kSeconds, 0}};
                         setitimer(ITIMER_REAL, &timer, nullptr);
                         pause();
                     }});
    ExpectShort(Wait{"timer", [] {
                         timer_t timer{};
                         const itimerspec time = {{}, kWait};
                         timer_create(CLOCK_MONOTONIC, nullptr, &timer);
                         timer_settime(timer, 0, &time, nullptr);
                         pause();
                         timer_delete(timer);
                     }});
}
