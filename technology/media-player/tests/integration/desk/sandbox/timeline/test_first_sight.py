"""What the page shows before anything is touched."""
import traces
from page_test import PageTest

CASES_LANE = (30, 56)  # its pixels from top to bottom


class FirstSight(PageTest):
    def test_result_and_reasons_are_on_the_first_screen(self):
        self.show(traces.failed_bring_up())
        self.assertEqual(self.run_script("return document.title"), "Failed: my_test")
        header = self.text("#summary")
        for words in ("Failed", "exit status 1", traces.POST_MORTEM, "FirstTest.NoSourceIsActiveAfterAReset",
                      traces.FAILURE, "2 test cases: 1 failed, 1 skipped"):
            self.assertIn(words, header)
        self.assertLess(self.run_script("return document.getElementById('chart').getBoundingClientRect().top"), 400)
        self.assertEqual(self.run_script("return performance.getEntriesByType('resource').length"), 0)

    def test_failed_case_is_marked_and_a_passed_one_is_not(self):
        for scheme in ("light", "dark"):
            self.show(traces.failed_bring_up(), scheme=scheme)
            self.assertGreater(self.count_pixels("--failed-edge", *CASES_LANE), 500)
            self.show(traces.passed(), scheme=scheme)
            self.assertEqual(self.count_pixels("--failed-edge", *CASES_LANE), 0)
            self.assertGreater(self.count_pixels("--case-fill", *CASES_LANE), 500)

    def test_dark_is_dark(self):
        backgrounds = []
        for scheme in ("light", "dark"):
            self.show(traces.passed(), scheme=scheme)
            backgrounds.append(self.run_script("return getComputedStyle(document.body).backgroundColor"))
            self.assertGreater(self.count_pixels("--paper", 0, 100), 10000)
        self.assertEqual(backgrounds, ["rgb(255, 255, 255)", "rgb(15, 20, 25)"])

    def test_nothing_is_cut_off_on_a_narrow_screen(self):
        self.show(traces.failed_bring_up(), width=400)
        self.assertLessEqual(self.run_script("return document.documentElement.scrollWidth"), 400)

    def test_markup_in_a_run_is_only_text(self):
        name = "</script><script>document.title = 'run'</script><!--<script>"
        self.show(traces.passed(name))
        self.assertEqual(self.run_script("return document.title"), "Passed: my_test")
        self.assertIn(name, [row[4] for row in self.shown_rows()])

    def test_damaged_data_is_told(self):
        self.show_page(self.make_page(b'{"traceEvents": ['))
        self.assertIn("Was the file copied whole?", self.text("[role=alert]"))

    def test_run_of_which_nothing_is_known_is_shown(self):
        self.show(traces.Trace("cut off", "the sandbox was killed: what follows is what was known", cutOff=True))
        self.assertIn("the sandbox was killed", self.text("#summary"))
        self.focus("chart")
        self.press("ARROW_RIGHT", "ARROW_DOWN", "n", "+", "ENTER")
