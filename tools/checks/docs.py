#!/usr/bin/env python3
"""Checks what the documentation names: paths, links, commands and options must exist, samples must be those there are.

usage: docs.py SOURCE_FOLDER [QUILLBOOK]

Looks into README.md, CHANGELOG.md, CONTRIBUTING.md and docs/**/*.md, and, for commands and options, also into the
topics of the manual. A path is a code span that begins with a folder or file of the repository's root; a placeholder
in it (<name>, *, ...) ends what is checked. Code that begins with "// samples/..." is that file, whole. Prints one line a finding, and exits with 1 if there was one.
"""
import html
import re
import subprocess
import sys
import xml.etree.ElementTree as ElementTree
from pathlib import Path

CODE_SPAN = re.compile(r"`([^`\n]+)`")
FENCE = re.compile(r"^```(\w*)\n(.*?)^```", re.M | re.S)
LINK = re.compile(r"\]\(([^)#\s]+)(?:#[^)]*)?\)")
PLACEHOLDER = re.compile(r"[<*{$]|\.\.\.|…")
SAMPLE = re.compile(r"// (samples/[^:\s]+):")
OPTION = re.compile(r"(?<![\w-])--[a-z][a-z-]+")


class Findings:
    def __init__(self, root):
        self.root = root
        self.count = 0

    def add(self, path, what):
        print(f"{path.relative_to(self.root)}: {what}")
        self.count += 1


def check_paths(root, path, text, findings):
    tops = {entry.name for entry in root.iterdir() if entry.name not in (".git", "build")}
    for span in CODE_SPAN.findall(text):
        word = span.strip().removeprefix("./").split(" ")[0].split(":")[0]
        if word.split("/")[0] not in tops:
            continue
        fixed = PLACEHOLDER.split(word)[0]
        fixed = fixed if fixed == word else fixed.rpartition("/")[0]
        if not (root / fixed).exists():
            findings.add(path, f"names {word}, which is not there")
    for target in LINK.findall(text):
        if "://" not in target and not (path.parent / target).exists():
            findings.add(path, f"links to {target}, which is not there")


class CommandLine:
    """The commands of the executable and the options of each, as its own help tells them."""

    def __init__(self, program):
        self.program = program
        self.options = {"": self.options_of([])}

    def options_of(self, command):
        run = subprocess.run([self.program, *command, "--help"], capture_output=True, text=True, check=False)
        return set(OPTION.findall(run.stdout)) if run.returncode == 0 else None

    def check(self, line, path, findings):
        words = line.split()
        if not words or words[0].rpartition("/")[2] != "quillbook":
            return
        rest = words[1:]
        command = rest[0] if rest and re.fullmatch(r"[a-z]+", rest[0]) else ""
        if command not in self.options:
            self.options[command] = self.options_of([command])
        if len(rest) > 1 and re.fullmatch(r"[a-z]+", rest[1]):  # an action of the command, if it has actions
            action = f"{command} {rest[1]}"
            if action not in self.options:
                self.options[action] = self.options_of(rest[:2])
            command = action if self.options[action] else command
        known = self.options[command]
        if known is None:
            findings.add(path, f"shows '{line.strip()}', but there is no command '{command}'")
            return
        for option in OPTION.findall(" ".join(rest)):
            if option not in known:
                findings.add(path, f"shows '{line.strip()}', but there is no option {option}")


def command_lines(text):
    """What a document shows as a shell command: lines of sh blocks, and code spans that begin with the program."""
    for language, block in FENCE.findall(text):
        if language in ("sh", "console", "bash"):
            yield from (line for line in block.splitlines() if not line.startswith("#"))
    yield from (span for span in CODE_SPAN.findall(FENCE.sub("", text)) if span.startswith("quillbook "))


def manual_code(manual):
    for section in ElementTree.parse(manual).iter("s"):
        for code in re.findall(r"<code[^>]*>(.*?)</code>", section.text or "", re.S):
            yield html.unescape(re.sub(r"<[^>]+>", "", code))


def check_sample(root, path, code, findings):
    found = SAMPLE.match(code)
    if found and not (root / found[1]).is_file():
        findings.add(path, f"shows {found[1]}, which is not there")
    elif found and (root / found[1]).read_text(encoding="utf-8").strip() != code.strip():
        findings.add(path, f"shows {found[1]} other than it is")


def check_document(root, path, program, findings):
    text = path.read_text(encoding="utf-8")
    check_paths(root, path, FENCE.sub("", text), findings)
    for _, block in FENCE.findall(text):
        check_sample(root, path, block, findings)
    for line in command_lines(text) if program else ():
        program.check(line, path, findings)


def check_manual(root, manual, program, findings):
    for code in manual_code(manual):
        check_sample(root, manual, code, findings)
        if program and code.startswith("quillbook "):
            program.check(code.splitlines()[0], manual, findings)


def main():
    root = Path(sys.argv[1]).resolve()
    program = CommandLine(sys.argv[2]) if len(sys.argv) > 2 else None
    findings = Findings(root)
    documents = [root / name for name in ("README.md", "CHANGELOG.md", "CONTRIBUTING.md")]
    for path in documents + sorted((root / "docs").rglob("*.md")):
        check_document(root, path, program, findings)
    check_manual(root, root / "docs/manual/manual.qbp", program, findings)
    sys.exit(1 if findings.count else 0)


if __name__ == "__main__":
    main()
