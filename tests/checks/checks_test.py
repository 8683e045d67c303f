#!/usr/bin/env python3
"""Tests of the repository's checks: each must find what it looks for, and let pass what is right."""
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

CHECKS = Path(sys.argv.pop(1))


def run(check, files, *arguments):
    """Runs a check over a small tree; gives its exit code and what it printed."""
    with tempfile.TemporaryDirectory() as folder:
        for name, text in files.items():
            path = Path(folder, name)
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        done = subprocess.run([sys.executable, CHECKS / check, folder, *arguments], capture_output=True, text=True,
                              check=False)
        return done.returncode, done.stdout


class IncludeDirection(unittest.TestCase):
    BASE = {"include/quillbook/base/Ref.h": "#pragma once\n", "include/quillbook/host/Host.h": "#pragma once\n",
            "include/quillbook/topics/Topic.h": '#include "quillbook/base/Ref.h"\n'}

    def test_includes_downwards_pass(self):
        self.assertEqual(run("include_direction.py", self.BASE | {
            "src/topics/Topic.cpp": '#include "quillbook/topics/Topic.h"\n#include "quillbook/host/Host.h"\n'}), (0, ""))

    def test_include_of_a_room_above_is_found_with_its_line(self):
        self.assertEqual(run("include_direction.py", self.BASE | {
            "src/host/Walk.cpp": '\n#include "quillbook/topics/Topic.h"\n'}),
            (1, "src/host/Walk.cpp:2: includes quillbook/topics/Topic.h: host stands below objects\n"))

    def test_public_header_that_shows_a_library_is_found(self):
        code, out = run("include_direction.py", {"include/quillbook/topics/A.h": "#include <pugixml.hpp>\n"})
        self.assertEqual((code, out.count("hides the library")), (1, 1))

    def test_missing_header_is_found(self):
        code, out = run("include_direction.py", {"src/base/A.cpp": '#include "quillbook/base/Gone.h"\n'})
        self.assertEqual((code, "not there" in out), (1, True))

    def test_command_line_may_not_see_private_headers(self):
        code, out = run("include_direction.py", {"src/topics/Private.h": "", "src/cli/A.cpp":
                                                 '#include "topics/Private.h"\n'})
        self.assertEqual((code, "public headers only" in out), (1, True))

    def test_services_in_the_public_frame_folder_are_told_by_their_source(self):
        code, _ = run("include_direction.py", {
            "include/quillbook/frame/XMLDocument.h": "", "src/frame/services/XMLDocument.cpp": "",
            "src/host/A.cpp": '#include "quillbook/frame/XMLDocument.h"\n'})
        self.assertEqual(code, 0)


class Docs(unittest.TestCase):
    EMPTY = {"README.md": "", "CHANGELOG.md": "", "CONTRIBUTING.md": "", "docs/a.md": "", "src/x.cpp": "",
             "docs/manual/manual.qbp": "<QBProject/>"}

    def check(self, text, *arguments):
        return run("docs.py", self.EMPTY | {"docs/a.md": text}, *arguments)

    def test_paths_that_exist_pass(self):
        self.assertEqual(self.check("`src/x.cpp`, `src/<room>/x.cpp`, [r](../README.md), `other/thing`"), (0, ""))

    def test_path_that_is_gone_is_found(self):
        self.assertEqual(self.check("`src/y.cpp`"), (1, "docs/a.md: names src/y.cpp, which is not there\n"))

    def test_dead_link_is_found(self):
        self.assertEqual(self.check("[r](gone.md#part)"), (1, "docs/a.md: links to gone.md, which is not there\n"))

    def test_sample_that_is_shown_otherwise_is_found(self):
        sample = {"samples/a.cpp": "// samples/a.cpp: one.\nint a;\n"}
        shown = "```cpp\n// samples/a.cpp: one.\nint {};\n```\n"
        self.assertEqual(run("docs.py", self.EMPTY | sample | {"docs/a.md": shown.format("a")}), (0, ""))
        self.assertEqual(run("docs.py", self.EMPTY | sample | {"docs/a.md": shown.format("b")}),
                         (1, "docs/a.md: shows samples/a.cpp other than it is\n"))
        manual = "<QBProject><s>&lt;pre&gt;&lt;code&gt;// samples/gone.cpp: x&lt;/code&gt;&lt;/pre&gt;</s></QBProject>"
        code, out = run("docs.py", self.EMPTY | {"docs/manual/manual.qbp": manual})
        self.assertEqual((code, "samples/gone.cpp" in out), (1, True))

    def test_unknown_options_and_commands_are_found(self):
        with tempfile.TemporaryDirectory() as folder:
            program = Path(folder, "quillbook")
            program.write_text('#!/bin/sh\n[ "$1" = build ] || [ "$1" = --help ] || exit 2\necho "  --output DIR"\n',
                               encoding="utf-8")
            program.chmod(0o755)
            self.assertEqual(self.check("`quillbook build a.qbp --output b`", str(program)), (0, ""))
            code, out = self.check("`quillbook build --wrong` and `quillbook bild`", str(program))
            self.assertEqual(code, 1)
            self.assertIn("no option --wrong", out)
            self.assertIn("no command 'bild'", out)


if __name__ == "__main__":
    unittest.main()
