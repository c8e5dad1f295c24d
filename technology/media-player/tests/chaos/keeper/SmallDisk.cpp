#include "SmallDisk.h"

#include <QByteArray>
#include <QFile>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace chaos
{
namespace
{

bool WriteTo(const char* aFile, const QByteArray& aText)
{
    QFile file{QLatin1String(aFile)};
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write(aText) == aText.size();
}

// An ordinary user may mount in a namespace of his own, in which he stays who he is.
bool BecomeMaster()
{
    const QByteArray user = QByteArray::number(geteuid());
    const QByteArray group = QByteArray::number(getegid());
    return unshare(CLONE_NEWUSER | CLONE_NEWNS) == 0 && WriteTo("/proc/self/setgroups", "deny") &&
           WriteTo("/proc/self/uid_map", user + ' ' + user + " 1") &&
           WriteTo("/proc/self/gid_map", group + ' ' + group + " 1");
}

} // namespace

bool MakeSmallDisk()
{
    if (geteuid() != 0 && !BecomeMaster()) {
        std::fprintf(stderr, "chaos: no namespace of its own for a small disk: %s\n", std::strerror(errno));
        return false;
    }
    if (mount("small", "/var/talvex", "tmpfs", 0, "size=1m,mode=1777") == 0) {
        return true;
    }
    std::fprintf(stderr, "chaos: no small disk can be mounted: %s\n", std::strerror(errno));
    return false;
}

} // namespace chaos
