"""Traces to try the time line's page with: small runs, planted failures, and as many events as are wanted."""

KINDS = ["case", "pause", "process", "name", "call", "signal", "log"]


class Trace:
    """Collects events; times are in seconds."""

    def __init__(self, result="passed", reason="exit status 0", post_mortem=(), **about):
        self.events = []
        self.about = {
            "command": "build/bin/my_test --gtest_filter=*", "result": result, "resultText": reason,
            "start": "2026-11-23T12:00:00.000", "speed": "10", "clock": "times are those of the sandbox's clock",
            "version": "0.1.0", "postMortem": list(post_mortem), **about}

    def row(self, kind, number, title):
        self._add("M", kind, number, 0, "thread_name", {"name": title})

    def span(self, kind, row, start, end, name, /, **args):
        self._add("X", kind, row, start, name, args, dur=(end - start) * 1e6)

    def point(self, kind, row, time, name, /, **args):
        self._add("i", kind, row, time, name, args, s="t")

    def _add(self, phase, kind, row, time, name, args, **more):
        self.events.append({
            "ph": phase, "pid": KINDS.index(kind) + 1, "tid": row, "ts": time * 1e6, "name": name, "cat": kind,
            "args": args, **more})

    def json(self):
        return {"traceEvents": self.events, "displayTimeUnit": "ms", "otherData": self.about}


MANAGER = "com.talvex.DBus.MediaPlayer.MediaManagerService"
POST_MORTEM = (
    f"media_manager (pid 23) started at 0.41 s, joined the private bus as :1.2 at 0.52 s, never asked for {MANAGER}, "
    'still ran at the end; its last line: "never_own_name: as asked"')
FAILURE = """first_test.cpp:24: Failure
Value of: MPL_TestEnvironment::LaunchMediaManagerProcess()
  Actual: false
Expected: true"""


def failed_bring_up():
    """A media manager that never asks for its name."""
    trace = Trace("failed", "exit status 1", [POST_MORTEM], command="./my_test")
    _add_cases(trace)
    _add_processes(trace)
    _add_traffic(trace)
    _add_waiting(trace)
    return trace


def _add_cases(trace):
    trace.span("case", 1, 0.02, 0.4, "environment: set-up")
    trace.span("case", 1, 0.41, 22.6, "FirstTest.NoSourceIsActiveAfterAReset", state="failed", failure=FAILURE)
    trace.span("case", 1, 22.6, 22.7, "FirstTest.AMediaSourceBecomesActive", state="skipped")
    trace.span("case", 1, 22.7, 24.5, "environment: tear-down")


def _add_processes(trace):
    for number, title in enumerate(["my_test", "dbus-daemon", "mount_service", "media_manager"], 1):
        trace.row("process", number, title)
    trace.span("process", 1, 0, 24.6, "my_test", pid=3, command="./my_test", end="exit status 1", state="failed")
    trace.span("process", 2, 0.1, 24.6, "dbus-daemon", pid=9, end="still ran at the end", state="running")
    trace.span("process", 3, 0.35, 23, "mount_service", pid=17, end="exit status 0", startedBy="my_test (pid 3)")
    trace.span("process", 4, 0.41, 24.2, "media_manager", pid=23, end="signal 9 (Killed)", state="killed",
               killedBy="my_test (pid 3)")


def _add_traffic(trace):
    trace.row("name", 1, "private bus")
    trace.row("call", 1, "private bus")
    trace.span("name", 1, 0.5, 22.9, "com.talvex.DBus.MediaPlayer.MountService", bus="private bus", owner=":1.1",
               process="mount_service (pid 17)")
    trace.span("call", 1, 22.62, 24, "com.talvex.DBus.MediaPlayer.MediaManager.Reset", state="noreply",
               to="media_manager (pid 23)")
    trace.point("signal", 1, 0.5, "org.freedesktop.DBus.NameOwnerChanged", bus="private bus", content=":1.1")


def _add_waiting(trace):
    for number, title in enumerate(["my_test", "mount_service", "media_manager"], 1):
        trace.row("log", number, title)
    for n in range(11):
        time = 0.55 + 2 * n
        trace.span("call", 1, time, time + 0.01, "org.freedesktop.DBus.NameHasOwner", bus="private bus",
                   request=f'"{MANAGER}"', reply="false", to="org.freedesktop.DBus", **{"from": "my_test (pid 3)"})
    for n in range(10):
        time = 0.6 + 2 * n
        trace.span("pause", 1, time, time + 1.99, "2000 ms", asked=2000)
        trace.point("log", 1, time, f'-- Service "{MANAGER}" not running, pausing for 2 seconds..', level="debug")
    trace.point("log", 3, 0.53, "never_own_name: as asked", level="warning", process="media_manager")
    trace.point("log", 1, 22.59, "-- MediaManager process did not start.", level="critical", process="my_test")


def passed(name="Suite.Case"):
    trace = Trace()
    trace.span("case", 1, 0.1, 1.9, name)
    trace.span("process", 1, 0, 2, "my_test", pid=3, end="exit status 0")
    return trace


def many(count):
    """As many events as are wanted, in all lanes, a few of them problems."""
    trace = Trace("failed", "exit status 1")
    for n in range(60):
        failed = {"state": "failed", "failure": FAILURE} if n % 20 == 7 else {}
        trace.span("case", 1, n * 10, n * 10 + 9.5, f"Suite.Case{n}", **failed)
    for n in range(count - 60):
        _add_one_of_many(trace, n, n * 600 / (count - 60))
    return trace


def _add_one_of_many(trace, n, time):
    row = n % 7 + 1
    if n % 3 == 0:
        failed = {"state": "failed", "error": "org.freedesktop.DBus.Error.Failed: no"} if n % 5000 == 0 else {}
        trace.span("call", row, time, time + 0.01, f"com.talvex.Interface.Call{n}", reply="true", **failed)
    elif n % 3 == 1:
        trace.point("signal", row, time, f"com.talvex.Interface.Signal{n}", content=f"number {n}")
    else:
        trace.point("log", row, time, f"line {n} of the log", level="critical" if n % 900 == 2 else "debug")
