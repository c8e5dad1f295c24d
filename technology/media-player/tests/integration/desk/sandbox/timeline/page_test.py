"""What the tests of the page share: showing it in the browser, and acting and reading there as a person does."""
import json
import subprocess
import unittest

COUNT_PIXELS = """
    const [name, top, bottom] = arguments;
    const probe = document.createElement("canvas").getContext("2d");
    probe.fillStyle = getComputedStyle(document.documentElement).getPropertyValue(name);
    probe.fillRect(0, 0, 1, 1);
    const wanted = probe.getImageData(0, 0, 1, 1).data.join();
    const lanes = document.getElementById("lanes");
    const copy = Object.assign(document.createElement("canvas"), { width: lanes.width, height: bottom });
    copy.getContext("2d", { willReadFrequently: true }).drawImage(lanes, 0, 0);
    const { data } = copy.getContext("2d").getImageData(0, top, copy.width, bottom - top);
    let count = 0;
    for (let i = 0; i < data.length; i += 4) if (data.subarray(i, i + 4).join() === wanted) count++;
    return count;"""


class PageTest(unittest.TestCase):
    page_of_trace = sandbox = browser = folder = None

    def tearDown(self):
        self.assertEqual(self.browser.complaints(), [])

    @classmethod
    def make_page(cls, trace_text):
        return subprocess.run([cls.page_of_trace], input=trace_text, stdout=subprocess.PIPE, check=True).stdout

    def show(self, trace, **settings):
        self.show_page(self.make_page(json.dumps(trace.json()).encode()), **settings)

    def show_page(self, page, **settings):
        path = self.folder / "page.html"
        path.write_bytes(page)
        self.browser.open(path, **settings)

    def run_script(self, script, *arguments):
        result = self.browser.run(script, *arguments)
        self.assertNotIn("error", result if isinstance(result, dict) else {}, script)
        return result

    def act(self, script):
        """Runs a script and waits until what it changed is drawn."""
        return self.run_script(f"{script}; for (let n = 0; n < 2; n++) await new Promise(requestAnimationFrame);")

    def text(self, selector):
        return self.run_script("return document.querySelector(arguments[0]).textContent", selector)

    def press(self, *keys):
        from selenium.webdriver.common.keys import Keys
        for key in keys:
            self.browser.driver.switch_to.active_element.send_keys(getattr(Keys, key, key))
        self.act("")

    def focus(self, element):
        self.run_script("document.getElementById(arguments[0]).focus()", element)

    def type_filter(self, words):
        self.focus("filter")
        self.press(words)

    def shown_rows(self):
        """The cells' texts of each row that is in the page."""
        return self.run_script("""return [...document.querySelectorAll("tbody tr[data-place]")]
            .map((row) => [...row.cells].map((cell) => cell.textContent));""")

    def count_pixels(self, colour, top, bottom):
        """Pixels of a colour of the style sheet in the lanes, between two heights."""
        return self.run_script(COUNT_PIXELS, colour, top, bottom)
