"""A whole build on a Slurm cluster: a node is declared down while a shard runs there, and a test fails."""
import os
import re
import subprocess
import threading
from pathlib import Path

import farm

HERE = Path(__file__).resolve().parent
RUN_BUILD = farm.docs / "slurm/run-build"


def test():
    configured = farm.run("cmake", "-S", HERE / "build", "-B", "build", f"-DMPL_BUILD={farm.build}", f"-DMPL_SUITE={farm.suite}",
                          f"-DMPL_ADD_TEST={farm.docs.parent.parent}/cmake/MplAddTest.cmake")
    assert configured.returncode == 0
    os.chdir("build")
    refuses_what_it_cannot_run()
    loss = threading.Thread(target=lose_a_node)
    loss.start()
    run = farm.run(RUN_BUILD, "--per-task", "1", ".")
    loss.join()
    check_closing_lines(run)
    check_report()
    assert Path("runs").read_text() == "run\n", "a test that failed was run again"


def refuses_what_it_cannot_run():
    assert farm.run(RUN_BUILD, "/").returncode == 2
    assert farm.run(RUN_BUILD, ".", "-R", "no such test").returncode == 1


def lose_a_node():
    report = Path("test-reports/suite.2.xml")
    farm.wait_until("a shard has run a case", lambda: farm.text_of(report).count("<testcase") > 1, 25)
    node = Path("farm/1/nodes").read_text().strip()
    subprocess.check_call(["scontrol", "update", f"nodename={node}", "state=down", "reason=test"])


def check_closing_lines(run):
    assert run.returncode == 8, run.returncode
    assert "88% tests passed, 1 tests failed out of 8" in run.stdout
    assert re.search(r"The following tests FAILED:\n\s+5 - fails \(always\) \(Failed\)", run.stdout)
    assert re.search(r"The following tests did not run:\n\s+6 - is_skipped \(Skipped\)", run.stdout)
    assert "this is why" in run.stdout
    assert re.search(r"Started again, task 1: n\d lost, then n\d\n", run.stdout)


def check_report():
    cases = farm.cases_of("farm/report.xml")
    others = ["fails (always)", "is_skipped", "makes", "uses"]
    assert cases == sorted([*farm.CASES, *(f"{name}.{name}" for name in others)]), cases


if __name__ == "__main__":
    farm.run_test(test, *farm.SLURM)
