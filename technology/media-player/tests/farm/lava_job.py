"""The LAVA job, run by LAVA's own dispatcher on a machine reached over ssh: cases that end in every way, and a lost machine."""
import json
import os
import re
import subprocess
from pathlib import Path

import farm
import machines

# What a LAVA server makes of its template for machines that are up and reached over ssh.
DEVICE = """
device_type: ssh
hostname: one
constants:
  failure_retry: 1
  boot_retry: 1
  spawn_maxread: "4092"
  default-shell-prompt: "lava-test: # "
  posix: {{lava_test_sh_cmd: /bin/sh, lava_test_results_dir: "/lava-%s", lava_test_shell_file: /lava-environment}}
timeouts: {{actions: {{}}, connections: {{}}}}
actions:
  deploy:
    connections: {{serial: null}}
    methods: {{ssh: {{host: one, user: root, options: ["-F", "{folder}/ssh_config"]}}}}
  boot:
    connections: {{serial: null}}
    methods: {{ssh: null}}
"""


def test():
    machine = machines.Machine("one", 22)
    Path("device.yaml").write_text(DEVICE.format(folder=Path.cwd()))
    Path("dispatcher.yaml").write_text("dispatcher_ip: 127.0.0.1\n")
    check_all_results()
    check_lost_machine(machine)


def check_all_results():
    job = start_job(f"{farm.endings} --gtest_filter=Subject.*:Typed.*:Each/*:-*Hang*")
    output = job.communicate()[0]
    assert results_in(output) == {"Subject.Passes": "pass", "Subject.Fails": "fail", "Subject.IsSkipped": "skip",
                                  "Subject.PrintsAnything": "pass", "Subject.Crashes": "fail", "shard-0": "fail"}, output


def check_lost_machine(machine):
    """A case is told when it ends, before the program does: it is known although the machine is lost then."""
    job = start_job(f"{farm.build}/bin/mpl-sandbox -- {farm.suite}")
    told = ""
    for line in job.stdout:
        told += line
        if "FindTheirSources" in line and '"result": "pass"' in line:
            machine.process.kill()
            break
    told += job.communicate()[0]
    results = results_in(told)
    assert results["Each.FixtureShards.FindTheirSources.0"] == "pass", told
    assert "shard-0" not in results, told
    assert re.search(r'"case": "job", .*"result": "fail"', told), told


def start_job(command):
    from lava_common import schemas
    import yaml
    text = (farm.docs / "lava/job.yaml").read_text()
    text, count = re.subn(r"COMMAND: .*", f"COMMAND: {json.dumps(command)}", text)
    assert count == 1
    text = re.sub(r'SHARDS: .*', 'SHARDS: "1"', text)
    schemas.validate(yaml.safe_load(text))
    Path("job.yaml").write_text(text)
    return subprocess.Popen(["lava-run", "--job-id", "1", "--output-dir", "output", "--device", "device.yaml",
                             "--dispatcher", "dispatcher.yaml", "job.yaml"],
                            stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)


def results_in(output):
    """lava-run ends with 0 also when tests fail: what it tells of the cases is what counts."""
    messages = [json.loads(re.sub(r": ! ", ": ", line)) for line in output.splitlines() if '"lvl": "results"' in line]
    return {message["msg"]["case"]: message["msg"]["result"] for message in messages
            if message["msg"]["definition"].endswith("media-player-tests")}


if __name__ == "__main__":
    if os.geteuid() != 0:
        farm.skip("LAVA's dispatcher runs as root only")
    farm.run_test(test, machines.world(), {"lava-run": "lava-dispatcher", **machines.PACKAGES})
