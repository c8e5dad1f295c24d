#!/usr/bin/env python3
"""Makes one JUnit file of many:

    merge_reports.py OUT REPORT…

A report that is missing or can't be read becomes an error in OUT. Prints a line of totals; ends with 1 when anything failed.
"""
import os
import sys
import xml.etree.ElementTree as xml
from pathlib import Path


def suites_of(report):
    """The suites of a JUnit file; one suite with an error when there is none to read."""
    try:
        root = xml.parse(report).getroot()
    except (OSError, xml.ParseError) as problem:
        return [suite_with_error(Path(report).stem, f"there is no report: {problem}")]
    return [root] if root.tag == "testsuite" else list(root.iter("testsuite"))


def suite_with_error(name, message):
    suite = xml.Element("testsuite", name=name)
    case = xml.SubElement(suite, "testcase", classname=name, name="(outside any case)", time="0")
    xml.SubElement(case, "error", message=message)
    return suite


def totals_of(suites):
    """Counted from the cases, as the writers of JUnit files disagree about the attributes."""
    cases = [case for suite in suites for case in suite.iter("testcase")]
    count = {tag: sum(case.find(child) is not None for case in cases)
             for tag, child in (("failures", "failure"), ("errors", "error"), ("skipped", "skipped"))}
    return {"tests": len(cases), **count, "time": round(sum(float(case.get("time") or 0) for case in cases), 3)}


def passed(totals):
    return not totals["failures"] and not totals["errors"]


def write(out, suites):
    """Writes the suites and returns their totals. The file is whole at every moment."""
    totals = totals_of(suites)
    root = xml.Element("testsuites", {key: str(value) for key, value in totals.items()})
    root.extend(suites)
    for suite in suites:
        suite.attrib.update({key: str(value) for key, value in totals_of([suite]).items()})
    beside = Path(f"{out}.part")
    xml.ElementTree(root).write(beside, encoding="UTF-8", xml_declaration=True)
    os.replace(beside, out)
    return totals


def main(out, *reports):
    totals = write(out, [suite for report in reports for suite in suites_of(report)])
    print(f"{out}:", ", ".join(f"{totals[key]} {key}" for key in ("tests", "failures", "errors", "skipped")))
    return 0 if totals["tests"] and passed(totals) else 1


if __name__ == "__main__":
    if len(sys.argv) < 3:
        sys.exit("usage: merge_reports.py OUT REPORT…")
    sys.exit(main(*sys.argv[1:]))
