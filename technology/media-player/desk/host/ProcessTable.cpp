#include "ProcessTable.h"

#include "ProcFolder.h"

#include <QDebug>
#include <QList>

#include <unistd.h>

#include <algorithm>
#include <string>

namespace MPL::Detail
{

namespace
{

using Text = std::string_view;

Text BaseName(Text aPath)
{
    return aPath.substr(aPath.rfind('/') + 1);
}

Text ExecutableName(Text aLink)
{
    // What stands behind the name of a file that was removed since the program started.
    constexpr Text kRemoved = " (deleted)";
    const Text name = BaseName(aLink);
    const std::size_t kept = name.size() - std::min(name.size(), kRemoved.size());
    return name.substr(kept) == kRemoved ? name.substr(0, kept) : name;
}

// Of the name that the kernel started a program under it keeps only this much.
Text ShortForm(Text aName)
{
    return aName.substr(0, 15);
}

bool IsShortFormOf(Text aComm, Text aName)
{
    return !aName.empty() && aComm == ShortForm(aName);
}

// The program's path is the first of its arguments, or stands behind those that an interpreter or emulator
// takes.
std::string NameInArguments(Text aArguments, Text aComm)
{
    const QByteArray arguments(aArguments.data(), static_cast<int>(aArguments.size()));
    for (const QByteArray& argument : arguments.split('\0').mid(0, 3)) {
        const Text name = BaseName({argument.constData(), static_cast<std::size_t>(argument.size())});
        if (IsShortFormOf(aComm, name)) {
            return std::string(name);
        }
    }
    return {};
}

// The processes of one name. Few may be meant, so all are asked what costs little before those are read in
// full.
class LookUp
{
public:
    explicit LookUp(const QByteArray& aName)
        : m_Name(aName.constData(), static_cast<std::size_t>(aName.size())), m_Comm(ShortForm(m_Name))
    {
        m_Comm += '\n';
    }

    std::vector<pid_t> Pids() const { return m_Folder.Pids(); }

    // Whether the kernel's own name for the process is the one looked for, as far as it goes.
    bool RunsAsIt(pid_t aPid) { return m_Folder.Read(aPid, "/comm") == m_Comm; }

    // Whether its file has that name, or did before it was removed. Costs as much again.
    bool RunsItsFile(pid_t aPid)
    {
        return BaseName(m_Folder.ReadLink(aPid, "/exe")).substr(0, m_Name.size()) == m_Name;
    }

    bool IsMeant(pid_t aPid) { return IsAlive(aPid) && NameOf(aPid) == m_Name; }

private:
    bool IsAlive(pid_t aPid)
    {
        // The state stands behind the name in brackets, which may hold brackets itself.
        const Text stat = m_Folder.Read(aPid, "/stat");
        const std::size_t state = stat.rfind(')') + 2;
        return state < stat.size() && stat[state] != 'Z' && stat[state] != 'X';
    }

    std::string NameOf(pid_t aPid)
    {
        std::string comm(m_Folder.Read(aPid, "/comm"));
        comm.resize(comm.size() - std::min<std::size_t>(comm.size(), 1));
        std::string program(ExecutableName(m_Folder.ReadLink(aPid, "/exe")));
        if (IsShortFormOf(comm, program)) {
            return program;
        }
        std::string startedAs = NameInArguments(m_Folder.Read(aPid, "/cmdline"), comm);
        return startedAs.empty() ? program : startedAs;
    }

    ProcFolder m_Folder;
    Text m_Name;
    std::string m_Comm;
};

} // namespace

QVector<pid_t> FindProcesses(const QByteArray& aName, int aMost)
{
    QVector<pid_t> found;
    if (aName.isEmpty()) {
        return found;
    }
    LookUp lookUp(aName);
    const std::vector<pid_t> pids = lookUp.Pids();
    if (pids.empty()) {
        qCritical() << "MPL_ProcessInfo -- can't read the process table: is /proc mounted?";
    }
    const pid_t self = getpid();
    for (const auto mayBeMeant : {&LookUp::RunsAsIt, &LookUp::RunsItsFile}) {
        for (const pid_t pid : pids) {
            if (found.size() < aMost && pid != self && !found.contains(pid) && (lookUp.*mayBeMeant)(pid) &&
                lookUp.IsMeant(pid)) {
                found << pid;
            }
        }
    }
    return found;
}

bool IsProcess(pid_t aPid, const QByteArray& aName)
{
    return LookUp(aName).IsMeant(aPid);
}

} // namespace MPL::Detail
