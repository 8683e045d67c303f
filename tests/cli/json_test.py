#!/usr/bin/env python3
"""The JSON objects: every documented member with its type, nothing else on standard output."""
import json
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PROGRAM = sys.argv.pop(1)
MANUAL = Path(__file__).resolve().parents[2] / "docs/manual/manual.qbp"

BUILD = {"profile": str, "format": str, "outputDirectory": str, "pages": int, "files": int, "warnings": int,
         "errors": int, "cancelled": bool, "compileResult": int, "helpFile": str, "seconds": float, "messages": list}
INFO = {"file": str, "title": str, "topics": int, "categories": int, "keywords": int, "relatedLinks": int,
        "nodes": int, "glossaryItems": int, "tasks": int, "otherFiles": int, "variables": int, "properties": int,
        "profiles": list, "problems": list}
PROFILE = {"id": str, "name": str, "helpVersion": int, "compile": bool, "outputDirectory": str, "helpFile": str}


class Json(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="quillbook-")
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)

    def run_json(self, *arguments, exit_code=0):
        env = os.environ | {"QUILLBOOK_REGISTRY": str(self.folder)}
        done = subprocess.run([PROGRAM, *arguments, "--json"], capture_output=True, env=env, check=False)
        self.assertEqual(done.returncode, exit_code, done.stderr)
        return json.loads(done.stdout.decode("utf-8"))

    def assert_members(self, found, types):
        self.assertEqual({name: type(value) for name, value in found.items()}, types)

    def test_build_tells_all_members(self):
        report = self.run_json("build", MANUAL, "--output", self.folder / "out")
        self.assert_members(report, BUILD)
        pages = list((self.folder / "out").glob("*.html"))
        self.assertEqual(report["pages"], len(pages))
        self.assertEqual(report["files"], len([path for path in (self.folder / "out").rglob("*") if path.is_file()])
                         - len(pages))
        self.assertEqual(report["outputDirectory"].rstrip("/"), str(self.folder / "out"))
        self.assertEqual((report["profile"], report["format"], report["messages"]), ("Web", "web", []))

    def test_info_tells_all_members(self):
        report = self.run_json("info", MANUAL)
        self.assert_members(report, INFO)
        self.assertEqual(report["file"], str(MANUAL))
        self.assertGreaterEqual(report["topics"], 12)
        for profile in report["profiles"]:
            self.assert_members(profile, PROFILE)
        self.assertEqual(report["problems"], [])

    def test_error_is_told_in_messages_too(self):
        report = self.run_json("build", self.folder / "gone.qbp", exit_code=2)
        self.assert_members(report, BUILD)
        self.assertEqual([message["code"] for message in report["messages"]], ["project.not-found"])
        self.assertEqual(report["errors"], 1)

    def test_odd_characters_are_escaped(self):
        project = self.folder / "odd.qbp"
        project.write_text('<QBProject Title="&quot;\\ &#9;&#10; \U0001F4D6 é" TemplateName="x"/>', encoding="utf-8")
        self.assertEqual(self.run_json("info", project)["title"], '"\\ \t\n \U0001F4D6 é')


if __name__ == "__main__":
    unittest.main()
