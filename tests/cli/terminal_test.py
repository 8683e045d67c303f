#!/usr/bin/env python3
"""What the command line does on a terminal: progress, colours, questions. And not without one."""
import os
import pty
import select
import subprocess
import sys
import tempfile
import termios
import time
import unicodedata
import unittest
from pathlib import Path

PROGRAM = sys.argv.pop(1)
PROJECT = """<QBProject Title="Small" TemplateName="Quillbook Web" OutputDirectory="made\\by\\question\\">
<Topic Key="{1}" Name="one" Title="One" Category=""><s k="BodyText">text</s></Topic></QBProject>"""


def width(text):
    """Columns on a terminal, as Python's own tables have them."""
    return sum(0 if unicodedata.combining(c) else 2 if unicodedata.east_asian_width(c) in "WF" else 1 for c in text)


class OnTerminal(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory(prefix="quillbook-")
        self.addCleanup(self.folder.cleanup)
        self.root = Path(self.folder.name)
        (self.root / "small.qbp").write_text(PROJECT, encoding="utf-8")

    def run_on_terminal(self, *arguments, answer=None, columns=0, **variables):
        """Gives exit code and what the terminal showed. `answer` is typed once a question stands there."""
        env = os.environ | {"QUILLBOOK_REGISTRY": self.folder.name, "TERM": "xterm"} | variables
        main, terminal = pty.openpty()
        termios.tcsetwinsize(terminal, (24, columns))
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

    def test_topic_in_the_contents_is_removed_as_the_person_says(self):
        node = '<Nodes><n key="{N}" nt="1" ct="1" c="" i="-1" cfn="" tid="{1}" url=""/></Nodes></QBProject>'
        for answer, code, topics, nodes in (("y", 0, 0, 0), ("n", 0, 0, 1), ("c", 3, 1, 1)):
            (self.root / "small.qbp").write_text(PROJECT.replace("</QBProject>", node), encoding="utf-8")
            found, shown = self.run_on_terminal("topics", "remove", "small.qbp", "one", answer=answer)
            self.assertEqual(found, code, shown)
            text = (self.root / "small.qbp").read_text(encoding="utf-8")
            self.assertEqual((text.count("<Topic "), text.count("<n ")), (topics, nodes), shown)
        self.assertIn("nothing was changed", shown)

    def test_nodes_below_are_removed_as_the_person_says(self):
        node = '<n key="{K}" nt="0" ct="2" c="x" i="-1" cfn="" tid="" url="">'
        nodes = "<Nodes>" + node.replace("K", "1") + node.replace("K", "2") + "</n></n></Nodes></QBProject>"
        for answer, code, left in (("n", 3, 2), ("y", 0, 0)):
            (self.root / "small.qbp").write_text(PROJECT.replace("</QBProject>", nodes), encoding="utf-8")
            found, shown = self.run_on_terminal("toc", "remove", "small.qbp", "1", answer=answer)
            self.assertEqual(found, code, shown)
            self.assertEqual((self.root / "small.qbp").read_text(encoding="utf-8").count("<n "), left, shown)

    def test_table_is_no_wider_than_the_terminal(self):
        words = "".join(f'<glossaryitem Key="{{{at}}}" Term="{at} {word}">{"é漢" * 40}</glossaryitem>'
                        for at, word in enumerate(("short", "漢字" * 20, "x\033[31my", "e\u0301" * 30)))
        (self.root / "small.qbp").write_text(
            PROJECT.replace("</QBProject>", f"<GlossaryItems>{words}</GlossaryItems></QBProject>")
            .replace("\033", "&#27;"), encoding="utf-8")
        shown = self.run_on_terminal("glossary", "list", "small.qbp", columns=60)[1].split("\033[K")[-1]  # behind the progress
        lines = shown.replace("\r\n", "\n").splitlines()
        self.assertEqual(len(lines), 5, shown)
        self.assertLessEqual(max(map(width, lines)), 60, shown)
        self.assertGreaterEqual(max(map(width, lines)), 58, shown)
        self.assertNotIn("\033", shown)
        self.assertTrue(all(line.endswith("…") for line in lines[1:]), shown)
        starts = {width(line[:line.index("é漢")]) for line in lines[1:]}
        self.assertEqual(len(starts), 1, shown)

    def test_values_bring_no_control_characters_to_the_terminal(self):
        (self.root / "small.qbp").write_text(PROJECT.replace("text", "a&#27;[31mb&#10;c"), encoding="utf-8")
        for arguments in (["topics", "show", "small.qbp", "one"], ["topics", "show", "small.qbp", "one", "body"]):
            code, shown = self.run_on_terminal(*arguments)
            self.assertEqual(code, 0)
            shown = shown.split("\033[K")[-1]
            self.assertNotIn("\033", shown)
            self.assertIn("a?[31mb", shown)


if __name__ == "__main__":
    unittest.main()
