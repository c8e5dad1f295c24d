"""A long run: each step of who looks around in it must feel immediate."""
import statistics
import sys

import traces
from page_test import PageTest

LONGEST_STEP = 0.1  # seconds
# How long each of many steps takes, until the frame after it is there.
TIME_STEPS = """
    const steps = %s;
    const frame = () => new Promise((resolve) => requestAnimationFrame(resolve));
    const times = [];
    for (let n = 0; n < 15; n++) {
        await frame();
        const start = performance.now();
        steps(n);
        await frame();
        await frame();
        times.push((performance.now() - start) / 1000);
    }
    return times;"""


class FiftyThousandEvents(PageTest):
    COUNT = 50000

    @classmethod
    def setUpClass(cls):
        cls.show(cls(), traces.many(cls.COUNT))

    def setUp(self):
        self.browser.driver.refresh()

    def assert_quick(self, step):
        """The quicker quarter must be, as other programs may take the machine away from the browser."""
        times = self.run_script(TIME_STEPS % step)
        quicker, median = statistics.quantiles(times, n=4)[:2]
        print(f"quarter {quicker * 1000:.0f} ms, median {median * 1000:.0f} ms, longest {max(times) * 1000:.0f} ms",
              file=sys.stderr)
        self.assertLess(quicker, LONGEST_STEP)

    def test_table_holds_them_all(self):
        self.assertEqual(self.run_script("return document.querySelector('table').ariaRowCount"), str(self.COUNT + 1))
        self.run_script("document.querySelector('tbody tr[data-place]').focus()")
        self.press("END")
        self.assertEqual(self.shown_rows()[-1][4], f"com.talvex.Interface.Signal{self.COUNT - 61}")
        self.assertLess(len(self.shown_rows()), 100)

    def test_zoom_steps_are_quick(self):
        before = self.browser.picture()
        self.assert_quick("""(n) => document.getElementById("lanes").dispatchEvent(new WheelEvent("wheel", { bubbles: true,
            cancelable: true, deltaY: n < 10 ? -120 : 120, ctrlKey: true, clientX: 700, clientY: 300 }))""")
        self.assertTrue(self.browser.picture() != before, "the wheel changes nothing")

    def test_moves_are_quick(self):
        self.run_script("document.getElementById('zoom-in').click()")
        self.assert_quick("""() => document.getElementById("lanes").dispatchEvent(new WheelEvent("wheel",
            { deltaX: 60, bubbles: true, cancelable: true }))""")

    def test_scroll_steps_of_the_table_are_quick(self):
        self.assert_quick("(n) => { document.getElementById('events').scrollTop = n * 50000; }")
        self.assertGreater(len(self.shown_rows()), 20)

    def test_filter_steps_are_quick(self):
        self.assert_quick("""(n) => {
            const filter = document.getElementById("filter");
            filter.value = "number 4999".slice(0, n);
            filter.dispatchEvent(new Event("input"));
        }""")
        self.assertEqual(self.text("#matching").split()[0], "2")
