"""Many sandboxes, a third of them killed at random moments, half of them an ordinary user's: what is left of them."""
import collections
import os
import random
import shutil
import signal
import subprocess
import tempfile
import time

import world

NOBODY = 65534
PLACE = "/tmp/endurance"  # where everybody can read
PROGRAM = "sleep 1000 & setsid sleep 1000 & dbus-send --system --print-reply --dest=org.freedesktop.DBus / " \
          "org.freedesktop.DBus.ListNames >/dev/null; sleep 0.1"
RECORDS = f"{PLACE}/records"
OPTIONS = ([], [], ["--speed", "10"], ["--record-bus"], ["--no-lifecycle-manager"])


def prepare(build):
    for part in ("bin", "lib", "stack"):
        shutil.copytree(f"{build}/{part}", f"{PLACE}/{part}", symlinks=True)
    os.mkdir(RECORDS)
    os.chmod(RECORDS, 0o1777)
    if world.group():
        # The ordinary user's own, as a service manager gives one to each user.
        users = world.group() / "user"
        users.mkdir()
        for file in (users, users / "cgroup.procs", users / "cgroup.subtree_control", users / "cgroup.threads"):
            os.chown(file, NOBODY, NOBODY)


def start(ordinary, options, said):
    """`said` is a file for what it says: who waits for the end of a pipe hangs with whatever is left of a sandbox."""
    command = [f"{PLACE}/bin/mpl-sandbox", "--stack", f"{PLACE}/stack", *options, "--", "sh", "-c", PROGRAM]
    if ordinary:
        command = ["setpriv", f"--reuid={NOBODY}", f"--regid={NOBODY}", "--clear-groups", *command]
        if world.group():
            command = ["sh", "-c", 'echo 0 >"$0" && exec "$@"', str(world.group() / "user/cgroup.procs"), *command]
    return subprocess.Popen(command, cwd="/", env={**os.environ, "HOME": "/nonexistent"}, stdin=subprocess.DEVNULL,
                            stdout=subprocess.DEVNULL, stderr=said)


def descendants(pid):
    """The process and all that it has started, the youngest first: a cleaner is dead before it could notice."""
    parents = collections.defaultdict(list)
    for name in filter(str.isdigit, os.listdir("/proc")):
        try:
            stat = open(f"/proc/{name}/stat").read()
        except OSError:
            continue
        parents[int(stat.rpartition(")")[2].split()[1])].append(int(name))
    found = [pid]
    for process in found:
        found += parents[process]
    return found[::-1]


def kill(sandbox, everything):
    for pid in descendants(sandbox.pid) if everything else [sandbox.pid]:
        try:
            os.kill(pid, signal.SIGKILL)
        except ProcessLookupError:
            pass


class Sandbox:
    def __init__(self, dice, number):
        self.ordinary = dice.random() < 0.5
        self.options = list(dice.choice(OPTIONS))
        if "--record-bus" in self.options:
            self.options.append(f"{RECORDS}/{number}.pcap")
        self.kill_at = time.monotonic() + dice.uniform(0, 0.5) if dice.random() < 1 / 3 else None
        self.everything = dice.random() < 0.5
        self.killed = False
        self.said = tempfile.TemporaryFile()
        self.process = start(self.ordinary, self.options, self.said)

    def is_over(self):
        if self.kill_at and time.monotonic() >= self.kill_at and self.process.poll() is None:
            kill(self.process, self.everything)
            self.kill_at, self.killed = None, True
        return self.process.poll() is not None

    def problem(self):
        self.said.seek(0)
        said = self.said.read().decode(errors="replace").strip()
        if self.killed or (self.process.returncode == 0 and not said):
            return ""
        return f"{'an ordinary user' if self.ordinary else 'root'} {self.options}: ended with {self.process.returncode} {said}"


def settle(expected):
    """Gives what was killed a moment to go; as the first process of this world, this one is to take note of each end."""
    end = time.monotonic() + 10
    while time.monotonic() < end and world.count()["processes"] > expected["processes"]:
        try:
            while os.waitpid(-1, os.WNOHANG)[0] > 0:
                pass
        except ChildProcessError:
            pass
        time.sleep(0.1)


def table(before, left, after):
    print(f"\n{'':16}{'before':>8}{'left':>8}{'swept':>8}")
    for name, number in before.items():
        print(f"{name:16}{number:>8}{left[name]:>8}{after[name]:>8}")
    print("swept: after one more start of each user")


def run(build, count, jobs, seed):
    dice = random.Random(seed)
    prepare(build)
    before = world.count()
    running, killed, problems, started, told = [], 0, [], 0, time.monotonic()
    while started < count or running:
        if started < count and len(running) < jobs:
            running.append(Sandbox(dice, started))
            started += 1
        for sandbox in [sandbox for sandbox in running if sandbox.is_over()]:
            running.remove(sandbox)
            killed += sandbox.killed
            problems += filter(None, [sandbox.problem()])
        if time.monotonic() - told > 10:
            told = time.monotonic()
            print(f"{started} of {count} sandboxes, {killed} killed, {len(problems)} in trouble", flush=True)
        time.sleep(0.005)
    shutil.rmtree(RECORDS)
    os.mkdir(RECORDS)
    settle(before)
    left = world.count()
    for ordinary in (False, True):
        problems += [f"the last start ended with {status}" for status in [start(ordinary, [], None).wait()] if status != 0]
    settle(before)
    after = world.count()
    print(f"{count} sandboxes (seed {seed}), {killed} killed")
    table(before, left, after)
    for problem in problems:
        print(f"trouble: {problem}")
    return 1 if problems or after != before else 0
