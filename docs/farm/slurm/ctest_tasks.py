"""The tests of a build folder as CTest knows them, dealt out to the tasks of an array job, and what became of them."""
import json
import re
import subprocess
import xml.etree.ElementTree as xml

# Tests with one of these need each other: they stay in one task, where ctest sees to it.
BONDS = {"FIXTURES_SETUP", "FIXTURES_REQUIRED", "FIXTURES_CLEANUP", "DEPENDS", "RESOURCE_LOCK"}


def list_tests(build, selection):
    """The tests that `ctest <selection>` would run, as its JSON has them."""
    listing = subprocess.run(["ctest", "--test-dir", build, "--show-only=json-v1", *selection],
                             stdout=subprocess.PIPE, text=True)
    if listing.returncode != 0:
        raise SystemExit(f"run-build: ctest can't list the tests of {build}")
    return json.loads(listing.stdout)["tests"]


def properties_of(test):
    return {entry["name"]: entry["value"] for entry in test["properties"]}


def deal(tests, size):
    """Names of tests by task. Neighbours are much alike, so they go to different tasks, and all last about as long."""
    properties = {test["name"]: properties_of(test) for test in tests}
    awaited = {name for own in properties.values() for name in own.get("DEPENDS", [])}
    bound = [name for name, own in properties.items() if BONDS & own.keys() or name in awaited]
    free = [name for name in properties if name not in set(bound)]
    count = -(-len(free) // size)
    return [free[task::count] for task in range(count)] + ([bound] if bound else [])


def pattern_of(names):
    """For `ctest -R`."""
    return f"^({'|'.join(map(re.escape, names))})$"


def results_of(folder):
    """What `ctest --output-junit` left of a task, by test; empty when it left nothing."""
    try:
        return {case.get("name"): case for case in xml.parse(folder / "results.xml").iter("testcase")}
    except (OSError, xml.ParseError):
        return {}
