#include "Program.h"

#include "FaultWords.h"
#include "Log.h"
#include "Object.h"
#include <MPL_Types.h>

#include <QDBusConnectionInterface>
#include <QDBusError>
#include <QSocketNotifier>
#include <QTimer>

#include <sys/resource.h>
#include <sys/signalfd.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>

namespace sim
{
namespace
{

constexpr int kNoBus = 1;
constexpr int kNameTaken = 3;

QString FaultsFile()
{
    return QLatin1String(kFaultsFile);
}

QString TestBusAddress()
{
    return QStringLiteral("unix:path=/var/talvex/media-player/testDbus");
}

sigset_t EndingSignals()
{
    sigset_t ending;
    sigemptyset(&ending);
    sigaddset(&ending, SIGTERM);
    sigaddset(&ending, SIGINT);
    return ending;
}

// Before Qt starts its threads, so that they inherit the mask and the signals arrive at the descriptor.
int& BlockSignalsFirst(int& argc)
{
    const sigset_t ending = EndingSignals();
    sigprocmask(SIG_BLOCK, &ending, nullptr);
    return argc;
}

// It is meant, so nobody needs a core of it.
void Crash()
{
    const rlimit none = {};
    setrlimit(RLIMIT_CORE, &none);
    std::abort();
}

} // namespace

void Program::AddCommonOptions(Options& aOptions)
{
    aOptions.Flag("verbose", "log every call that is served");
    aOptions.Flag("test-dbus", "serve on the private test bus instead of the system bus");
}

Program::Program(int& argc, char** argv, const Options& aOptions)
    : m_Application(BlockSignalsFirst(argc), argv), m_TestBus(aOptions.Has("test-dbus"))
{
    FaultPlan::Load(FaultsFile(), QLatin1String(program_invocation_short_name), m_Faults, m_FaultsError);
    SetVerbose(aOptions.Has("verbose"));
    MPL::RegisterAllMetaTypes();
}

int Program::Run(BusChoice aChoice, const QString& aServiceName, const ExportObjects& aExportObjects)
{
    if (!m_FaultsError.isEmpty()) {
        Log(QStringLiteral("%1 can't be used: %2").arg(FaultsFile(), m_FaultsError));
        return Options::kUsageError;
    }
    WatchSignals();
    ArmEnds();
    QTimer::singleShot(m_Faults.startDelayMs, this, [=] {
        if (!Start(aChoice, aServiceName, aExportObjects)) {
            QCoreApplication::exit(m_Status);
        }
    });
    const int status = QCoreApplication::exec();
    for (QDBusConnection& bus : m_Buses) {
        QDBusConnection::disconnectFromBus(bus.name());
    }
    return status;
}

void Program::WatchSignals()
{
    sigset_t ending = EndingSignals();
    if (m_Faults.ignoreSigterm) {
        sigdelset(&ending, SIGTERM); // it stays blocked, and nobody reads it
    }
    const int descriptor = signalfd(-1, &ending, SFD_CLOEXEC);
    auto* notifier = new QSocketNotifier(descriptor, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [] { QCoreApplication::exit(0); });
}

void Program::ArmEnds() const
{
    if (m_Faults.crashAfterMs) {
        QTimer::singleShot(*m_Faults.crashAfterMs, this, Crash);
    }
    if (m_Faults.hangAfterMs) {
        // The signals that would end it are blocked, and from here on nobody reads them.
        QTimer::singleShot(*m_Faults.hangAfterMs, this, [] {
            while (true) {
                ::pause();
            }
        });
    }
}

bool Program::Start(BusChoice aChoice, const QString& aServiceName, const ExportObjects& aExportObjects)
{
    m_Status = kNoBus;
    if (!Connect(aChoice)) {
        return false;
    }
    for (QDBusConnection& bus : m_Buses) {
        if (!aExportObjects(bus)) {
            Log(QStringLiteral("the objects can't be exported on %1").arg(bus.name()));
            return false;
        }
        if (!aServiceName.isEmpty() && !m_Faults.neverOwnName && !OwnName(bus, aServiceName)) {
            return false;
        }
    }
    return true;
}

bool Program::Connect(BusChoice aChoice)
{
    if (aChoice == BusChoice::None) {
        return true;
    }
    const bool both = aChoice == BusChoice::WhateverRuns;
    QStringList failures;
    if (both || m_TestBus) {
        TakeIn(QDBusConnection::connectToBus(TestBusAddress(), QStringLiteral("the test bus")),
               TestBusAddress(), failures);
    }
    if (both || !m_TestBus) {
        TakeIn(QDBusConnection::systemBus(), QStringLiteral("the system bus"), failures);
    }
    if (m_Buses.isEmpty()) {
        Log(QStringLiteral("can't connect to ") + failures.join(QStringLiteral(", nor to ")));
    }
    return !m_Buses.isEmpty();
}

void Program::TakeIn(const QDBusConnection& aBus, const QString& aAddress, QStringList& aFailures)
{
    if (!aBus.isConnected()) {
        aFailures.append(QStringLiteral("%1 (%2)").arg(aAddress, aBus.lastError().message()));
        return;
    }
    m_Buses.append(aBus);
    m_Buses.last().connect(QString(), QStringLiteral("/org/freedesktop/DBus/Local"),
                           QStringLiteral("org.freedesktop.DBus.Local"), QStringLiteral("Disconnected"), this,
                           SLOT(BusLost()));
}

bool Program::OwnName(QDBusConnection& aBus, const QString& aServiceName)
{
    // A service that waits in the queue for a name would look alive and never be heard.
    const QDBusReply<QDBusConnectionInterface::RegisterServiceReply> reply =
        aBus.interface()->registerService(aServiceName, QDBusConnectionInterface::DontQueueService);
    if (reply.isValid() && reply.value() == QDBusConnectionInterface::ServiceRegistered) {
        return true;
    }
    m_Status = reply.isValid() ? kNameTaken : kNoBus;
    const QString reason = reply.isValid() ? QStringLiteral("another process owns it; stop that one first")
                                           : reply.error().message();
    Log(QStringLiteral("can't own %1: %2").arg(aServiceName, reason));
    return false;
}

void Program::BusLost()
{
    Log(QStringLiteral("the bus is gone"));
    QCoreApplication::exit(kNoBus);
}

} // namespace sim
