"""An array job of Slurm: submitted, followed, and taken back when nobody waits for it any more."""
import subprocess
import sys
import time

OVER = {"COMPLETED", "FAILED", "TIMEOUT", "CANCELLED", "NODE_FAIL", "PREEMPTED", "BOOT_FAIL", "DEADLINE", "OUT_OF_MEMORY"}
# Why a task waits although nothing is wrong; after a requeue it waits for its start to be allowed again.
ORDINARY = {"None", "Priority", "Resources", "BeginTime", "Prolog"}


class ArrayJob:
    def __init__(self, script, count, options):
        command = ["sbatch", "--parsable", f"--array=0-{count - 1}", "--requeue", *options, str(script)]
        submitted = subprocess.run(command, stdout=subprocess.PIPE, text=True)
        if submitted.returncode != 0:
            raise SystemExit("run-build: sbatch did not take the job")
        self.id = submitted.stdout.strip().split(";")[0]
        self.running = set(range(count))

    def tasks_as_they_end(self, pause=0.5):
        """Yields (task, state). Asks squeue again and again: sbatch --wait takes a requeued task for one that failed."""
        told = None
        while self.running:
            states, waiting = self.ask()
            for task in sorted(self.running):
                state = states.get(task, "ended")
                if state in OVER or task not in states:
                    self.running.discard(task)
                    yield task, state
            if waiting and waiting != told:
                print(f"Waiting: {', '.join(sorted(waiting))}", flush=True)
            told = waiting
            time.sleep(pause if self.running else 0)

    def ask(self):
        """The tasks' states, and what keeps any from starting. Tasks that are over for some minutes are no longer known."""
        command = ["squeue", "--noheader", "--array", "--states=all", f"--jobs={self.id}", "--format=%K|%T|%r"]
        answer = subprocess.run(command, capture_output=True, text=True)
        if answer.returncode != 0 and "Invalid job id" not in answer.stderr:
            print(f"The controller does not answer, asking again: {answer.stderr.strip()}", file=sys.stderr, flush=True)
            return {task: "unknown" for task in self.running}, set()
        lines = [line.split("|") for line in answer.stdout.splitlines()]
        waiting = {reason.strip("()") for _, state, reason in lines if state == "PENDING"} - ORDINARY
        return {int(task): state for task, state, _ in lines}, waiting

    def cancel(self):
        if self.running:
            subprocess.run(["scancel", self.id])
