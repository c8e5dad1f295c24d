"""The fuzz targets as CMake has listed them, and where each keeps what."""
import pathlib
import sys

ROOT = pathlib.Path(__file__).resolve().parents[3]
SOURCES = ROOT / "technology/media-player/tests/fuzz"


class Target:
    def __init__(self, name, preset, parsed):
        self.name = name
        self.program = ROOT / "build" / preset / "fuzz" / f"mpl_fuzz_{name}"
        self.parsed = [ROOT / "build" / preset / file if file.startswith("generated/")
                       else ROOT / "technology/media-player" / file for file in parsed]
        self.seeds = SOURCES / "corpus" / name
        self.dictionary = SOURCES / "dictionaries" / f"{name}.txt"
        # Kept from run to run: each goes on where the last one ended.
        self.grown = ROOT / "build/fuzz/corpus" / name
        self.findings = ROOT / "build/fuzz/findings" / name
        self.log = ROOT / "build/fuzz/logs" / f"{name}.log"
        for folder in (self.grown, self.findings, self.log.parent):
            folder.mkdir(parents=True, exist_ok=True)


def load(preset, names):
    """The targets of these names, all without any; a name that is none ends the program."""
    lines = (ROOT / "build" / preset / "fuzz/targets.txt").read_text().splitlines()
    targets = {line.split()[0]: line.split()[1:] for line in lines}
    for name in names:
        if name not in targets:
            sys.exit(f"run-fuzzers: there is no target {name}; there are {', '.join(sorted(targets))}")
    return [Target(name, preset, parsed) for name, parsed in targets.items() if not names or name in names]
