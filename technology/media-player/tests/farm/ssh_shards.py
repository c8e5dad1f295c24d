"""Two shards on two machines reached over ssh: one falls silent while a shard runs there."""
import os
import threading
from pathlib import Path

import farm
import machines


def test():
    one, other = machines.Machine("one", 2201), machines.Machine("other", 2202)
    os.environ["PARALLEL_SSH"] = f"ssh -F {Path.cwd()}/ssh_config -o ConnectTimeout=1 -o ServerAliveInterval=1"
    check_failing_program(one)
    check_lost_machine(other)


def check_failing_program(machine):
    Path("fails").write_text("#!/bin/sh\necho run >>../runs\nexit 3\n")
    Path("fails").chmod(0o755)
    Path("machines").write_text(f"1/{machine.name}\n")
    assert farm.run(farm.docs / "ssh/run-shards", "machines", "1", "./fails").returncode == 1
    assert (machine.home / "runs").read_text() == "run\n", "a program that failed was run again"
    assert Path("shard-0.status").read_text() == "3\n"
    assert "</html>" in Path("shard-0.html").read_text(), "no time line of the failure"
    assert not list(machine.home.glob("run-shards.*")), "files are left on the machine"


def check_lost_machine(machine):
    Path("machines").write_text("1/one\n1/other\n")
    loss = threading.Thread(target=lose, args=(machine,))
    loss.start()
    assert farm.run(farm.docs / "ssh/run-shards", "machines", "2", farm.suite).returncode == 0
    loss.join()
    assert not list(Path().glob("shard-*.html")), "time lines of what passed"
    farm.expect_all_cases("again.xml", [f"shard-{shard}.xml" for shard in range(2)])


def lose(machine):
    farm.wait_until("a shard runs there", lambda: any("RUN" in log.read_text() for log in machine.home.glob("run-shards.*/shard-*.log")), 25)
    machine.fall_silent()


if __name__ == "__main__":
    farm.run_test(test, machines.world(), {"parallel": "parallel", "rsync": "rsync", **machines.PACKAGES})
