#!/usr/bin/env python3
"""Runs the command line as a user would and compares what it says.

usage: run.py QUILLBOOK [--update] [--keep FOLDER] [CASE...]

A case is a folder with a file "transcript": lines that begin with "$ " are shell commands, what follows each is what
it must print. Lines of the error output begin with "2> "; a last line "[n]" is an exit code other than 0. The other
files of the folder are there when the commands run, in a temporary folder. {dir} stands for that folder, {seconds} for
the time that a build tells.

--update writes the transcripts anew. --keep puts the actual transcript of a failed case into a folder.
"""
import argparse
import difflib
import os
import re
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

CASES = Path(__file__).resolve().parent
SECONDS = re.compile(r'("seconds":)\d+\.\d+|\(\d+\.\d+ s\)')


def environment(program, folder):
    """No setting of the machine or the user reaches the program."""
    return {
        "PATH": f"{program.parent}:/usr/local/bin:/usr/bin:/bin",
        "HOME": f"{folder}/.home",
        "QUILLBOOK_REGISTRY": f"{folder}/.registry",
        "LC_ALL": "C.UTF-8",
        "TZ": "UTC",
        "ASAN_OPTIONS": os.environ.get("ASAN_OPTIONS", ""),
    }


def run_command(command, folder, env):
    """What a command prints, as it stands in a transcript."""
    done = subprocess.run(["/bin/sh", "-c", command], cwd=folder, env=env, stdin=subprocess.DEVNULL, timeout=120,
                          capture_output=True, check=False)
    out = done.stdout.decode("utf-8", "backslashreplace")
    err = done.stderr.decode("utf-8", "backslashreplace")
    text = out if not out or out.endswith("\n") else out + "\n"
    text += "".join(f"2> {line}\n" for line in err.splitlines())
    if done.returncode:
        text += f"[{done.returncode}]\n"
    text = text.replace(os.path.realpath(folder), "{dir}")
    return SECONDS.sub(lambda found: (found[1] or "") + "{seconds}", text)


def actual_transcript(case, program):
    commands = [line[2:] for line in (case / "transcript").read_text(encoding="utf-8").splitlines()
                if line.startswith("$ ")]
    if not commands:
        sys.exit(f"{case.name}: the transcript has no command")
    with tempfile.TemporaryDirectory(prefix="quillbook-") as folder:
        shutil.copytree(case, folder, dirs_exist_ok=True, ignore=shutil.ignore_patterns("transcript"))
        env = environment(program, folder)
        return "".join(f"$ {command}\n{run_command(command, folder, env)}" for command in commands)


def check(case, program, keep):
    expected = (case / "transcript").read_text(encoding="utf-8")
    actual = actual_transcript(case, program)
    if actual == expected:
        return True
    print("".join(difflib.unified_diff(expected.splitlines(True), actual.splitlines(True), f"{case.name}/transcript",
                                       f"{case.name}/actual")))
    if keep:
        Path(keep).mkdir(parents=True, exist_ok=True)
        Path(keep, f"{case.name}.actual").write_text(actual, encoding="utf-8")
    return False


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("program", type=Path)
    parser.add_argument("--update", action="store_true")
    parser.add_argument("--keep")
    parser.add_argument("cases", nargs="*")
    arguments = parser.parse_intermixed_args()
    program = arguments.program.resolve()
    names = arguments.cases or sorted(path.parent.name for path in CASES.glob("*/transcript"))
    failed = []
    for name in names:
        if arguments.update:
            (CASES / name / "transcript").write_text(actual_transcript(CASES / name, program), encoding="utf-8")
        elif not check(CASES / name, program, arguments.keep):
            failed.append(name)
    sys.exit(f"failed: {', '.join(failed)}" if failed else 0)


if __name__ == "__main__":
    main()
