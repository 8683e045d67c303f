#!/usr/bin/env python3
"""What the command line does on a terminal: progress, colours, questions. And not without one."""
import os
import pty
import select
import subprocess
import sys
import tempfile
import time
import unittest
from pathlib import Path

PROGRAM = sys.argv.pop(1)
PROJECT = """<QBProject Title="Small" TemplateName="Quillbook Web" OutputDirectory="made\\by\\question\\">
<Topic Key="{1}" Name="one" Title="One" Category=""><s k="BodyText">text</s></Topic></QBProject>"""


class OnTerminal(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory(prefix="quillbook-")
        self.addCleanup(self.folder.cleanup)
        self.root = Path(self.folder.name)
        (self.root / "small.qbp").write_text(PROJECT, encoding="utf-8")

    def run_on_terminal(self, *arguments, answer=None, **variables):
        """Gives exit code and what the terminal showed. `answer` is typed once a question stands there."""
        env = os.environ | {"QUILLBOOK_REGISTRY": self.folder.name, "TERM": "xterm"} | variables
        main, terminal = pty.openpty()
        process = subprocess.Popen([PROGRAM, *arguments], cwd=self.root, env=env, stdin=terminal, stdout=terminal,
                                   stderr=terminal)
        os.close(terminal)
        shown, deadline = b"", time.monotonic() + 60
        while time.monotonic() < deadline:
            if select.select([main], [], [], 0.05)[0]:
                try:
                    shown += os.read(main, 65536)
                except OSError:
                    break
            if answer and b"?" in shown:
                os.write(main, answer.encode() + b"\n")
                answer = None
        os.close(main)
        return process.wait(timeout=60), shown.decode("utf-8")

    def test_progress_is_shown_and_taken_away(self):
        code, shown = self.run_on_terminal("build", "small.qbp", "--output", "out")
        self.assertEqual(code, 0, shown)
        self.assertIn("\r\033[K", shown)
        self.assertTrue(shown.replace("\r\n", "\n").splitlines()[-1].endswith("out"), shown)

    def test_quiet_shows_nothing(self):
        self.assertEqual(self.run_on_terminal("build", "small.qbp", "--output", "out", "--quiet"), (0, ""))

    def test_errors_are_coloured_unless_asked_not_to(self):
        self.assertIn("\033[1;31m", self.run_on_terminal("info", "gone.qbp")[1])
        self.assertNotIn("\033[", self.run_on_terminal("info", "gone.qbp", NO_COLOR="1")[1])
        self.assertNotIn("\033[", self.run_on_terminal("info", "gone.qbp", TERM="dumb")[1])

    def test_question_is_answered_at_the_terminal(self):
        code, shown = self.run_on_terminal("build", "small.qbp", answer="y")
        self.assertEqual(code, 0, shown)
        self.assertTrue((self.root / "made/by/question/one.html").is_file())

    def test_no_cancels(self):
        code, shown = self.run_on_terminal("build", "small.qbp", answer="n")
        self.assertEqual(code, 3, shown)
        self.assertFalse((self.root / "made").exists())


if __name__ == "__main__":
    unittest.main()
