"""Measures, and writes the records, the table and the curves. scripts/run-benchmarks says how to call it."""
import argparse
import datetime
import json
import os
import re
import subprocess
import sys

import measure
import report
import rows

BEGIN, END = "<!-- written by scripts/run-benchmarks -->", "<!-- end -->"


def arguments():
    parser = argparse.ArgumentParser(prog="run-benchmarks", description=__doc__)
    parser.add_argument("parts", nargs="*", metavar="PART", help=f"of {', '.join(rows.ALL)} (all)")
    parser.add_argument("--quick", action="store_true", help="run everything once, shortly; the figures mean nothing")
    parser.add_argument("--docs", action="store_true", help="put the table and the curves into docs/performance.md")
    parser.add_argument("--build", required=True, help=argparse.SUPPRESS)
    chosen = parser.parse_args()
    unknown = set(chosen.parts) - set(rows.ALL)
    if unknown:
        parser.error(f"no such part: {', '.join(sorted(unknown))}; there are {', '.join(rows.ALL)}")
    if chosen.docs and (chosen.parts or chosen.quick):
        parser.error("--docs wants a whole run: neither --quick nor parts")
    return chosen


def measured(parts, machine):
    records = []
    for number, part in enumerate(parts, 1):
        print(f"[{number}/{len(parts)}] {part}", file=sys.stderr, flush=True)
        records += rows.ALL[part](machine)
    return records


def page(records, drawn, command):
    now = datetime.datetime.now().strftime("%Y-%m-%d")
    pictures = "".join(f"\n![{row}](images/{report.picture_name(row)})\n" for row in drawn)
    return f"Measured on {now} on {report.machine()} with `{command}`.\n\n{report.table(records)}{pictures}"


def put_into_docs(text):
    with open("docs/performance.md", encoding="utf-8") as file:
        old = file.read()
    new = re.sub(f"{BEGIN}.*{END}", lambda _: f"{BEGIN}\n{text}{END}", old, flags=re.DOTALL)
    with open("docs/performance.md", "w", encoding="utf-8") as file:
        file.write(new)


def need_sandbox(machine):
    """The skip that ctest knows, or a failure where skipping is none (CI)."""
    tried = subprocess.run([machine.sandbox, "--no-lifecycle-manager", "--", "true"], capture_output=True, text=True)
    if tried.returncode != 0:
        print(tried.stderr, file=sys.stderr)
        sys.exit(1 if os.environ.get("CI") == "true" else 77)


def main():
    chosen = arguments()
    machine = rows.Machine(chosen.build, chosen.quick)
    need_sandbox(machine)
    folder = os.path.join(chosen.build, "benchmarks")
    pictures = "docs/images" if chosen.docs else os.path.join(folder, "images")
    os.makedirs(pictures, exist_ok=True)
    os.makedirs(folder, exist_ok=True)
    records = measured(chosen.parts or list(rows.ALL), machine)
    with open(os.path.join(folder, "results.json"), "w", encoding="utf-8") as file:
        json.dump({"machine": report.machine(), "records": records}, file, indent=1)
    text = page(records, report.curves(records, pictures), " ".join(["scripts/run-benchmarks", *sys.argv[3:]]))
    with open(os.path.join(folder, "table.md"), "w", encoding="utf-8") as file:
        file.write(text)
    if chosen.docs:
        put_into_docs(text)
    print(text)


main()
