#!/usr/bin/env python3
"""Builds projects into compiled help and compares what programs that know nothing of this one find in it with the
project file: files, contents and index.

usage: built_help_test.py QUILLBOOK [MSPACK_EXTRACT]
"""
import filecmp
import json
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as XML
from pathlib import Path

from readers_test import inner, readers

PROGRAM = Path(sys.argv[1]).resolve()
MSPACK = sys.argv[2] if len(sys.argv) > 2 else None
SAMPLES = Path(__file__).resolve().parent / "compiled_help"


def fail(text):
    sys.exit(text)


def included(topic):
    return topic.get("IncludeInHelpFile", "True") == "True"


def expected_contents(project):
    """Lines of level, title and page, read from the project file."""
    topics = {topic.get("Key"): topic for topic in project.iter("Topic")}
    lines = []

    def walk(nodes, level):
        for node in nodes:
            topic = topics.get(node.get("tid")) if node.get("nt") == "1" else None
            if topic is not None and not included(topic):
                continue
            title = node.get("c")
            if node.get("ct") == "1":
                title = topic.get("ContentsTitle") or topic.get("Title")
            page = f"{topic.get('Name')}.html" if topic is not None else node.get("url")
            lines.append((level, title, page))
            walk(node, level + 1)

    walk(project.find("Nodes"), 0)
    return lines


def expected_index(project):
    """Paths of keywords with their pages."""
    categories = {cat.get("Key"): cat for cat in project.iter("cat")}
    index = {}
    for topic in filter(included, project.iter("Topic")):
        words = [k.get("Value") for k in topic.findall("K")]
        paths = [word.split("|") for word in words if word[0] not in "!@"]
        if topic.get("Title") not in words:
            paths.append([topic.get("Title")])
        category = categories.get(topic.get("Category"))
        if category is not None and category.get("AutoIndex") == "True":
            paths.append([category.get("Name"), topic.get("Title")])
        for path in paths:
            # Keywords that differ in case only are one.
            index.setdefault(tuple(part.casefold() for part in path), set()).add(f"{topic.get('Name')}.html")
    return index


def found_index(report, joined):
    index, path = {}, []
    for entry in report["index"]:
        # The terms of Help 2 name all their levels.
        path = entry["keyword"].split(", ") if joined else path[:entry["level"]] + [entry["keyword"]]
        if entry["targets"]:
            index[tuple(part.casefold() for part in path)] = {target["page"] for target in entry["targets"]}
    return index


def check_files(name, kind, help_file, output, work):
    # Names of files of other systems aside, what the help holds stands in the output folder, byte for byte.
    for reader, extract in readers(MSPACK, kind).items():
        target = work / "extracted"
        extract(help_file, target)
        found = {str(path.relative_to(target)) for path in target.rglob("*") if path.is_file()}
        found = {file for file in found if not inner(file)}
        wanted = {str(path.relative_to(output)) for path in output.rglob("*") if path.is_file()}
        wanted = {file for file in wanted if not file.startswith("COL_") and not file.endswith((".bat", ".hhp"))}
        if found != wanted:
            fail(f"{name}.{kind}: {reader} lists other files: {sorted(found ^ wanted)}")
        for file in wanted:
            if not filecmp.cmp(output / file, target / file, shallow=False):
                fail(f"{name}.{kind}: {file} differs when {reader} reads it")
        shutil.rmtree(target)
        print(f"{name}: {len(wanted)} files of .{kind} by {reader}", flush=True)


def check(name, kind, work):
    source = SAMPLES / f"{name}.qbp"
    output = work / f"{name}-{kind}"
    help_file = work / f"{name}.{kind}"
    subprocess.run([PROGRAM, "build", source, "--profile", "HTML Help", "--output", output, "--help-file", help_file,
                    "--quiet"], check=True, timeout=60)
    check_files(name, kind, help_file, output, work)
    report = json.loads(subprocess.run([PROGRAM, "inspect", help_file, "--json"], check=True, capture_output=True,
                                       timeout=60).stdout)
    project = XML.parse(source).getroot()
    contents = [(line["level"], line["title"], line["page"]) for line in report["contents"]]
    if contents != expected_contents(project):
        fail(f"{name}.{kind}: the contents are {contents}, not {expected_contents(project)}")
    index = found_index(report, kind == "hxs")
    if index != expected_index(project):
        fail(f"{name}.{kind}: the index is {index}, not {expected_index(project)}")
    if report["title"] != project.get("Title").replace("&amp;", "&"):
        fail(f"{name}.{kind}: the title is {report['title']}")
    print(f"{name}.{kind}: {len(contents)} entries of contents, {len(index)} keywords", flush=True)


def main():
    with tempfile.TemporaryDirectory(prefix="quillbook-") as folder:
        for name in ("islands", "ostrova"):
            for kind in ("chm", "hxs"):
                check(name, kind, Path(folder))


if __name__ == "__main__":
    main()
