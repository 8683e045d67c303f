#!/usr/bin/env python3
"""Builds and runs the sample against an installed Quillbook, or against its sources.

usage: install_test.py package|subdirectory SOURCE BUILD WORK CMAKE-SETTING...
"""
import os
import shutil
import subprocess
import sys
from pathlib import Path


def run(*command, **more):
    """Runs a command; what it printed is shown only if it failed."""
    done = subprocess.run([str(word) for word in command], stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          check=False, **more)
    if done.returncode:
        print(done.stdout)
        sys.exit(f"{' '.join(map(str, command))} ended with {done.returncode}")
    return done.stdout


def build(folder, work, *definitions):
    run("cmake", "-S", folder, "-B", work, "-G", "Ninja", *definitions)
    run("cmake", "--build", work)


def check_sample(program, source, work):
    """The sample writes a project that the schema accepts, and builds its page."""
    folder = work / "garden"
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    run(program, folder / "garden.qbp", env=os.environ | {"QUILLBOOK_REGISTRY": str(folder)})
    run("xmllint", "--noout", "--relaxng", source / "configuration/schema/qbp.rng", folder / "garden.qbp")
    page = (folder / "watering.html").read_text(encoding="utf-8")
    if "<p>Little and often.</p>" not in page:
        sys.exit(f"the page lacks its text:\n{page}")


def check_package(source, build_folder, work, settings):
    prefix = work / "prefix"
    shutil.rmtree(prefix, ignore_errors=True)
    run("cmake", "--install", build_folder, "--prefix", prefix)
    build(source / "tests/install/package", work / "build", f"-DCMAKE_PREFIX_PATH={prefix}",
          f"-DSAMPLES={source / 'samples'}", *settings)
    for library in ("Objects", "ObjectsShared"):
        check_sample(work / "build" / f"new_project_{library}", source, work)
    check_installed_program(prefix, source, work)


def check_installed_program(prefix, source, work):
    """The installed program takes its configuration from where it is installed."""
    moved = work / "moved"
    shutil.rmtree(moved, ignore_errors=True)
    prefix.rename(moved)
    template = moved / "share/quillbook/configuration/Templates/Quillbook Web/scraps/skip.html"
    template.write_text("THE INSTALLED TEMPLATE", encoding="utf-8")
    run(moved / "bin/quillbook", "build", source / "docs/manual/manual.qbp", "--output", work / "manual",
        env=os.environ | {"QUILLBOOK_REGISTRY": str(work)})
    if "THE INSTALLED TEMPLATE" not in (work / "manual/index.html").read_text(encoding="utf-8"):
        sys.exit("the installed program doesn't use the installed configuration")


def main():
    way, settings = sys.argv[1], sys.argv[5:]
    source, build_folder, work = map(Path, sys.argv[2:5])
    if way == "package":
        check_package(source, build_folder, work, settings)
    else:
        build(source / "tests/install/subdirectory", work / "build", f"-DQUILLBOOK={source}", *settings)
        check_sample(work / "build/sample/new_project", source, work)


if __name__ == "__main__":
    main()
