"""See scripts/run-endurance, which has built what this runs."""
import argparse
import random
import sys

import sandboxes
import world


def positive(text):
    if not text.isdigit() or int(text) == 0:
        raise argparse.ArgumentTypeError(f"'{text}' is no whole number above 0")
    return int(text)


def main():
    parser = argparse.ArgumentParser(prog="run-endurance", description="Starts and kills sandboxes, and counts what is left.")
    parser.add_argument("--count", type=positive, default=1000, help="how many sandboxes (default 1000)")
    parser.add_argument("--jobs", type=positive, default=8, help="how many of them side by side (default 8)")
    parser.add_argument("--seed", type=positive, help="what decides who is killed when (default: another each time)")
    parser.add_argument("--build", required=True, help=argparse.SUPPRESS)
    arguments = parser.parse_args()
    world.enter()
    return sandboxes.run(arguments.build, arguments.count, arguments.jobs, arguments.seed or random.randrange(1, 10**6))


if __name__ == "__main__":
    sys.exit(main())
