"""What became of each test, told as ctest tells it, and as suites of one JUnit file."""
import xml.etree.ElementTree as xml

import merge_reports
from ctest_tasks import results_of

WORDS = {"run": "   Passed", "fail": "***Failed", "notrun": "***Skipped", "disabled": "***Not Run (Disabled)"}


class Summary:
    def __init__(self, build, tests):
        self.numbers = {test["name"]: number for number, test in enumerate(tests, 1)}
        self.width = max(map(len, self.numbers)) + 3
        self.reports = build / "test-reports"
        self.begin = (build / "farm" / "task").stat().st_mtime
        self.suites, self.failed, self.skipped, self.restarts = [], [], [], []
        self.count = 0

    def add_task(self, folder, names, state):
        results = results_of(folder)
        nodes = (folder / "nodes").read_text().split() if (folder / "nodes").exists() else []
        if len(nodes) > 1:
            self.restarts.append(f"task {folder.name}: {' lost, then '.join(nodes)}")
        for name in names:
            if name in results:
                self.add(name, results[name], nodes[-1])
            else:
                self.add_lost(name, f"its task ended as {state} on {nodes[-1] if nodes else 'no node'}, see {folder}/output")

    def add(self, name, case, node):
        status = case.get("status")
        if status == "fail":
            self.failed.append((name, "Failed"))
        elif status != "run":
            self.skipped.append((name, WORDS[status].strip("* ")))
        self.suites += self.suites_of(name, case, status)
        self.print_line(name, f"{WORDS[status]} {float(case.get('time')):7.2f} sec  {node}")
        output = case.findtext("system-out")
        if status == "fail" and output:
            print(output, flush=True)

    def add_lost(self, name, why):
        self.failed.append((name, "Not Run"))
        self.suites.append(merge_reports.suite_with_error(name, why))
        self.print_line(name, f"***Not Run: {why}")

    def suites_of(self, name, case, status):
        """The cases of the googletest report that the test left in this run; without one, the test is the case."""
        report = self.reports / f"{name.replace('/', '.')}.xml"
        suites = []
        if report.exists() and report.stat().st_mtime >= self.begin:
            suites = merge_reports.suites_of(report)
        tells_failure = not merge_reports.passed(merge_reports.totals_of(suites))
        if not suites or (status == "fail" and not tells_failure):
            suite = xml.Element("testsuite", name=name)
            suite.append(case)
            suites.append(suite)
        return suites

    def print_line(self, name, text):
        self.count += 1
        total = len(self.numbers)
        print(f"{self.count:{len(str(total))}}/{total} Test #{self.numbers[name]}: {f'{name} ':.<{self.width}} {text}", flush=True)

    def print_end(self, seconds):
        total = len(self.numbers)
        for restart in self.restarts:
            print(f"Started again, {restart}")
        percent = round(100 * (total - len(self.failed)) / total)
        percent = min(percent, 99) if self.failed else percent
        print(f"\n{percent}% tests passed, {len(self.failed)} tests failed out of {total}")
        print(f"\nTotal Test time (real) = {seconds:6.2f} sec")
        self.print_list("did not run", self.skipped)
        self.print_list("FAILED", self.failed)

    def print_list(self, title, entries):
        if entries:
            print(f"\nThe following tests {title}:")
            for name, why in entries:
                print(f"\t{self.numbers[name]:3} - {name} ({why})")
