#!/usr/bin/env python3
"""Compiles help and reads it with programs that know nothing of this one: every file must come back byte for byte.

usage: readers_test.py QUILLBOOK [MSPACK_EXTRACT]
"""
import filecmp
import shutil
import subprocess
import sys
import tempfile
from pathlib import Path

SAMPLE = Path(__file__).resolve().parents[2] / "samples" / "help-project"
LANGUAGES = {"cp1252": (0x407, "Übersicht"), "cp1251": (0x419, "Печать"), "cp932": (0x411, "印刷")}
ITEM = '<LI><OBJECT type="text/sitemap"><param name="Name" value="{}"><param name="Local" value="{}"></OBJECT>\n'


def make_project(folder, pages, encoding, page_encoding):
    """A project with contents and index; the titles are in the language."""
    language, word = LANGUAGES[encoding]
    folder.mkdir()
    names = [f"html/page{number:05}.htm" for number in range(pages)]
    (folder / "html").mkdir()
    for number, name in enumerate(names):
        text = (f'<html><head><meta http-equiv="Content-Type" content="text/html; charset={page_encoding}">'
                f"<title>{word} {number}</title></head><body>" + f"<p>{word} {number * 7919}</p>\n" * 40 + "</body>")
        (folder / name).write_bytes(text.encode(page_encoding))
    items = "".join(ITEM.format(f"{word} {number}", name) for number, name in enumerate(names))
    for name in ("toc.hhc", "index.hhk"):
        (folder / name).write_bytes(f"<UL>\n{items}</UL>\n".encode(encoding))
    (folder / "big.bin").write_bytes(bytes(range(256)) * 2000)
    (folder / "empty.css").write_bytes(b"")
    (folder / "p.hhp").write_bytes(
        (f"[OPTIONS]\nContents file=toc.hhc\nIndex file=index.hhk\nLanguage={language:#x}\nTitle={word}\n"
         "Full-text search=Yes\nBinary TOC=Yes\n[FILES]\n" + "\n".join(names) + "\nbig.bin\nempty.css\n").encode(encoding))
    return folder / "p.hhp", names + ["toc.hhc", "index.hhk", "big.bin", "empty.css"]


def run(*command):
    done = subprocess.run([str(part) for part in command], capture_output=True, check=False, timeout=300)
    if done.returncode not in (0, 1):  # 1: 7-Zip's word for the program file in front of a .hxs
        sys.exit(f"{command}: exit code {done.returncode}: {done.stdout[-500:]}{done.stderr[-500:]}")


def readers(mspack, kind):
    found = {}
    seven = shutil.which("7zz") or shutil.which("7z")
    if seven:
        found["7-Zip"] = lambda file, folder: run(seven, "x", "-y", f"-o{folder}", file)
    if kind == "chm" and shutil.which("extract_chmLib"):
        found["CHMLib"] = lambda file, folder: run("extract_chmLib", file, folder)
    if kind == "chm" and mspack:
        found["libmspack"] = lambda file, folder: run(mspack, file, folder)
    if not found:
        sys.exit("no reader is installed: see the packages for tests")
    return found


def check(program, mspack, project, names, work, kind):
    output = work / f"out.{kind}"
    subprocess.run([program, "compile", project, "--output", output, "--quiet"], check=True, timeout=300)
    for reader, extract in readers(mspack, kind).items():
        target = work / "extracted"
        extract(output, target)
        for name in names:
            if not filecmp.cmp(project.parent / name, target / name, shallow=False):
                sys.exit(f"{project}: {name} differs when {reader} reads it")
        shutil.rmtree(target)
        print(f"{project.parent.name}: {len(names)} files by {reader}")


def main():
    program = Path(sys.argv[1]).resolve()
    mspack = sys.argv[2] if len(sys.argv) > 2 else None
    with tempfile.TemporaryDirectory(prefix="quillbook-") as folder:
        work = Path(folder)
        for pages, encoding, page_encoding in ((1, "cp1252", "cp1252"), (20, "cp1251", "utf-8"),
                                               (130, "cp932", "cp932"), (700, "cp1251", "cp1251")):
            project, names = make_project(work / f"{pages}-{encoding}-{page_encoding}", pages, encoding, page_encoding)
            check(program, mspack, project, names, work, "chm")
        sample = work / "sample"
        shutil.copytree(SAMPLE, sample)
        files = [str(path.relative_to(sample)) for path in sample.rglob("*") if path.suffix in (".htm", ".png", ".css")]
        check(program, mspack, sample / "lumiere.hhp", files + ["lumiere.hhc", "lumiere.hhk"], work, "chm")
        check(program, mspack, sample / "lumiere.HxC", files + ["lumiere.HxT", "lumiere_K.HxK"], work, "hxs")


if __name__ == "__main__":
    main()
