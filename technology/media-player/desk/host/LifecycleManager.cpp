#include "LifecycleManager.h"

#include <QDebug>
#include <QMap>
#include <QString>

#include <systemd/sd-bus.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace MPL::Detail
{

namespace
{

using Clock = std::chrono::steady_clock;

constexpr const char* kManager = "org.freedesktop.systemd1";
constexpr const char* kManagerPath = "/org/freedesktop/systemd1";
constexpr const char* kManagerInterface = "org.freedesktop.systemd1.Manager";

// One job of the manager, on a bus connection of its own. Every step sends a message and handles what comes
// in until the answer is there: sd-bus's own blocking calls fail when a signal reaches the thread meanwhile.
class Job
{
public:
    explicit Job(std::chrono::milliseconds aBound) : m_Deadline(Clock::now() + aBound), m_Bound(aBound) {}

    // Every call has had its reply: nothing is left to be sent, and a bus that hangs must not be waited for.
    ~Job()
    {
        sd_bus_message_unref(m_Reply);
        sd_bus_close_unref(m_Bus);
    }

    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;

    bool Run(ServiceJob aJob, const QByteArray& aService)
    {
        return Open() && Listen() && Enqueue(aJob, aService + ".service") && Wait();
    }

    // What went wrong.
    QString Problem() const { return m_Problem; }

private:
    bool Open()
    {
        return Worked(sd_bus_open_system(&m_Bus)) &&
               Process([this] { return sd_bus_is_ready(m_Bus) > 0; }, "the system bus has not answered");
    }

    // Whoever asks for a job is told of its end. To subscribe would also bring each change of each unit, and
    // having to tell that costs the manager and the bus more than the job.
    bool Listen()
    {
        return Worked(sd_bus_match_signal_async(m_Bus, nullptr, kManager, kManagerPath, kManagerInterface,
                                                "JobRemoved", &Job::HandleJobRemoved, nullptr, this));
    }

    bool Enqueue(ServiceJob aJob, const QByteArray& aUnit)
    {
        const bool stop = aJob == ServiceJob::Stop;
        if (!Call(stop ? "StopUnit" : "StartUnit", aUnit.constData())) {
            return false;
        }
        // What the manager doesn't know doesn't run.
        if (stop && sd_bus_message_is_method_error(m_Reply, "org.freedesktop.systemd1.NoSuchUnit") > 0) {
            return true;
        }
        return Accepted() && ReadPath();
    }

    // Calls a method of the manager, with what it takes for a unit when there is one, and waits for the
    // reply.
    bool Call(const char* aMethod, const char* aUnit)
    {
        m_Reply = sd_bus_message_unref(m_Reply);
        return Worked(Send(aMethod, aUnit)) &&
               Process([this] { return m_Reply != nullptr; }, "systemd has not answered");
    }

    int Send(const char* aMethod, const char* aUnit)
    {
        sd_bus_message* call = nullptr;
        int result =
            sd_bus_message_new_method_call(m_Bus, &call, kManager, kManagerPath, kManagerInterface, aMethod);
        if (result >= 0 && aUnit != nullptr) {
            result = sd_bus_message_append(call, "ss", aUnit, "replace");
        }
        if (result >= 0) {
            sd_bus_message_set_auto_start(call, 0);
            result = sd_bus_call_async(m_Bus, nullptr, call, &Job::HandleReply, this, UINT64_MAX);
        }
        sd_bus_message_unref(call);
        return result;
    }

    bool Accepted()
    {
        const sd_bus_error* error = sd_bus_message_get_error(m_Reply);
        if (error == nullptr) {
            return true;
        }
        if (sd_bus_error_has_name(error, SD_BUS_ERROR_SERVICE_UNKNOWN) > 0 ||
            sd_bus_error_has_name(error, SD_BUS_ERROR_NAME_HAS_NO_OWNER) > 0) {
            return Fail(
                QStringLiteral("no systemd on the system bus: run where it is the lifecycle manager"));
        }
        const char* why = error->message != nullptr ? error->message : error->name;
        return Fail(QStringLiteral("systemd refused: %1").arg(QString::fromUtf8(why)));
    }

    bool ReadPath()
    {
        const char* path = nullptr;
        if (sd_bus_message_read(m_Reply, "o", &path) < 0) {
            return Fail(QStringLiteral("systemd's answer names no job"));
        }
        m_Path = path;
        return true;
    }

    bool Wait()
    {
        if (m_Path.isEmpty()) {
            return true; // there was nothing to do
        }
        if (!Process([this] { return m_Ended.contains(m_Path); }, "the job was not done")) {
            return false;
        }
        const QString result = QString::fromUtf8(m_Ended.value(m_Path));
        return result == QLatin1String("done") ||
               Fail(QStringLiteral("systemd ended the job with the result \"%1\"").arg(result));
    }

    // Handles what comes over the bus until `aDone` says so; `aOtherwise` is what to say when it never does.
    template <typename Done>
    bool Process(Done aDone, const char* aOtherwise)
    {
        while (!aDone()) {
            const std::uint64_t left = MicrosecondsLeft();
            int result = sd_bus_process(m_Bus, nullptr);
            if (result == 0 && left == 0) {
                return Fail(
                    QStringLiteral("%1 in %2 ms").arg(QLatin1String(aOtherwise)).arg(m_Bound.count()));
            }
            if (result == 0) {
                result = sd_bus_wait(m_Bus, left);
            }
            if (result != -EINTR && !Worked(result)) {
                return false;
            }
        }
        return true;
    }

    std::uint64_t MicrosecondsLeft() const
    {
        const auto left = std::chrono::duration_cast<std::chrono::microseconds>(m_Deadline - Clock::now());
        return static_cast<std::uint64_t>(std::max<std::int64_t>(left.count(), 0));
    }

    // Whether a call of sd-bus did.
    bool Worked(int aResult)
    {
        return aResult >= 0 || Fail(QStringLiteral("the system bus can't be reached: %1")
                                        .arg(QString::fromLocal8Bit(strerror(-aResult))));
    }

    bool Fail(const QString& aProblem)
    {
        m_Problem = aProblem;
        return false;
    }

    static int HandleReply(sd_bus_message* aMessage, void* aJob, sd_bus_error* /*error*/)
    {
        static_cast<Job*>(aJob)->m_Reply = sd_bus_message_ref(aMessage);
        return 0;
    }

    static int HandleJobRemoved(sd_bus_message* aMessage, void* aJob, sd_bus_error* /*error*/)
    {
        std::uint32_t id = 0;
        const char* path = nullptr;
        const char* unit = nullptr;
        const char* result = nullptr;
        if (sd_bus_message_read(aMessage, "uoss", &id, &path, &unit, &result) >= 0) {
            static_cast<Job*>(aJob)->m_Ended.insert(path, result);
        }
        return 0;
    }

    sd_bus* m_Bus = nullptr;
    Clock::time_point m_Deadline;
    std::chrono::milliseconds m_Bound;
    sd_bus_message* m_Reply = nullptr; // to the last call
    QByteArray m_Path;                 // the job's object path
    // How the manager says that jobs ended: one may end before the reply that names it is here.
    QMap<QByteArray, QByteArray> m_Ended;
    QString m_Problem;
};

} // namespace

bool RunServiceJob(ServiceJob aJob, const QByteArray& aService, std::chrono::milliseconds aBound)
{
    Job job(aBound);
    if (job.Run(aJob, aService)) {
        return true;
    }
    const bool stop = aJob == ServiceJob::Stop;
    qCritical().noquote() << "MPL_ProcessInfo::" % QLatin1String(stop ? "SlmStopService" : "SlmStartService")
                          << "-- can't" << (stop ? "stop" : "start") << aService.constData() << "--"
                          << job.Problem();
    return false;
}

} // namespace MPL::Detail
