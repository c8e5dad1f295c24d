"""What the tests of the farm share: whether an engine is here, a folder to work in, and what may not be left behind."""
import os
import shutil
import subprocess
import sys
import tempfile
import time
import xml.etree.ElementTree as xml
from contextlib import contextmanager
from pathlib import Path

SKIPPED = 77
docs, build, suite, endings = (Path(argument) for argument in sys.argv[1:5])
os.environ["PATH"] = f"{build}/bin:{os.environ['PATH']}:/usr/sbin"
# The suite's cases are waits: by a quicker clock they are as good.
os.environ["MPL_SANDBOX_SPEED"] = "4"
# The world of the Slurm tests, and what it needs.
SLURM = ([docs / "slurm/one-machine-cluster", "--"],
         {"slurmctld": "slurmctld", "slurmd": "slurmd", "sbatch": "slurm-client", "bwrap": "bubblewrap"})
CASES = {f"Each/FixtureShards.FindTheirSources/{number}" for number in range(10)}
os.environ["GTEST_FILTER"] = "Each/FixtureShards.FindTheirSources/?"


def skip(reason):
    """In CI what is missing is a failure."""
    print(f"skipped: {reason}")
    sys.exit(1 if os.environ.get("CI") == "true" else SKIPPED)


def need(packages_of_programs):
    missing = [package for program, package in packages_of_programs.items() if not shutil.which(program)]
    if missing:
        skip(f"the packages {', '.join(missing)} are not installed (scripts/debian-packages-farm.txt)")


def run_test(test, world, packages_of_programs):
    """Runs a test in a world of its own: `world` is the command that runs another one there. The test's script is called once
    more for it, in an empty folder, which is gone afterwards as all processes are."""
    if sys.argv[-1] == "inside":
        test()
        return
    need(packages_of_programs)
    with work_folder() as folder:
        script = Path(sys.argv[0]).resolve()
        command = [*world, sys.executable, "-B", script, *sys.argv[1:], "inside"]
        sys.stdout.flush()
        status = subprocess.run([str(word) for word in command], cwd=folder).returncode
    sys.exit(status)


def wait_until(claim, happens, seconds):
    deadline = time.monotonic() + seconds
    while not happens():
        assert time.monotonic() < deadline, f"{claim}: not so after {seconds} s"
        time.sleep(0.05)


def text_of(path):
    return path.read_text() if path.exists() else ""


def run(*command, **options):
    print("$", *command, flush=True)
    done = subprocess.run([str(word) for word in command], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, **options)
    print(done.stdout, flush=True)
    return done


def cases_of(report):
    return sorted(f"{case.get('classname')}.{case.get('name')}" for case in xml.parse(report).iter("testcase"))


def expect_all_cases(merged, reports):
    """Merges the shards' reports: each case of the suite is in there once, and passed."""
    assert run(docs / "merge_reports.py", merged, *reports).returncode == 0
    assert cases_of(merged) == sorted(CASES), cases_of(merged)


def processes_with(mark):
    """The processes that have a text in their environment or on their command line."""
    def holds(process):
        try:
            return any(mark.encode() in (process / name).read_bytes() for name in ("environ", "cmdline"))
        except OSError:
            return False
    return [process.name for process in Path("/proc").glob("[0-9]*") if process.name != str(os.getpid()) and holds(process)]


@contextmanager
def work_folder():
    """A folder that all processes of a test name in their environment; none of them may outlive the test."""
    with tempfile.TemporaryDirectory(prefix="farm-test.") as folder:
        os.environ["TMPDIR"] = folder
        yield Path(folder)
        wait_until("nothing is left behind", lambda: not processes_with(folder), 5)
        left = [path for path in Path(folder).glob("slurm-cluster.*")]
        assert not left, f"left behind: {left}"
