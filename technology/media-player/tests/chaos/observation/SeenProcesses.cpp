#include "SeenProcesses.h"

#include "Stack.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace chaos
{
namespace
{

QByteArray ReadProc(int aPid, const char* aFile)
{
    QFile file(QStringLiteral("/proc/%1/%2").arg(aPid).arg(QLatin1String(aFile)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// State and parent, which follow the name in parentheses.
struct Status {
    char state;
    int parent;
};

Status StatusOf(int aPid)
{
    const QByteArray stat = ReadProc(aPid, "stat");
    const QList<QByteArray> fields = stat.mid(stat.lastIndexOf(')') + 2).split(' ');
    return fields.size() > 1 ? Status{fields[0].at(0), fields[1].toInt()} : Status{'Z', 0};
}

QVector<int> AllPids()
{
    QVector<int> pids;
    const QStringList names = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs);
    for (const QString& name : names) {
        if (name.toInt() > 0) {
            pids << name.toInt();
        }
    }
    return pids;
}

QString ExecutableOf(int aPid)
{
    return QFileInfo(QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(aPid))).fileName();
}

} // namespace

QVector<int> ProcessesOf(const QString& aProcess)
{
    QVector<int> found;
    for (const int pid : AllPids()) {
        if (ExecutableOf(pid) == aProcess && StatusOf(pid).state != 'Z') {
            found << pid;
        }
    }
    return found;
}

int TestBusDaemon()
{
    for (const int pid : ProcessesOf(QStringLiteral("dbus-daemon"))) {
        if (ReadProc(pid, "cmdline").contains("mpl-dbus.conf")) {
            return pid;
        }
    }
    return 0;
}

QVector<SeenProcess> StackProcessesNow()
{
    QVector<SeenProcess> found;
    for (const int pid : AllPids()) {
        const QString name = ExecutableOf(pid);
        for (const Program& program : Programs()) {
            if (program.process == name && StatusOf(pid).state != 'Z') {
                found.append({name, pid, ExecutableOf(StatusOf(pid).parent) == QLatin1String("systemd")});
            }
        }
    }
    return found;
}

} // namespace chaos
