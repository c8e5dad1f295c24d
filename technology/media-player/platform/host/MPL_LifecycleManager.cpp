#include "MPL_LifecycleManager.h"

#include <QDebug>
#include <QString>

#include <systemd/sd-bus.h>

#include <cerrno>
#include <cstring>

namespace MPL
{

namespace
{

using Clock = std::chrono::steady_clock;
using std::chrono::microseconds;

constexpr const char* kManager = "org.freedesktop.systemd1";
constexpr const char* kManagerPath = "/org/freedesktop/systemd1";
constexpr const char* kManagerInterface = "org.freedesktop.systemd1.Manager";

// One job of the manager, on a bus connection of its own: signals for it wait in the connection's queue
// while a reply is read, so none is missed, however early it comes.
class Job
{
public:
    explicit Job(std::chrono::milliseconds bound) : m_Deadline(Clock::now() + bound), m_Bound(bound) {}

    // Every call has had its reply: nothing is left to be sent, and a bus that hangs must not be waited for.
    ~Job() { sd_bus_close_unref(m_Bus); }

    Job(const Job&) = delete;
    Job& operator=(const Job&) = delete;

    // Returns an empty text on success, otherwise what went wrong.
    QString Run(ServiceJob job, const QByteArray& service)
    {
        const QByteArray unit = service + ".service";
        QString problem = Listen();
        if (problem.isEmpty()) {
            problem = Enqueue(job, unit);
        }
        if (problem.isEmpty() && !m_Path.isEmpty()) {
            problem = Wait();
        }
        return problem;
    }

private:
    QString Listen()
    {
        const int opened = sd_bus_open_system(&m_Bus);
        if (opened < 0) {
            return Unreachable(opened);
        }
        // Left to itself a call on a new connection waits 90 seconds for a bus that doesn't greet.
        QString problem = Process([this] { return sd_bus_is_ready(m_Bus) > 0; });
        if (!problem.isEmpty()) {
            return problem;
        }
        sd_bus_set_method_call_timeout(m_Bus, Remaining());
        const int matched = sd_bus_match_signal(m_Bus, nullptr, kManager, kManagerPath, kManagerInterface,
                                                "JobRemoved", &Job::HandleJobRemoved, this);
        // The manager sends its signals only while somebody has asked for them.
        return matched < 0 ? Unreachable(matched) : Call("Subscribe", nullptr, nullptr);
    }

    QString Enqueue(ServiceJob job, const QByteArray& unit)
    {
        const bool stop = job == ServiceJob::Stop;
        sd_bus_error error = SD_BUS_ERROR_NULL;
        QString problem = Call(stop ? "StopUnit" : "StartUnit", unit.constData(), &error);
        const bool unknown = sd_bus_error_has_name(&error, "org.freedesktop.systemd1.NoSuchUnit") > 0;
        sd_bus_error_free(&error);
        // What the manager doesn't know doesn't run.
        return stop && unknown ? QString() : problem;
    }

    // Calls a method of the manager; with a unit it is one that answers with the path of the job.
    QString Call(const char* method, const char* unit, sd_bus_error* kept)
    {
        sd_bus_message* call = nullptr;
        sd_bus_message* reply = nullptr;
        sd_bus_error error = SD_BUS_ERROR_NULL;
        int result =
            sd_bus_message_new_method_call(m_Bus, &call, kManager, kManagerPath, kManagerInterface, method);
        if (result >= 0 && unit != nullptr) {
            result = sd_bus_message_append(call, "ss", unit, "replace");
        }
        if (result >= 0) {
            sd_bus_message_set_auto_start(call, 0);
            result = sd_bus_call(m_Bus, call, Remaining(), &error, &reply);
        }
        const char* path = nullptr;
        if (result >= 0 && unit != nullptr) {
            result = sd_bus_message_read(reply, "o", &path);
            m_Path = path;
        }
        QString problem = result < 0 ? Explain(error, result) : QString();
        if (kept != nullptr) {
            sd_bus_error_copy(kept, &error);
        }
        sd_bus_error_free(&error);
        sd_bus_message_unref(call);
        sd_bus_message_unref(reply);
        return problem;
    }

    QString Explain(const sd_bus_error& error, int result) const
    {
        if (sd_bus_error_has_name(&error, SD_BUS_ERROR_SERVICE_UNKNOWN) > 0 ||
            sd_bus_error_has_name(&error, SD_BUS_ERROR_NAME_HAS_NO_OWNER) > 0) {
            return QStringLiteral("no systemd on the system bus: run where it is the lifecycle manager");
        }
        if (result == -ETIMEDOUT) {
            return QStringLiteral("systemd has not answered in %1 ms").arg(m_Bound.count());
        }
        const char* text = error.message != nullptr ? error.message : strerror(-result);
        return QStringLiteral("systemd refused: %1").arg(QString::fromUtf8(text));
    }

    QString Wait()
    {
        QString problem = Process([this] { return !m_Result.isEmpty(); });
        if (!problem.isEmpty() || m_Result == "done") {
            return problem;
        }
        return QStringLiteral("systemd ended the job with the result \"%1\"")
            .arg(QString::fromUtf8(m_Result));
    }

    // Handles what comes over the bus until `done` says so.
    template <typename Done>
    QString Process(Done done)
    {
        while (!done()) {
            int result = sd_bus_process(m_Bus, nullptr);
            if (result == 0) {
                if (Clock::now() >= m_Deadline) {
                    return QStringLiteral("%1 in %2 ms")
                        .arg(QLatin1String(m_Path.isEmpty() ? "the system bus has not answered"
                                                            : "the job was not done"))
                        .arg(m_Bound.count());
                }
                result = sd_bus_wait(m_Bus, Remaining());
            }
            if (result < 0 && result != -EINTR) {
                return Unreachable(result);
            }
        }
        return {};
    }

    static QString Unreachable(int error)
    {
        return QStringLiteral("the system bus can't be reached: %1")
            .arg(QString::fromLocal8Bit(strerror(-error)));
    }

    // In microseconds, as sd-bus counts; never 0, which it takes for its own default.
    std::uint64_t Remaining() const
    {
        const auto left = std::chrono::duration_cast<microseconds>(m_Deadline - Clock::now()).count();
        return left > 0 ? static_cast<std::uint64_t>(left) : 1;
    }

    static int HandleJobRemoved(sd_bus_message* message, void* job, sd_bus_error* /*error*/)
    {
        auto* self = static_cast<Job*>(job);
        std::uint32_t id = 0;
        const char* path = nullptr;
        const char* unit = nullptr;
        const char* result = nullptr;
        if (sd_bus_message_read(message, "uoss", &id, &path, &unit, &result) >= 0 && self->m_Path == path) {
            self->m_Result = result;
        }
        return 0;
    }

    sd_bus* m_Bus = nullptr;
    Clock::time_point m_Deadline;
    std::chrono::milliseconds m_Bound;
    QByteArray m_Path;   // the job's object path
    QByteArray m_Result; // how the manager says it ended
};

} // namespace

bool RunServiceJob(ServiceJob job, const QByteArray& service, std::chrono::milliseconds bound)
{
    const QString problem = Job(bound).Run(job, service);
    if (problem.isEmpty()) {
        return true;
    }
    const bool stop = job == ServiceJob::Stop;
    qCritical().noquote() << "MPL_ProcessInfo::" % QLatin1String(stop ? "SlmStopService" : "SlmStartService")
                          << "-- can't" << (stop ? "stop" : "start") << service.constData() << "--"
                          << problem;
    return false;
}

} // namespace MPL
