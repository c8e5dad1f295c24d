"""Tells what of the code that a target is there for its inputs reach."""
import os
import subprocess


def of(target):
    """llvm-cov's report, a line for each file."""
    profile = target.log.with_suffix(".profile")
    subprocess.run([target.program, "-runs=0", target.seeds, target.grown], check=True, stdout=subprocess.DEVNULL,
                   stderr=subprocess.DEVNULL, env={**os.environ, "LLVM_PROFILE_FILE": f"{profile}.raw"})
    subprocess.run(["llvm-profdata", "merge", "-o", profile, f"{profile}.raw"], check=True)
    table = subprocess.run(["llvm-cov", "report", target.program, f"-instr-profile={profile}", "--show-region-summary=false"],
                           check=True, capture_output=True, text=True).stdout.splitlines()
    # llvm-cov knows the files by paths from the build folder on or shorter ones, so only their ends tell.
    names = tuple(f"/{file.parent.name}/{file.name}" for file in target.parsed)
    return "\n".join([table[0], *(line for line in table if f"/{line.split(' ')[0]}".endswith(names))])


def report(targets):
    for target in targets:
        print(f"\n==> {target.name}\n{of(target)}", flush=True)
    return 0
