#include "Signals.h"

#include "SeenProcesses.h"

#include <QFile>
#include <QProcess>
#include <QStringList>

#include <csignal>

namespace chaos
{
namespace
{

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

} // namespace

void SignalAll(const QString& aProcess, int aSignal)
{
    for (const int pid : ProcessesOf(aProcess)) {
        kill(pid, aSignal);
    }
}

void SignalBus(int aSignal)
{
    if (const int daemon = TestBusDaemon(); daemon > 0) {
        kill(daemon, aSignal);
    }
}

void StartAnew(const QString& aProcess)
{
    const QVector<int> pids = ProcessesOf(aProcess);
    const QStringList command = pids.isEmpty() ? QStringList() : CommandOf(pids.first());
    if (!command.isEmpty()) {
        SignalAll(aProcess, SIGKILL);
        QProcess::startDetached(command.first(), command.mid(1));
    }
}

} // namespace chaos
