"""A world of its own, so that what is counted in it is nobody else's; and the counting."""
import os
import pathlib
import subprocess
import sys

INSIDE = "MPL_ENDURANCE_GROUP"
FOLDERS = ("/tmp", "/dev/shm", "/run")


def own_group():
    """The caller's control group as a folder; None on a machine without the unified hierarchy."""
    mount = next((line.split()[4] for line in open("/proc/self/mountinfo") if " - cgroup2 " in line), None)
    name = next((line[3:].strip() for line in open("/proc/self/cgroup") if line.startswith("0::")), None)
    return pathlib.Path(mount + name) if mount and name else None


def enter():
    """Runs this program again with processes, mounts, network, shared memory and a control group of its own. Returns inside
    only; outside, the program ends as the one inside does."""
    if INSIDE in os.environ:
        return
    if os.geteuid() != 0:
        sys.exit("run-endurance: run it as root: it makes a world of its own, in which it becomes another user, too")
    parent = own_group()
    group = parent / f"mpl-endurance-{os.getpid()}" if parent else None
    if group:
        group.mkdir()
    inside = ["unshare", "--mount", "--pid", "--ipc", "--net", "--fork", "--kill-child", "sh", "-c",
              "mount -t proc proc /proc && for d in /tmp /dev/shm /run; do mount -t tmpfs -o mode=1777 tmpfs $d || exit; done;"
              ' [ -z "$0" ] || echo 0 >"$0/cgroup.procs"; exec "$@"', str(group or ""), sys.executable, "-B", *sys.argv]
    status = subprocess.run(inside, env={**os.environ, INSIDE: str(group or "")}).returncode
    if group:
        for folder, _, _ in os.walk(group, topdown=False):
            os.rmdir(folder)
    sys.exit(status)


def group():
    return pathlib.Path(os.environ[INSIDE]) if os.environ[INSIDE] else None


def lines(file):
    return sum(1 for _ in open(file))


def count():
    """How many there are of each thing that a sandbox could leave behind."""
    return {
        "processes": sum(name.isdigit() for name in os.listdir("/proc")),
        "mounts": lines("/proc/self/mountinfo"),
        "control groups": sum(len(folders) for _, folders, _ in os.walk(group())) if group() else 0,
        "sockets": lines("/proc/net/unix"),
        "files": sum(len(files) for folder in FOLDERS for _, _, files in os.walk(folder)),
        "folders": sum(len(folders) for folder in FOLDERS for _, folders, _ in os.walk(folder)),
        "shared memory": sum(lines(f"/proc/sysvipc/{kind}") - 1 for kind in ("shm", "sem", "msg")),
    }
