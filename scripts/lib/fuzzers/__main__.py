"""See scripts/run-fuzzers, which has built the targets."""
import argparse
import os
import sys

import coverage
import fuzzing
import targets


def positive(text):
    if not text.isdigit() or int(text) == 0:
        raise argparse.ArgumentTypeError(f"'{text}' is no whole number above 0")
    return int(text)


def main():
    parser = argparse.ArgumentParser(prog="run-fuzzers", description="Feeds the fuzz targets whatever libFuzzer thinks of.")
    parser.add_argument("--seconds", type=positive, default=60, help="how long each target is fed (default 60)")
    parser.add_argument("--inputs", type=positive, help="how many inputs each target is fed, instead of how long")
    parser.add_argument("--jobs", type=positive, default=os.cpu_count(), help="targets side by side (default: the cores)")
    parser.add_argument("--coverage", action="store_true", help="feed nothing new; tell what the inputs so far reach")
    parser.add_argument("targets", nargs="*", metavar="TARGET", help="default: all of them")
    arguments = parser.parse_args()
    chosen = targets.load("fuzz-coverage" if arguments.coverage else "fuzz", arguments.targets)
    if arguments.coverage:
        return coverage.report(chosen)
    limit = [f"-runs={arguments.inputs}"] if arguments.inputs else [f"-max_total_time={arguments.seconds}"]
    return fuzzing.run(chosen, limit, arguments.jobs)


if __name__ == "__main__":
    sys.exit(main())
