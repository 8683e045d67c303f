#!/usr/bin/env python3
"""Checks that includes point one way: base <- platform <- failure <- services <- host <- objects <- cli.

usage: include_direction.py SOURCE_FOLDER

A file may include its own room and rooms below it. Public headers show no type of a library underneath. The command
line sees public headers only, as any client would. Prints one line a breach, and exits with 1 if there was one.
"""
import re
import sys
from pathlib import Path

ROOMS = ["base", "platform", "failure", "services", "host", "objects", "cli"]
OBJECT_FOLDERS = {"frame", "project", "topics", "links", "structure", "config", "generation"}
HIDDEN_LIBRARIES = re.compile(r"^(pugixml|pugiconfig|unicode/|fmt/|gumbo|curl/|CLI/)")
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


class Tree:
    """The rooms of a source tree, told from the folders of its files."""

    def __init__(self, root):
        self.root = root
        # Services and failure frame share the public folder "frame" with the objects; the source tells them apart.
        self.frame_rooms = {source.stem: room
                            for room in ("services", "failure")
                            for source in (root / "src/frame" / room).glob("*.*")}

    def room(self, path):
        parts = path.parts
        folder = parts[2] if parts[:2] == ("include", "quillbook") else parts[1]
        if folder == "frame":
            if parts[2] in ("services", "failure"):
                return parts[2]
            return self.frame_rooms.get(path.stem, "objects")
        return "objects" if folder in OBJECT_FOLDERS else folder

    def resolve(self, path, name):
        """The file of this project that an include names; nothing for a header of the system."""
        for base in (self.root / "include", self.root / "src", (self.root / path).parent):
            if (base / name).is_file():
                return (base / name).resolve().relative_to(self.root)
        return None

    def files(self):
        for folder in ("include/quillbook", "src"):
            for path in sorted((self.root / folder).rglob("*")):
                if path.suffix in (".h", ".cpp") and path.parent != self.root / "src":
                    yield path.relative_to(self.root)


def breaches(tree, path):
    room = tree.room(path)
    if room not in ROOMS:
        yield 1, f"stands in a folder of no known room, '{room}'"
        return
    public = path.parts[0] == "include"
    for number, line in enumerate((tree.root / path).read_text(encoding="utf-8").splitlines(), 1):
        found = INCLUDE.match(line)
        if not found:
            continue
        quoted, name = found[1] == '"', found[2]
        if public and HIDDEN_LIBRARIES.match(name):
            yield number, f"shows {name}: a public header hides the library underneath"
        target = tree.resolve(path, name) if quoted else None
        if quoted and not target:
            yield number, f"includes {name}, which is not there"
        if not target:
            continue
        if public and target.parts[0] == "src":
            yield number, f"includes {name}, which is not public"
        if room == "cli" and target.parts[:2] not in (("include", "quillbook"), ("src", "cli")):
            yield number, f"includes {name}: the command line uses public headers only"
        other = tree.room(target)
        if ROOMS.index(other) > ROOMS.index(room):
            yield number, f"includes {name}: {room} stands below {other}"


def main():
    tree = Tree(Path(sys.argv[1]).resolve())
    bad = 0
    for path in tree.files():
        for line, what in breaches(tree, path):
            print(f"{path}:{line}: {what}")
            bad += 1
    sys.exit(1 if bad else 0)


if __name__ == "__main__":
    main()
