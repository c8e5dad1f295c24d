#include "Disturbances.h"

#include "ProcessTable.h"
#include <MPL_TestEnvironment.h>

#include <QFile>
#include <QMutexLocker>
#include <QProcess>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QTimer>

#include <unistd.h>

#include <csignal>

namespace chaos
{
namespace
{

const QString kBus = QStringLiteral("the bus");
const QString kDatabase = QStringLiteral("the database");
constexpr int kSlowCycleMs = 1000;
constexpr int kSlowStopMs = 900;

// Returns whether there was one.
bool SignalAll(const QString& aProcess, int aSignal)
{
    const QVector<int> pids = ProcessesOf(aProcess);
    for (const int pid : pids) {
        kill(pid, aSignal);
    }
    return !pids.isEmpty();
}

void SignalBus(int aSignal)
{
    if (const int daemon = TestBusDaemon(); daemon > 0) {
        kill(daemon, aSignal);
    }
}

QStringList CommandOf(int aPid)
{
    QFile file(QStringLiteral("/proc/%1/cmdline").arg(aPid));
    QStringList command;
    if (file.open(QIODevice::ReadOnly)) {
        command = QString::fromUtf8(file.readAll()).split(QLatin1Char('\0'));
        command.removeAll(QString()); // behind the last one
    }
    return command;
}

// As somebody would who looks after it.
bool StartAnew(const QString& aProcess)
{
    const QVector<int> pids = ProcessesOf(aProcess);
    if (pids.isEmpty()) {
        return false;
    }
    const QStringList command = CommandOf(pids.first());
    SignalAll(aProcess, SIGKILL);
    return !command.isEmpty() && QProcess::startDetached(command.first(), command.mid(1));
}

} // namespace

void Disturbances::Arm(const Step& aStep)
{
    QMetaObject::invokeMethod(
        this, [this, aStep] { QTimer::singleShot(aStep.at, this, [this, aStep] { Happen(aStep); }); },
        Qt::QueuedConnection);
}

QStringList Disturbances::TakeDisturbed()
{
    const QMutexLocker lock(&m_Mutex);
    QStringList disturbed = m_Disturbed + m_Lasting;
    m_Disturbed.clear();
    disturbed.removeDuplicates();
    return disturbed;
}

void Disturbances::Release()
{
    SignalBus(SIGCONT);
}

void Disturbances::Happen(const Step& aStep)
{
    switch (aStep.action) {
    case Action::IsKilled:
    case Action::IsStopped:
        if (SignalAll(aStep.object, aStep.action == Action::IsKilled ? SIGKILL : SIGSTOP)) {
            Note(aStep.object, aStep.action == Action::IsStopped);
        }
        break;
    case Action::IsStartedAnew:
        if (StartAnew(aStep.object)) {
            Note(aStep.object, false);
            Note(aStep.object + kAnew, false);
        }
        break;
    case Action::ProgramIsKilled:
        kill(getpid(), SIGKILL);
        break;
    case Action::BusDies:
        Note(kBus, true);
        SignalBus(SIGKILL);
        break;
    case Action::BusStops:
        StopBus(aStep.milliseconds);
        break;
    case Action::BusIsSlow:
        SlowBus(aStep.milliseconds);
        break;
    default:
        LockDatabase(aStep.milliseconds);
    }
}

void Disturbances::StopBus(int aMilliseconds)
{
    Note(kBus, true);
    SignalBus(SIGSTOP);
    QTimer::singleShot(aMilliseconds, this, [this] {
        SignalBus(SIGCONT);
        NoteEnd(kBus);
    });
}

void Disturbances::SlowBus(int aMilliseconds)
{
    Note(kBus, true);
    SignalBus(SIGSTOP);
    QTimer::singleShot(kSlowStopMs, this, [] { SignalBus(SIGCONT); });
    QTimer::singleShot(kSlowCycleMs, this, [this, left = aMilliseconds - kSlowCycleMs] {
        NoteEnd(kBus);
        if (left > 0) {
            SlowBus(left);
        }
    });
}

void Disturbances::LockDatabase(int aMilliseconds)
{
    if (!QFile::exists(kMPLDataManagerDb)) {
        return;
    }
    Note(kDatabase, true);
    const QString name = QStringLiteral("the lock");
    QSqlDatabase database = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
    database.setDatabaseName(kMPLDataManagerDb);
    database.open();
    QSqlQuery(database).exec(QStringLiteral("BEGIN EXCLUSIVE"));
    QTimer::singleShot(aMilliseconds, this, [this, name] {
        QSqlDatabase::removeDatabase(name); // ends its transaction
        NoteEnd(kDatabase);
    });
}

void Disturbances::Note(const QString& aWhat, bool aLasts)
{
    const QMutexLocker lock(&m_Mutex);
    (aLasts ? m_Lasting : m_Disturbed) << aWhat;
}

void Disturbances::NoteEnd(const QString& aWhat)
{
    const QMutexLocker lock(&m_Mutex);
    m_Lasting.removeOne(aWhat);
    m_Disturbed << aWhat; // whoever works now has felt it
}

} // namespace chaos
