"""What the sandbox writes is what the page reads."""
import subprocess

from page_test import PageTest


class RealRun(PageTest):
    def test_shows_what_happened(self):
        page = self.folder / "run.html"
        run = subprocess.run([self.sandbox, "--no-lifecycle-manager", "--timeline", page, "--", "sh", "-c", "echo hello; exit 3"],
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
        self.assertEqual(run.returncode, 3, run.stdout)
        self.browser.open(page)
        self.assertEqual(self.run_script("return document.title"), "Failed: sh")
        self.assertIn("exit status 3", self.text("#summary"))
        rows = {(lane, what, state) for _, _, lane, _, what, state, _ in self.shown_rows()}
        self.assertLessEqual({("Log", "hello", "output"), ("Processes", "sh", "failed")}, rows)
