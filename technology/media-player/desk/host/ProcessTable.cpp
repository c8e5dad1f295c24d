#include "ProcessTable.h"

#include <QDebug>

#include <libproc2/pids.h>

#include <unistd.h>

#include <array>
#include <memory>

#ifdef __SANITIZE_ADDRESS__
// libproc2 has buffers for each thread and never frees them, so every thread that ends leaves half a
// megabyte. A program's own list takes the place of this one.
extern "C" {
// NOLINTBEGIN(bugprone-reserved-identifier)
__attribute__((weak)) const char* __lsan_default_suppressions()
{
    return "leak:libproc2";
}
__attribute__((weak)) const char* __lsan_default_options()
{
    return "print_suppressions=0";
}
// NOLINTEND(bugprone-reserved-identifier)
}
#endif

namespace MPL::Detail
{

namespace
{

enum Item { kPid, kState, kComm, kExe, kArguments, kItemCount };

struct Unref {
    void operator()(pids_info* aInfo) const { procps_pids_unref(&aInfo); }
};
using PidsInfo = std::unique_ptr<pids_info, Unref>;

PidsInfo OpenTable()
{
    std::array<pids_item, kItemCount> items{PIDS_ID_PID, PIDS_STATE, PIDS_CMD, PIDS_EXE, PIDS_CMDLINE_V};
    pids_info* info = nullptr;
    if (procps_pids_new(&info, items.data(), kItemCount) < 0) {
        return nullptr;
    }
    return PidsInfo(info);
}

QByteArray BaseName(const char* aPath)
{
    const QByteArray text(aPath);
    return text.mid(text.lastIndexOf('/') + 1);
}

QByteArray ExecutableName(const char* aLink)
{
    // What stands behind the name of a file that was removed since the program started.
    const QByteArray removed = QByteArrayLiteral(" (deleted)");
    QByteArray name = BaseName(aLink);
    if (name.endsWith(removed)) {
        name.chop(removed.size());
    }
    // A link that can't be read shows as a dash.
    return name == "-" ? QByteArray() : name;
}

// The kernel keeps only this many bytes of the name that it started a program under.
bool IsShortFormOf(const QByteArray& aShortName, const QByteArray& aName)
{
    constexpr int kKept = 15;
    return !aName.isEmpty() && aName.left(kKept) == aShortName;
}

QByteArray NameOf(const char* aComm, const char* aLink, char* const* aArguments)
{
    QByteArray name = ExecutableName(aLink);
    if (IsShortFormOf(aComm, name)) {
        return name;
    }
    // Started under another name: that is the program's path in its own arguments, or behind those that an
    // interpreter or emulator takes first.
    constexpr int kPlaces = 3;
    for (int i = 0; i < kPlaces && aArguments != nullptr && aArguments[i] != nullptr; ++i) {
        QByteArray candidate = BaseName(aArguments[i]);
        if (IsShortFormOf(aComm, candidate)) {
            return candidate;
        }
    }
    return name;
}

ProcessEntry MakeEntry(const pids_stack* aStack)
{
    const pids_result* items = aStack->head;
    const char state = static_cast<char>(items[kState].result.s_ch);
    ProcessEntry entry;
    entry.pid = items[kPid].result.s_int;
    entry.alive = state != 'Z' && state != 'X';
    entry.name = NameOf(items[kComm].result.str, items[kExe].result.str, items[kArguments].result.strv);
    return entry;
}

} // namespace

QVector<pid_t> FindProcesses(const QByteArray& aName)
{
    const PidsInfo table = OpenTable();
    if (!table) {
        qCritical() << "MPL_ProcessInfo -- can't read the process table: is /proc mounted?";
        return {};
    }
    QVector<pid_t> found;
    while (const pids_stack* stack = procps_pids_get(table.get(), PIDS_FETCH_TASKS_ONLY)) {
        const ProcessEntry entry = MakeEntry(stack);
        // Threads of the kernel have no name.
        if (entry.alive && !aName.isEmpty() && entry.name == aName && entry.pid != getpid()) {
            found << entry.pid;
        }
    }
    return found;
}

bool IsProcess(pid_t aPid, const QByteArray& aName)
{
    const PidsInfo table = OpenTable();
    auto wanted = static_cast<unsigned int>(aPid);
    const pids_fetch* fetched =
        table ? procps_pids_select(table.get(), &wanted, 1, PIDS_SELECT_PID) : nullptr;
    if (fetched == nullptr || fetched->counts->total != 1) {
        return false;
    }
    const ProcessEntry entry = MakeEntry(fetched->stacks[0]);
    return entry.alive && entry.pid == aPid && entry.name == aName;
}

} // namespace MPL::Detail
