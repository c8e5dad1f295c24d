"""A headless Chromium to look at pages with: for the tests of the time line's page and for the guides' pictures."""
import base64
import importlib.util
import os
import shutil
import sys

SKIPPED = 77
PROGRAMS = {"chromium": "chromium", "chromedriver": "chromium-driver"}  # and the packages that bring them


def require():
    """Ends the program where the browser or what drives it is missing: as a skip at a desk, as a failure in CI."""
    missing = [package for program, package in PROGRAMS.items() if not shutil.which(program)]
    if not importlib.util.find_spec("selenium"):
        missing.append("python3-selenium")
    if missing:
        name = os.path.basename(sys.argv[0])
        print(f"{name} looks at pages in a browser. Install what it lacks: {' '.join(missing)}", file=sys.stderr)
        sys.exit(1 if os.environ.get("CI") == "true" else SKIPPED)


class Browser:
    """with Browser() as browser: browser.open("page.html")"""

    def __enter__(self):
        from selenium import webdriver
        from selenium.webdriver.chrome.service import Service
        options = webdriver.ChromeOptions()
        options.binary_location = shutil.which("chromium")
        # Its own sandbox works neither for root nor in most containers; the pages are ours.
        for argument in ("headless=new", "no-sandbox", "disable-gpu", "disable-dev-shm-usage", "hide-scrollbars"):
            options.add_argument(f"--{argument}")
        options.set_capability("goog:loggingPrefs", {"browser": "ALL"})
        self.driver = webdriver.Chrome(service=Service(shutil.which("chromedriver")), options=options)
        self.driver.set_script_timeout(60)
        self._command("Network.enable")
        self._command("Network.emulateNetworkConditions", offline=True, latency=0, downloadThroughput=0,
                      uploadThroughput=0)
        self._command("Performance.enable", timeDomain="threadTicks")
        return self

    def __exit__(self, *_):
        self.driver.quit()

    def open(self, path, width=1280, height=800, scheme="light"):
        self._command("Emulation.setDeviceMetricsOverride", width=width, height=height, deviceScaleFactor=1, mobile=False)
        self._command("Emulation.setEmulatedMedia", features=[{"name": "prefers-color-scheme", "value": scheme}])
        self.driver.get(path.resolve().as_uri())

    def run(self, script, *arguments):
        """The value of a JavaScript function body, also of an asynchronous one."""
        return self.driver.execute_async_script(
            "const given = [...arguments]; const done = given.pop();"
            f"(async function () {{ {script} }}).apply(null, given)"
            ".then(done, (error) => done({ error: String(error) }));", *arguments)

    def complaints(self):
        """What the console says of the page since the last question."""
        return [entry["message"] for entry in self.driver.get_log("browser")]

    def computed(self):
        """Seconds that the page's own thread has computed so far: what it waited, or others had the processor, is not in it."""
        metrics = self._command("Performance.getMetrics")["metrics"]
        return next(metric["value"] for metric in metrics if metric["name"] == "TaskDuration")

    def picture(self):
        return base64.b64decode(self._command("Page.captureScreenshot", format="png")["data"])

    def pdf(self):
        return base64.b64decode(self._command("Page.printToPDF", preferCSSPageSize=True)["data"])

    def _command(self, name, **arguments):
        return self.driver.execute_cdp_cmd(name, arguments)
