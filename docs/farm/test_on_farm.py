"""Spreads a googletest program over the machines of a labgrid farm, one shard per machine.

    pytest --lg-env labgrid-environment.yaml test_on_farm.py
"""

import concurrent.futures
import shlex


def run_shard(target, command, total, index):
    """Runs one shard and returns the name of its machine, its output and its exit status."""
    ssh = target.get_driver("SSHDriver")
    variables = f"GTEST_TOTAL_SHARDS={total} GTEST_SHARD_INDEX={index}"
    output, errors, status = ssh.run(f"{variables} {command}", timeout=1800)
    return target.name, output + errors, status


def test_suite(env):
    names = list(env.config.get_targets())
    # Only the runs go side by side; the connections are opened one after the other.
    targets = [env.get_target(name) for name in names]
    for target in targets:
        target.activate(target.get_driver("SSHDriver"))
    command = " ".join(shlex.quote(word) for word in shlex.split(env.config.get_option("command")))

    with concurrent.futures.ThreadPoolExecutor(len(targets)) as pool:
        runs = [
            pool.submit(run_shard, target, command, len(targets), index)
            for index, target in enumerate(targets)
        ]
        results = [run.result() for run in runs]

    failed = [name for name, _, status in results if status != 0]
    for name, output, _ in results:
        print(f"==== {name}", *output, sep="\n")
    assert not failed, f"shards failed on: {', '.join(failed)}"
