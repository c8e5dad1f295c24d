#include "Disturbances.h"

#include "Observations.h"
#include "SeenProcesses.h"
#include "Signals.h"
#include <MPL_TestEnvironment.h>

#include <QFile>
#include <QMutexLocker>
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
    case Action::IsStartedAnew:
        Strike(aStep);
        break;
    case Action::ProgramIsKilled:
        kill(getpid(), SIGKILL);
        break;
    case Action::BusDies:
        Note({kBus}, true);
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

// Noted before and after, as the suite's thread may ask in between.
void Disturbances::Strike(const Step& aStep)
{
    if (ProcessesOf(aStep.object).isEmpty()) {
        return;
    }
    const bool isStopped = aStep.action == Action::IsStopped;
    const bool isAnew = aStep.action == Action::IsStartedAnew;
    const QStringList struck =
        QStringList{aStep.object} + (isAnew ? QStringList{aStep.object + kAnew} : QStringList());
    Note(struck, isStopped);
    if (isAnew) {
        StartAnew(aStep.object);
    } else {
        SignalAll(aStep.object, isStopped ? SIGSTOP : SIGKILL);
    }
    Note(struck, isStopped);
}

void Disturbances::StopBus(int aMilliseconds)
{
    Note({kBus}, true);
    SignalBus(SIGSTOP);
    QTimer::singleShot(aMilliseconds, this, [this] {
        SignalBus(SIGCONT);
        NoteEnd(kBus);
    });
}

void Disturbances::SlowBus(int aMilliseconds)
{
    Note({kBus}, true);
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
    Note({kDatabase}, true);
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

void Disturbances::Note(const QStringList& aWhat, bool aLasts)
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
