"""Runs what is measured: benchmark programs, whole commands by turns, and commands side by side. Every function yields
records: the values of one contender in one row of the table, at one size when the row has sizes."""
import json
import os
import re
import subprocess
import sys
import time


def say(text):
    print(f"    {text}", file=sys.stderr, flush=True)


def record(row, contender, unit, values, size=None):
    return {"row": row, "contender": contender, "size": size, "unit": unit, "values": values}


def run(argv, **options):
    """Runs a command to its end; a failure ends the whole run, with what the command said."""
    done = subprocess.run(argv, stdin=subprocess.DEVNULL, capture_output=True, text=True, **options)
    if done.returncode != 0:
        sys.exit(f"run-benchmarks: failed with status {done.returncode}: {' '.join(argv)}\n{done.stderr}")
    return done.stdout


def timed(argv):
    begin = time.monotonic()
    run(argv)
    return time.monotonic() - begin


def size_of(parts):
    return next((int(part) for part in parts[2:] if part.isdigit()), None)


def title_of(parts):
    words = [part for part in parts[2:] if not part.isdigit() and not part.endswith("_time")]
    return ", ".join([parts[0], *words])


def sizes(program, wrapper):
    """The sizes that a program knows, each with the pattern that selects it."""
    names = run([*wrapper, program, "--benchmark_list_tests"]).splitlines()
    known = {size_of(name.split("/")) for name in names if "/" in name}
    return [(None, ".")] if known == {None} else [(size, f"/{size}(/|$)") for size in sorted(known)]


def google_benchmark(program, wrapper, quick):
    """All contenders of a program, by turns; one size after the other."""
    chosen = sizes(program, wrapper)[: 1 if quick else None]
    for size, pattern in chosen:
        say(f"{os.path.basename(program)} {'' if size is None else size}")
        short = ["--benchmark_repetitions=1", "--benchmark_min_time=0.01"] if quick else []
        argv = [*wrapper, program, f"--benchmark_filter={pattern}", "--benchmark_format=json", *short]
        yield from from_report(json.loads(run(argv)))


def from_report(report):
    values = {}
    for entry in report["benchmarks"]:
        if entry.get("error_occurred"):
            sys.exit(f"run-benchmarks: {entry['name']}: {entry['error_message']}")
        if entry["run_type"] == "iteration":
            parts = entry["run_name"].split("/")
            key = (title_of(parts), parts[1], entry["time_unit"].replace("us", "µs"), size_of(parts))
            values.setdefault(key, []).append(entry["real_time"])
    for (row, contender, unit, size), found in sorted(values.items()):
        yield record(row, contender, unit, found, size)


def by_turns(row, contenders, times):
    """Whole commands, one after the other and all over again, so that what else the machine does falls on all."""
    say(row)
    values = {name: [] for name in contenders}
    for _ in range(times):
        for name, argv in contenders.items():
            values[name].append(timed(argv) * 1000)
    return [record(row, name, "ms", found) for name, found in values.items()]


class Group:
    """A control group that counts the computing time of all that runs in it, whoever waits for its end."""

    def __init__(self):
        self.folder = None

    def __enter__(self):
        with open("/proc/self/mountinfo", encoding="utf-8") as mounts:
            places = [line.split()[4] for line in mounts if " - cgroup2 " in line]
        with open("/proc/self/cgroup", encoding="utf-8") as groups:
            own = next((line[3:].strip().lstrip("/") for line in groups if line.startswith("0::")), "")
        try:
            self.folder = os.path.join(places[0], own, f"benchmark-{os.getpid()}")
            os.mkdir(self.folder)
        except (IndexError, OSError):
            sys.exit("run-benchmarks: computing time needs a control group that this user may write: run as root")
        return self

    def __exit__(self, *_):
        os.rmdir(self.folder)

    def members(self):
        with open(os.path.join(self.folder, "cgroup.procs"), encoding="ascii") as members:
            return members.read()

    def enter(self):
        with open(os.path.join(self.folder, "cgroup.procs"), "w", encoding="ascii") as members:
            members.write("0")

    def seconds(self):
        """Once all of it has ended: some commands return before what they started has."""
        while self.members():
            time.sleep(0.001)
        with open(os.path.join(self.folder, "cpu.stat"), encoding="ascii") as stat:
            return int(stat.readline().split()[1]) / 1e6


def parts_by_turns(row, contenders, moment, times):
    """Whole commands around a program that says when it runs: until then, from then on, and computing time in all."""
    say(row)
    values = {name: {"start": [], "end": [], "computing time": []} for name in contenders}
    with Group() as group:
        for name, argv in [*contenders.items()] * times:
            busy, begin = group.seconds(), time.monotonic()
            told = float(run([*argv, moment], preexec_fn=group.enter))
            end = time.monotonic()
            for part, seconds in (("start", told - begin), ("end", end - told),
                                  ("computing time", group.seconds() - busy)):
                values[name][part].append(seconds * 1000)
    return [record(f"{row}, {part}", name, "ms", found)
            for name, parts in values.items() for part, found in parts.items()]


def costs_by_turns(row, contenders, times):
    """Whole commands as by_turns runs them: how long each takes, and the computing time of all that runs for it."""
    say(row)
    values = {name: {"wall time": [], "computing time": []} for name in contenders}
    with Group() as group:
        for name, argv in [*contenders.items()] * times:
            busy, begin = group.seconds(), time.monotonic()
            run(argv, preexec_fn=group.enter)
            values[name]["wall time"].append((time.monotonic() - begin) * 1000)
            values[name]["computing time"].append((group.seconds() - busy) * 1000)
    return [record(f"{row}, {part}", name, "ms", found)
            for name, parts in values.items() for part, found in parts.items()]


def busy_seconds():
    """What all cores together have computed since the machine started, but for waiting."""
    with open("/proc/stat", encoding="ascii") as stat:
        user, nice, system, idle, iowait, irq, softirq = map(int, stat.readline().split()[1:8])
    return (user + nice + system + irq + softirq) / os.sysconf("SC_CLK_TCK")


def side_by_side(argvs):
    """Wall time, computing time and how many failed, of commands that run at once; each with its own environment."""
    begin, busy = time.monotonic(), busy_seconds()
    running = [subprocess.Popen(argv, env={**os.environ, **env}, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                                stderr=subprocess.DEVNULL) for argv, env in argvs]
    failed = sum(process.wait() != 0 for process in running)
    return time.monotonic() - begin, busy_seconds() - busy, failed


def compiled(row, contenders, flags, times, folder):
    """How long a source takes to compile, and how large its object file gets."""
    say(row)
    values = {name: [] for name in contenders}
    for name, text in contenders.items():
        with open(source(folder, name), "w", encoding="utf-8") as file:
            file.write(text)
    for _ in range(times):
        for name in contenders:
            argv = ["c++", *flags, "-c", source(folder, name), "-o", source(folder, name) + ".o"]
            values[name].append(timed(argv))
    for name, found in values.items():
        yield record(f"Compile time, {row}", name, "s", found)
        yield record(f"Object file, {row}", name, "KB", [os.path.getsize(source(folder, name) + ".o") / 1024])


def source(folder, name):
    return os.path.join(folder, re.sub(r"\W", "_", name) + ".cpp")
