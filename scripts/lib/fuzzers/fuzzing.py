"""Runs fuzz targets side by side and tells how they get on."""
import os
import re
import subprocess
import time

INTERVAL = 10  # seconds between two reports
# No stacks of what was allocated, no filling of fresh memory and less memory kept back for errors: several times as fast.
# A finding is run again without.
OPTIONS = "malloc_context_size=1:max_malloc_fill_size=0:quarantine_size_mb=1:thread_local_quarantine_size_kb=128"
SHORTEST_LIMIT, LONGEST_LIMIT = 256, 1200  # bytes


class Fuzzing:
    """A target that is being fuzzed."""

    def __init__(self, target, limit):
        self.target = target
        self.known = set(target.findings.iterdir())
        # Anything longer only makes each input slower: no parser here knows lengths.
        longest = max(SHORTEST_LIMIT, *(min(seed.stat().st_size, LONGEST_LIMIT) for seed in target.seeds.iterdir()))
        command = [target.program, *limit, f"-max_len={longest}", "-timeout=10", "-rss_limit_mb=2048", "-print_final_stats=1",
                   f"-dict={target.dictionary}", f"-artifact_prefix={target.findings}/", target.grown, target.seeds]
        with open(target.log, "wb") as log:
            self.process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                                            env={**os.environ, "ASAN_OPTIONS": OPTIONS})
        self.started = time.monotonic()
        self.seconds = 0

    def is_running(self):
        is_running = self.process.poll() is None
        if is_running or self.seconds == 0:
            self.seconds = time.monotonic() - self.started
        return is_running

    def inputs(self):
        log = self.target.log.read_text(errors="replace")
        final = re.findall(r"stat::number_of_executed_units:\s*(\d+)", log)
        return int((final or re.findall(r"^#(\d+)\s", log, re.MULTILINE) or ["0"])[-1])

    def report(self):
        inputs = self.inputs()
        print(f"{self.target.name:18} {inputs:>11,} inputs {inputs / max(self.seconds, 1):>9,.0f}/s "
              f"{len(list(self.target.grown.iterdir())):>6} kept", flush=True)

    def finding(self):
        """What to tell people; empty when the target has ended well."""
        if self.process.returncode == 0:
            return ""
        new = [file for file in self.target.findings.iterdir() if file not in self.known]
        if not new:
            tail = "\n".join(self.target.log.read_text(errors="replace").splitlines()[-5:])
            return f"{self.target.name} ended with {self.process.returncode} and without an input to blame:\n{tail}"
        return "\n".join(f"{self.target.name}: {file}\n  see it again: {self.target.program} {file}\n"
                         f"  keep it as a test: cp it to {self.target.seeds}/ under a name that tells what it is"
                         for file in new)


def run(targets, limit, jobs):
    """Fuzzes all targets, so many at a time. The status to end with."""
    waiting, running, ended = list(targets), [], []
    reported = time.monotonic()
    while waiting or running:
        while waiting and len(running) < jobs:
            running.append(Fuzzing(waiting.pop(0), limit))
        time.sleep(0.2)
        for fuzzing in [fuzzing for fuzzing in running if not fuzzing.is_running()]:
            running.remove(fuzzing)
            ended.append(fuzzing)
        if time.monotonic() - reported > INTERVAL:
            reported = time.monotonic()
            for fuzzing in running:
                fuzzing.report()
    print("\nAt the end:")
    for fuzzing in ended:
        fuzzing.report()
    findings = [fuzzing.finding() for fuzzing in ended if fuzzing.finding()]
    print("\n" + ("\n".join(["Found:", *findings]) if findings else "Nothing was found."))
    return 1 if findings else 0
