"""Details, filter, table and print."""
import traces
from page_test import PageTest


class LookingCloser(PageTest):
    def test_keyboard_shows_details(self):
        self.show(traces.failed_bring_up())
        self.focus("whole-run")
        self.press("TAB")
        self.assertIn("Expected: true", self.text("#card"))
        self.assertIn("NoSourceIsActiveAfterAReset. failed. Test cases", self.text("#spoken"))
        self.press("ARROW_RIGHT")
        self.assertIn("AMediaSourceBecomesActive", self.text("#card"))
        self.press("n", "ENTER")
        self.assertIn("MediaManager.Reset", self.run_script("return document.activeElement.cells[4].textContent"))

    def test_table_shows_details_too(self):
        self.show(traces.passed())
        self.focus("whole-run")
        self.press("TAB", "ENTER")
        self.act("")
        self.assertIn("my_test", self.text("tr:focus"))
        self.assertIn("exit status 0", self.text("#card"))
        self.assertFalse(self.run_script("return document.getElementById('card').hidden"))

    def test_suspects_are_named_and_lead_to_the_time_line(self):
        self.show(traces.failed_bring_up())
        suspects = self.run_script("return [...document.querySelectorAll('.suspects li')].map((item) => item.innerText)")
        self.assertEqual(suspects, [
            "22.590 s -- MediaManager process did not start.",
            "22.620 s Reset to media_manager (pid 23) waited 1.38 s: no answer",
            "24.200 s media_manager (pid 23): killed by my_test (pid 3)"])
        self.act("document.querySelector('.suspects li:nth-child(2) button').click()")
        self.assertIn("MediaManager.Reset", self.text("#card"))

    def test_pointer_shows_details(self):
        self.show(traces.failed_bring_up())
        self.act("""
            const box = document.getElementById("lanes").getBoundingClientRect();
            const place = { clientX: box.left + 500, clientY: box.top + 43, bubbles: true };
            document.getElementById("lanes").dispatchEvent(new PointerEvent("pointermove", place))""")
        self.assertIn("Expected: true", self.text("#card"))
        self.assertFalse(self.run_script("return document.getElementById('card').hidden"))

    def test_filter_keeps_what_has_all_words(self):
        self.show(traces.failed_bring_up())
        self.type_filter("NAMEHASOWNER private")
        self.assertEqual(self.text("#matching"), "11 of 44 events")
        self.assertEqual({row[4] for row in self.shown_rows()}, {"org.freedesktop.DBus.NameHasOwner"})
        self.type_filter(" nowhere")
        self.assertEqual(self.shown_rows(), [])

    def test_problems_only(self):
        self.show(traces.failed_bring_up())
        self.run_script("document.getElementById('problems').click()")
        self.assertEqual([row[5] for row in self.shown_rows()], ["failed", "failed", "killed", "no answer"])

    def test_table_sorts(self):
        self.show(traces.failed_bring_up())
        names = sorted(event["name"] for event in traces.failed_bring_up().events if event["ph"] != "M")
        for order, told in ((names, "ascending"), (names[::-1], "descending")):
            self.run_script("document.querySelector('th:nth-child(5) button').click()")
            self.assertEqual(self.shown_rows()[0][4], order[0])
            self.assertEqual(self.run_script("return document.querySelector('th:nth-child(5)').getAttribute('aria-sort')"), told)

    def test_print_has_the_whole_run_on_white(self):
        self.show(traces.many(3000), scheme="dark")
        self.run_script("dispatchEvent(new Event('beforeprint'))")
        self.assertEqual(len(self.shown_rows()), 500)
        self.assertEqual(self.text("#print-note"), "2,500 more events not printed: filter the table to print others.")
        self.assertTrue(self.run_script("return document.getElementById('card').hidden"))
        self.assertGreater(self.count_pixels("--paper", 0, 100), 10000)
        self.run_script("dispatchEvent(new Event('afterprint'))")
        self.assertLess(len(self.shown_rows()), 100)
        self.assertEqual(self.run_script("return getComputedStyle(document.body).backgroundColor"), "rgb(15, 20, 25)")
        self.assertGreater(self.browser.pdf().count(b"/Type /Page\n"), 3)
