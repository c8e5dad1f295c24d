"""What is measured: the rows of the table, each with its peers."""
import os
import re
import subprocess
import tempfile

import measure

SERVICE = "com.talvex.DBus.MediaPlayer.MediaSource"
BWRAP = ["bwrap", "--dev-bind", "/", "/", "--tmpfs", "/run", "--unshare-pid", "--unshare-ipc", "--proc", "/proc",
         "--die-with-parent"]
BUS = ["dbus-run-session", "--"]


class Machine:
    """Where the programs lie, and how much is asked of this run."""

    def __init__(self, build, quick):
        self.build = os.path.abspath(build)
        self.root = os.getcwd()
        self.quick = quick

    def bin(self, name):
        return os.path.join(self.build, "bin", name)

    @property
    def sandbox(self):
        return self.bin("mpl-sandbox")

    @property
    def qt(self):
        """The libraries of the Qt that this build is made with, as pkg-config knows them."""
        with open(os.path.join(self.build, "CMakeCache.txt"), encoding="utf-8") as cache:
            version = re.search(r"^MPL_QT_VERSION:\w+=(\d)$", cache.read(), re.M)[1]
        return [f"Qt{version}{part}" for part in ("Core", "DBus", "Test")]

    def times(self, full):
        return 1 if self.quick else full


def programs(machine):
    wrappers = {"processes": [], "discovery": BUS, "calls": BUS, "values": BUS, "persisted_state": [],
                "bring_up": [machine.sandbox, "--no-lifecycle-manager", "--"]}
    for name, wrapper in wrappers.items():
        yield from measure.google_benchmark(machine.bin(f"benchmark_{name}"), wrapper, machine.quick)


def sandboxes(machine):
    return {"ours, no lifecycle manager": [machine.sandbox, "--no-lifecycle-manager", "--"],
            "ours, with a lifecycle manager": [machine.sandbox, "--"],
            "bwrap and dbus-run-session": [*BWRAP, *BUS]}


def starts(machine):
    yield from measure.by_turns("Empty sandbox", {name: [*argv, "true"] for name, argv in sandboxes(machine).items()},
                                machine.times(31))
    yield from measure.parts_by_turns("Empty sandbox", sandboxes(machine), machine.bin("benchmark_moment"),
                                      machine.times(31))
    yield from measure.by_turns("Start of a test program", {
        "ours": [machine.bin("benchmark_load")],
        "Qt and googletest": [machine.bin("benchmark_load_without")]}, machine.times(101))


def mock(machine):
    """A mock service comes up, is asked once and goes."""
    def ask(path, interface, method):
        return f"{machine.bin('benchmark_ask')} {SERVICE}.Disc {path} {interface} {method}"

    def in_session(service, question):
        return [*BUS, "sh", "-c", f"{service} >/dev/null & {question}; status=$?; kill $!; exit $status"]

    disc = "/com/talvex/DBus/MediaPlayer/MediaSource/Disc/1"
    yield from measure.by_turns("A mock service up, asked and down", {
        "ours": [machine.sandbox, "--no-lifecycle-manager", "--", "sh", "-c",
                 f"/opt/talvex/bin/media_source_disc & {ask(disc, SERVICE, 'GetSourceName')}"],
        "python-dbusmock": in_session(f"/usr/bin/python3 -m dbusmock {SERVICE}.Disc /disc {SERVICE}",
                                      ask("/disc", "org.freedesktop.DBus.Peer", "Ping")),
        "a script and a bare service": in_session(f"{machine.bin('benchmark_service')} {SERVICE}.Disc 2",
                                                  ask("/group0/source1", SERVICE, "GetSourceName")),
    }, machine.times(21))


TEST = "\nTEST(Compiled, IsEmpty) { EXPECT_TRUE(QString().isEmpty()); }\n"
TYPICAL = "#include <MPL_MediaSourceTestFixture.h>\n#include <MPL_TestEnvironment.h>\n"
TYPICAL_PEER = "".join(f"#include <{name}>\n" for name in (
    "QDBusAbstractInterface", "QDBusConnection", "QDBusObjectPath", "QDBusPendingReply", "QList", "QMap", "QMutex",
    "QObject", "QString", "QStringList", "QThread", "QVariant", "QWaitCondition", "gtest/gtest.h"))
ALL_PEER = "#include <QtCore>\n#include <QtDBus>\n#include <QtTest>\n#include <gtest/gtest.h>\n"


def public_headers(machine):
    folders = ["technology/media-player/common/include", "technology/media-player/tests/common/include",
               "technology/media-player/dbus/include"]
    names = [name for folder in folders for name in sorted(os.listdir(os.path.join(machine.root, folder)))]
    # Who wants the matchers includes googlemock anyway, which the peer does not.
    return "".join(f"#include <{name}>\n" for name in names if name.endswith(".h") and name != "MPL_TestMatchers.h")


def compile_costs(machine):
    folders = ["common/include", "tests/common/include", "dbus/include", "platform/include"]
    includes = [f"-I{machine.root}/technology/media-player/{folder}" for folder in folders]
    qt = measure.run(["pkg-config", "--cflags", *machine.qt]).split()
    flags = ["-std=c++17", "-O2", "-fPIC", *includes, f"-I{machine.build}/generated/proxies", *qt]
    with tempfile.TemporaryDirectory() as folder:
        for row, ours, peer in (("a typical test", TYPICAL, TYPICAL_PEER),
                                ("all headers", public_headers(machine), ALL_PEER)):
            yield from measure.compiled(row, {"ours": ours + TEST, "Qt and googletest": peer + TEST}, flags,
                                        machine.times(7), folder)


def shard(machine, index, speed):
    return ([machine.sandbox, "--speed", str(speed), "--", machine.bin("benchmark_fixture_shards")],
            {"GTEST_TOTAL_SHARDS": "64", "GTEST_SHARD_INDEX": str(index)})


def shards(machine):
    """A suite of fixtures, spread over sandboxes that run at once."""
    for speed in (20,) if machine.quick else (1, 20, 50):
        for count in (1,) if machine.quick else (1, 2, 4, 8, 16, 32, 64):
            measure.say(f"{count} shards at speed {speed}")
            wall, cpu, failed = measure.side_by_side([shard(machine, index, speed) for index in range(count)])
            if failed and count == 1:
                raise SystemExit("run-benchmarks: benchmark_fixture_shards failed in the sandbox")
            if failed:
                # Too fast for so many: the limits of the tests are then too short in real time.
                measure.say(f"{failed} of {count} failed; left out")
                continue
            yield measure.record("Shards at once, wall time", f"ours, speed {speed}", "s", [wall], count)
            yield measure.record("Shards at once, computing time", f"ours, speed {speed}", "s", [cpu], count)


def speeds(machine):
    """One shard, and how long it takes at which speed."""
    for speed in (100,) if machine.quick else (1, 2, 5, 10, 20, 50, 100):
        measure.say(f"one shard at speed {speed}")
        runs = [measure.side_by_side([shard(machine, 0, speed)]) for _ in range(machine.times(5))]
        walls = [wall for wall, _, failed in runs if not failed]
        if walls:
            yield measure.record("One shard by speed", "ours", "s", walls, speed)


def manager(machine):
    """One shard, and what its lifecycle manager adds to it."""
    program = ["--", machine.bin("benchmark_fixture_shards"), "--gtest_filter=*/0"]
    plain = [machine.sandbox, "--speed", "20"]
    yield from measure.costs_by_turns("One shard at speed 20", {
        "ours, no lifecycle manager": [*plain, "--no-lifecycle-manager", *program],
        "with one": [*plain, *program]}, machine.times(15))


def timeline(machine):
    """The first example, recorded and not, at the speed of this project's own tests and at the machine's."""
    with tempfile.TemporaryDirectory() as folder:
        for speed in ("10",) if machine.quick else ("10", "1"):
            plain = [machine.sandbox, "--speed", speed]
            program = ["--", machine.bin("example_bring_up_stack")]
            yield from measure.costs_by_turns(f"Bring-up at speed {speed}", {
                "ours, with its time line": [*plain, "--timeline", f"{folder}/run.html", *program],
                "without": [*plain, *program]}, machine.times(10))


def crowd(machine):
    """Many short sandboxes, and what they leave behind: each starts a process that would stay and makes files."""
    count = 8 if machine.quick else 200
    measure.say(f"{count} sandboxes, 16 at once")
    script = os.path.join(os.path.dirname(__file__), "crowd")
    left = subprocess.run([script, machine.sandbox, str(count)], capture_output=True, text=True, check=False)
    if left.returncode != 0:
        raise SystemExit(f"run-benchmarks: sandboxes left something behind or failed:\n{left.stdout}{left.stderr}")
    yield measure.record(f"{count} sandboxes, 16 at once", "ours", "s", [float(left.stdout)])


ALL = {"programs": programs, "starts": starts, "mock": mock, "compile": compile_costs, "shards": shards,
       "speeds": speeds, "manager": manager, "timeline": timeline, "crowd": crowd}
