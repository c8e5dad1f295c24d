"""Four shards on a Slurm cluster of four nodes: one node loses its power while a shard runs there."""
import os
import re
import subprocess
import sys
from pathlib import Path

import farm

VICTIM = 2


def main():
    farm.need(**farm.SLURM)
    with farm.work_folder() as folder:
        farm.go_on_inside(folder)
        assert not list(folder.glob("slurm-cluster.*")), "the cluster's folder is left behind"


def run_inside():
    here = Path.cwd()
    job = subprocess.check_output(["sbatch", "--parsable", farm.docs / "slurm/shards.sbatch", farm.subject], text=True).strip()
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
    run_inside() if sys.argv[-1] == "inside" else main()
