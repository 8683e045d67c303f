#!/usr/bin/env python3
"""The editing commands by their own tables: every field of every kind can be set and comes back, every action answers
in JSON, help fits the screen, and the documentation tells the same."""
import json
import os
import re
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

PROGRAM = os.path.abspath(sys.argv.pop(1))
ROOT = Path(__file__).resolve().parents[2]
PROJECT = """<QBProject Title="All kinds" TemplateName="Quillbook Web">
<cat Name="Care" Key="{C1}"/><cat Name="Tools" Key="{C2}"/>
<Topic Key="{T1}" Name="first" Title="First" Category="{C1}"><K Value="one"/><r t="{T2}" cat="" Title="" rt="0" URL=""/></Topic>
<Topic Key="{T2}" Name="second" Title="Second" Category=""/>
<file FileName="a.css"/><VariableValue Name="Header">Hello</VariableValue>
<GlossaryItems><glossaryitem Key="{G1}" Term="API">x</glossaryitem></GlossaryItems>
<Nodes><n key="{N1}" nt="0" ct="2" c="Node" i="-1" cfn="" tid="" url=""/></Nodes>
<Tasks><Task Key="{K1}" Priority="Low" Title="Write" AssignedTo="" TopicID="" Status="" CreatedOn="01-02-2024 10:20:30" CreatedBy="" ModifiedOn="01-02-2024 10:20:30" ModifiedBy=""/></Tasks>
<BuildProfiles><BuildProfile ID="{B1}" Name="Web" OutputDirectory="" CompileHelpFile="True" HTMLHelpVersion="2" H2Namespace="g" H2FileID="g" HelpFileName=""/></BuildProfiles>
<ProjectProperties><ProjectProperty PropertyName="Company" PropertyType="0" PropertyValue="x" ID="{P1}"/></ProjectProperties>
</QBProject>"""

ODD = 'Ünï <b>&amp;</b> "q" 漢\ttab'
LINES = "one\n  two\n"
# How a record of each kind is named, and a value for each of its fields; several values together where one needs
# another. None stands for a field that can't be set.
SAMPLES = {
    "topics": (["first"], {
        "key": None, "name": "renamed", "title": ODD, "contents-title": ODD, "status": "Complete", "category": "Tools",
        "body": LINES, "notes": "two\nlines", "layout": "wide", "in-help": False, "auto-index": False,
        "all-stylesheets": False, "stylesheets": ["a.css", "b,c.css"], "all-scripts": False,
        "scripts": ["a.js", "b.js"], "created": "2020-02-29", "modified": "2021-03-04"}),
    "categories": (["care"], {"key": None, "name": ODD, "auto-index": False}),
    "keywords": (["first", "one"], {"topic": None, "keyword": ODD}),
    "links": (["first", "1"], {"topic": None, "number": None, "type": "url", "target": "first", "url": "x.html?a=b",
                               "title": ODD, "category": ODD}),
    "toc": (["1"], {"path": None, "shown": None, "type": "topic", "topic": "first", "url": "x.html?a=b",
                    "caption-type": "default", "caption": ODD, "icon": 7, "key": None}),
    "glossary": (["api"], {"key": None, "term": ODD, "definition": LINES}),
    "tasks": (["write"], {
        "key": None, "title": ODD, "priority": "High", "status": "Done", "assigned-to": ODD, "topic": "second",
        "notes": LINES, "created": "2020-02-29 23:59:58", "created-by": ODD, "modified": "2021-03-04 00:00:01",
        "modified-by": ODD}),
    "files": (["a.css"], {"name": "sub/b.css", "in-output": False, "capture-info": ODD}),
    "profiles": (["web"], {
        "key": None, "name": ODD, "output": "out/web", "title": ODD, "compile": False, "help-file": "out/a.hxs",
        "help-version": None, "namespace": "ns", "file-id": "id", "plug-in": "MS.VSCC", "remove-output": True,
        "in-build": True, "default-topic": "second", "locale": 1031, "variables": ["A=b=c", "Header=" + ODD],
        "properties": ["Company=" + ODD]}),
    "properties": (["company"], {"key": None, "name": ODD, "type": "color", "value": LINES}),
    "variables": (["header"], {"name": "Footer", "value": LINES}),
    "project": ([], {
        "title": ODD, "template": "Other", "output": "out/all", "default-topic": "first", "auto-index": False,
        "category-index": True, "companion": "../a.mvp", "build-companion": False,
        "spelling-checked": "2024-02-03 04:05:06", "ignored-words": ["one", "two"]}),
}
NEEDED_TOO = {("topics", "scripts"): ["stylesheets=a.css", "stylesheets=b.css"], ("links", "type"): [],
              ("links", "target"): [], ("toc", "type"): ["topic=first"], ("toc", "caption-type"): ["topic=first"]}
ACTIONS = ("list", "show", "add", "set", "remove", "move")


def run(*arguments, folder, exit_code=0, stdin=None):
    env = os.environ | {"QUILLBOOK_REGISTRY": str(folder), "LC_ALL": "C.UTF-8"}
    done = subprocess.run([PROGRAM, *arguments], cwd=folder, env=env, input=stdin, capture_output=True, check=False)
    if done.returncode != exit_code:
        raise AssertionError(f"{arguments}: {done.returncode}, {done.stderr.decode()}")
    return done.stdout.decode("utf-8")


def help_of(*command):
    return subprocess.run([PROGRAM, *command, "--help"], capture_output=True, text=True, check=True).stdout


def fields_of(kind):
    """Names and help of the fields, as the help of the kind tells them."""
    block = help_of(kind).split("Fields:\n")[1].split("\n\n")[0]
    return dict(re.match(r"  (\S+) +(.+)", line).groups() for line in block.splitlines())


def written(name, value):
    """FIELD=VALUE arguments for a value as JSON has it."""
    values = value if isinstance(value, list) else [value]
    return [f"{name}={({True: 'yes', False: 'no'}[one] if isinstance(one, bool) else one)}" for one in values]


class Fields(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(prefix="quillbook-")
        self.addCleanup(folder.cleanup)
        self.folder = Path(folder.name)
        self.project = self.folder / "g.qbp"
        self.write_project()

    def write_project(self):
        self.project.write_text(PROJECT, encoding="utf-8")

    def test_samples_cover_every_field(self):
        listed = re.findall(r"^  (\w+) ", help_of().split("Editing:\n")[1], re.M)
        self.assertEqual(set(listed) - {"fmt"}, set(SAMPLES))
        for kind, (_, samples) in SAMPLES.items():
            fields = fields_of(kind)
            self.assertEqual(list(fields), list(samples))
            for name, text in fields.items():
                self.assertEqual("can't be set" in text, samples[name] is None, f"{kind} {name}")

    def test_every_field_comes_back_after_it_was_set(self):
        for kind, (address, samples) in SAMPLES.items():
            for name, value in samples.items():
                with self.subTest(kind=kind, field=name):
                    self.write_project()
                    arguments = [kind, "set", "g.qbp", *address]
                    if value is None:
                        run(*arguments, f"{name}=x", folder=self.folder, exit_code=2)
                        continue
                    key = json.loads(run(kind, "show", "g.qbp", *address, "--json", folder=self.folder))["records"][0]
                    run(*arguments, *NEEDED_TOO.get((kind, name), []), *written(name, value), folder=self.folder)
                    if "key" in key:
                        address_now = [key["key"]]
                    elif address and name in ("name", "keyword"):
                        address_now = [*address[:-1], value]
                    else:
                        address_now = address
                    report = json.loads(run(kind, "show", "g.qbp", *address_now, "--json", folder=self.folder))
                    self.assertEqual(report["records"][0][name], value)

    def test_field_alone_goes_back_by_file_and_standard_input(self):
        text = "a\r\n\tb 漢\n\n"
        run("glossary", "set", "g.qbp", "api", "definition=@-", folder=self.folder, stdin=text.encode())
        shown = run("glossary", "show", "g.qbp", "api", "definition", folder=self.folder)
        self.assertEqual(shown, text)

    def test_adding_and_removing_leaves_the_file_as_fmt_leaves_it(self):
        lasting = lambda: re.sub(r'SaveDateTime="[^"]*"', "", self.project.read_text(encoding="utf-8"))
        run("fmt", "g.qbp", folder=self.folder)
        before = lasting()
        for kind, arguments, name in [("topics", ["x"], "x"), ("categories", ["x"], "x"), ("glossary", ["x"], "x"),
                                      ("keywords", ["first", "x"], "x"), ("links", ["first", "url=x"], "2"),
                                      ("toc", ["caption=x"], "2"), ("tasks", ["x"], "x"), ("files", ["x"], "x"),
                                      ("profiles", ["x"], "x"), ("properties", ["x"], "x"), ("variables", ["x"], "x")]:
            with self.subTest(kind=kind):
                run(kind, "add", "g.qbp", *arguments, folder=self.folder)
                self.assertNotEqual(lasting(), before)
                owner = ["first"] if kind in ("keywords", "links") else []
                run("fmt", "g.qbp", "--check", folder=self.folder)
                run(kind, "remove", "g.qbp", *owner, name, folder=self.folder)
                self.assertEqual(lasting(), before)

    def test_dry_run_writes_nothing(self):
        for arguments in (["topics", "add", "g.qbp", "x"], ["toc", "remove", "g.qbp", "1"],
                          ["tasks", "set", "g.qbp", "write", "status=x"], ["glossary", "move", "g.qbp", "api", "--last"]):
            report = json.loads(run(*arguments, "--dry-run", "--json", folder=self.folder))
            self.assertEqual((report["changed"], report["saved"], report["dryRun"]), (True, False, True))
            self.assertEqual(self.project.read_text(encoding="utf-8"), PROJECT)
            self.assertFalse(self.project.with_suffix(".bak").exists())

    def test_change_keeps_the_old_file(self):
        run("topics", "add", "g.qbp", "x", folder=self.folder)
        self.assertEqual(self.project.with_suffix(".bak").read_text(encoding="utf-8"), PROJECT)

    def test_json_members(self):
        view = {"file": str, "kind": str, "action": str, "records": list, "messages": list}
        change = {"file": str, "kind": str, "action": str, "name": str, "key": str, "fields": list, "changed": bool,
                  "saved": bool, "dryRun": bool, "messages": list}
        for arguments, types in ((["topics", "list", "g.qbp"], view), (["toc", "show", "g.qbp", "1"], view),
                                 (["tasks", "add", "g.qbp", "x"], change), (["toc", "move", "g.qbp", "1", "--last"], change)):
            report = json.loads(run(*arguments, "--json", folder=self.folder))
            self.assertEqual({name: type(value) for name, value in report.items()}, types)
            self.assertEqual(report["file"], str(self.project.resolve()))
        for arguments, types in ((["topics", "show", "g.qbp", "nobody"], view), (["topics", "remove", "g.qbp", "?"], change)):
            report = json.loads(run(*arguments, "--json", folder=self.folder, exit_code=2))
            self.assertEqual({name: type(value) for name, value in report.items()}, types)
            self.assertEqual([message["code"] for message in report["messages"]], ["record.unknown"])


class Closed(unittest.TestCase):
    def test_reader_that_closes_the_pipe_ends_the_program_silently(self):
        with tempfile.TemporaryDirectory(prefix="quillbook-") as folder:
            words = "".join(f'<glossaryitem Key="{{{at}}}" Term="{at}">{"x" * 100}</glossaryitem>' for at in range(5000))
            Path(folder, "big.qbp").write_text(
                f'<QBProject Title="" TemplateName=""><GlossaryItems>{words}</GlossaryItems></QBProject>', encoding="utf-8")
            done = subprocess.run(["/bin/bash", "-c", f"'{PROGRAM}' glossary list big.qbp | head -1; echo ${{PIPESTATUS[0]}}"],
                                  cwd=folder, capture_output=True, text=True, check=False)
            self.assertEqual(done.stdout.splitlines(), ["TERM  DEFINITION", "141"])
            self.assertEqual(done.stderr, "")
            # Some parents leave the signal ignored, as Python does.
            program = subprocess.Popen([PROGRAM, "glossary", "list", "big.qbp"], cwd=folder, stdout=subprocess.PIPE,
                                       stderr=subprocess.PIPE, restore_signals=False)
            program.stdout.close()
            self.assertEqual((program.wait(timeout=60), program.stderr.read()), (3, b""))
            program.stderr.close()


class FullDisk(unittest.TestCase):
    def test_project_stays_as_it_was(self):
        if os.geteuid() != 0:
            self.skipTest("only root mounts a small disk")
        with tempfile.TemporaryDirectory(prefix="quillbook-") as folder:
            script = (f"mount -t tmpfs -o size=64k none . && cd . && cp /dev/stdin g.qbp && head -c 20000 /dev/zero > fill;"
                      f"'{PROGRAM}' topics add g.qbp x title=@big; echo $?; ls; tail -c 12 g.qbp")
            big = Path(folder).with_suffix(".big")
            self.addCleanup(big.unlink, missing_ok=True)
            big.write_text("x" * 60000, encoding="utf-8")
            done = subprocess.run(["unshare", "-m", "/bin/sh", "-c", script.replace("@big", f"@{big}").replace("cd .", f"cd '{folder}'")],
                                  cwd=folder, input=PROJECT, capture_output=True, text=True, check=False,
                                  env=os.environ | {"QUILLBOOK_REGISTRY": "/nonexistent"})
            if "mount" in done.stderr or "unshare" in done.stderr:
                self.skipTest(done.stderr.strip())
            self.assertEqual(done.stdout.splitlines()[0], "3", done.stderr)
            self.assertTrue(done.stdout.endswith("</QBProject>"))
            self.assertIn("could not be saved, and is as it was", done.stderr)


class Help(unittest.TestCase):
    def pages(self):
        yield "fmt", help_of("fmt")
        for kind in SAMPLES:
            yield kind, help_of(kind)
            for action in ACTIONS if kind != "project" else ("show", "set"):
                yield f"{kind} {action}", help_of(kind, action)

    def test_pages_fit_in_80_columns(self):
        for command, page in self.pages():
            self.assertEqual([line for line in page.splitlines() if len(line) > 80], [], command)

    def test_documentation_has_the_same_fields(self):
        text = (ROOT / "docs/cli.md").read_text(encoding="utf-8")
        for kind in SAMPLES:
            section = text.split(f"#### Fields of `{kind}`\n")[1].split("\n#")[0]
            rows = dict(re.findall(r"^\| `([^`]+)` \| (.+?) \|", section, re.M))
            self.assertEqual(rows, fields_of(kind), kind)


if __name__ == "__main__":
    unittest.main()
