#!/usr/bin/env python3
"""Ctrl-C in a build: exit code 3, an error line, no page cut short."""
import json
import os
import signal
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

PROGRAM = sys.argv.pop(1)
TOPICS = 20000


def write_project(path):
    body = "&lt;p&gt;" + "text " * 400 + "&lt;/p&gt;"
    with open(path, "w", encoding="utf-8") as file:
        file.write('<QBProject Title="Long" TemplateName="Quillbook Web">')
        for number in range(TOPICS):
            file.write(f'<Topic Key="{{{number}}}" Name="t{number}" Title="Topic {number}" Category="">'
                       f'<s k="BodyText">{body}</s></Topic>')
        file.write("</QBProject>")


class Interrupt(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory(prefix="quillbook-")
        self.addCleanup(self.folder.cleanup)
        self.project = Path(self.folder.name, "long.qbp")
        self.output = Path(self.folder.name, "out")
        write_project(self.project)

    def build_and_interrupt(self, number):
        """Starts a build, sends a signal once pages appear, and gives exit code, output and errors."""
        env = os.environ | {"QUILLBOOK_REGISTRY": self.folder.name}
        build = subprocess.Popen([PROGRAM, "build", self.project, "--output", self.output, "--json"], env=env,
                                 stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
        deadline = time.monotonic() + 60
        while not any(self.output.glob("t*.html")) and build.poll() is None and time.monotonic() < deadline:
            time.sleep(0.002)
        build.send_signal(number)
        out, err = build.communicate(timeout=60)
        return build.returncode, out, err

    def test_cancels_between_pages(self):
        for number in (signal.SIGINT, signal.SIGTERM):
            with self.subTest(number):
                code, out, err = self.build_and_interrupt(number)
                self.assertEqual(code, 3, err)
                self.assertIn("the build was cancelled", err)
                report = json.loads(out)
                self.assertTrue(report["cancelled"])
                self.assertIn("build.cancelled", [message["code"] for message in report["messages"]])
                pages = list(self.output.glob("t*.html"))
                self.assertLess(len(pages), TOPICS)
                for page in pages:
                    self.assertTrue(page.read_text(encoding="utf-8").rstrip().endswith("</html>"), page)
                for page in pages:
                    page.unlink()


if __name__ == "__main__":
    unittest.main()
