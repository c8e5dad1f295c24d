"""Four shards on a Slurm cluster of four nodes: one node loses its power while a shard runs there."""
import os
import re
import subprocess
from pathlib import Path

import farm

VICTIM = 2


def test():
    here = Path.cwd()
    job = subprocess.check_output(["sbatch", "--parsable", farm.docs / "slurm/shards.sbatch", farm.suite], text=True).strip()
    log = here / f"shard-{VICTIM}.log"
    farm.wait_until("the shard has run a case", lambda: "[       OK ]" in farm.text_of(log), 20)
    take_power_from(node_of(f"{job}_{VICTIM}"))
    farm.wait_until("the job has ended", lambda: not subprocess.check_output(["squeue", "--noheader", f"--jobs={job}"]), 50)

    tasks = subprocess.check_output(["scontrol", "show", "job", job], text=True)
    assert re.findall(r"JobState=(\w+)", tasks) == ["COMPLETED"] * 4, tasks
    assert sorted(re.findall(r"Restarts=(\d+)", tasks)) == ["0", "0", "0", "1"], tasks
    assert farm.text_of(log).count("Note: This is test shard") == 2, farm.text_of(log)
    farm.expect_all_cases(here / "report.xml", [here / f"shard-{shard}.xml" for shard in range(4)])


def node_of(task):
    return re.search(r" NodeList=(\w+)", subprocess.check_output(["scontrol", "show", "job", task], text=True))[1]


def take_power_from(node):
    os.kill(int((Path(os.environ["SLURM_CLUSTER"]) / f"{node}.pid").read_text()), 9)


if __name__ == "__main__":
    farm.run_test(test, *farm.SLURM)
