"""Machines that are reached over ssh, all on the loopback of a network of the test's own: sshd, each with the processes that
it starts in a process table of their own, so that a machine can be lost."""
import os
import signal
import subprocess
from pathlib import Path

import farm

PACKAGES = {"sshd": "openssh-server", "ssh": "openssh-client", "bwrap": "bubblewrap"}
SSHD = """
ListenAddress 127.0.0.1:{port}
HostKey {folder}/key
AuthorizedKeysFile {folder}/key.pub
PidFile none
StrictModes no
UsePAM no
PermitRootLogin yes
SetEnv "PATH={path}" MPL_SANDBOX_SPEED={speed} GTEST_FILTER={cases}
Subsystem sftp /usr/lib/openssh/sftp-server
"""
SSH = """
Host {name}
    HostName 127.0.0.1
    Port {port}
    IdentityFile {folder}/key
    StrictHostKeyChecking no
    UserKnownHostsFile /dev/null
    LogLevel ERROR
"""


def apart(*options):
    """What runs a command in a process table of its own. Root keeps its rights."""
    rights = ["--cap-add", "ALL"] if os.geteuid() == 0 else []
    return ["bwrap", "--die-with-parent", "--unshare-pid", *options, "--proc", "/proc", *rights]


def world():
    """With a network and a root folder of its own."""
    return apart("--unshare-net", *own_root())


def own_root():
    """What is put into the root folder and where services keep their state is gone with the test."""
    for entry in sorted(Path("/").iterdir()):
        if entry.is_symlink():
            yield from ("--symlink", os.readlink(entry), str(entry))
        elif entry.name not in ("proc", "run"):
            yield from ("--dev-bind", str(entry), str(entry))
    yield from ("--tmpfs", "/run", "--dir", "/run/sshd")
    if Path("/var/lib/lava/dispatcher/tmp").is_dir():
        yield from ("--tmpfs", "/var/lib/lava/dispatcher/tmp")


class Machine:
    """In the current folder are its home folder and its log, and ssh_config, by which it is known under its name."""

    def __init__(self, name, port):
        make_key()
        here = Path.cwd()
        self.name, self.home = name, here / name
        self.home.mkdir()
        with open("ssh_config", "a") as config:
            config.write(SSH.format(name=name, port=port, folder=here))
        configuration = here / f"{name}.sshd"
        configuration.write_text(SSHD.format(port=port, folder=here, path=os.environ["PATH"], cases=os.environ["GTEST_FILTER"],
                                             speed=os.environ["MPL_SANDBOX_SPEED"]))
        users = here / f"{name}.passwd"
        users.write_text(users_with_home(self.home))
        log = Path(f"{name}.log")
        sshd = ["/usr/sbin/sshd", "-D", "-e", "-f", configuration]
        self.process = subprocess.Popen([*apart("--dev-bind", "/", "/", "--ro-bind", users, "/etc/passwd"), *sshd], stderr=log.open("w"))
        farm.wait_until(f"{name} listens", lambda: "listening" in farm.text_of(log), 10)

    def fall_silent(self):
        """As when its power is cut: what runs there does no more, and nobody at the other end is told."""
        for process in Path("/proc").glob("[0-9]*"):
            if is_child_of(process.name, self.process.pid):
                os.kill(int(process.name), signal.SIGSTOP)


def users_with_home(home):
    """The machine's list of users, in which the one who runs this has that home, and a shell that reads no settings."""
    users = [line.split(":") for line in Path("/etc/passwd").read_text().splitlines()]
    return "".join(":".join([*user[:5], str(home), "/bin/sh"] if user[2] == str(os.getuid()) else user) + "\n" for user in users)


def make_key():
    """One for all: the machines' own and the one that opens them."""
    if not Path("key").exists():
        subprocess.check_call(["ssh-keygen", "-q", "-t", "ed25519", "-N", "", "-f", "key"])


def is_child_of(process, ancestor):
    while process not in ("0", str(ancestor)):
        try:
            process = Path(f"/proc/{process}/stat").read_text().rpartition(")")[2].split()[1]
        except OSError:
            return False
    return process == str(ancestor)
