#!/usr/bin/env python3
"""Compiles help and reads it with programs that know nothing of this one: every file must come back byte for byte.

usage: readers_test.py QUILLBOOK [MSPACK_EXTRACT [PAGES...]]

With numbers of pages, only help of these sizes is made and read, in both formats.
"""
import filecmp
import random
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
    others = ["toc.hhc", "index.hhk"]
    for name, data in patterns(word).items():
        (folder / name).parent.mkdir(exist_ok=True)
        (folder / name).write_bytes(data)
        others.append(name)
    listed = [name.encode(encoding) for name in names + others[2:]]
    options = (f"[OPTIONS]\nContents file=toc.hhc\nIndex file=index.hhk\nLanguage={language:#x}\nTitle={word}\n"
               "Full-text search=Yes\nBinary TOC=Yes\nBinary Index=Yes\n[FILES]\n")
    (folder / "p.hhp").write_bytes(options.encode(encoding) + b"\n".join(listed) + b"\n")
    return folder / "p.hhp", names + others


def make_collection(folder, names):
    """The same files as a collection."""
    (folder / "c.HxC").write_text('<HelpCollection Title="T"><CompilerOptions><IncludeFile File="c.HxF"/>'
                                  "</CompilerOptions></HelpCollection>")
    items = "".join(f'<File Url="{name.replace("&", "&amp;")}"/>' for name in names)
    (folder / "c.HxF").write_text(f"<HelpFileList>{items}</HelpFileList>", encoding="utf-8")
    return folder / "c.HxC"


def patterns(word):
    """Files that are hard to compress or to place, under names of several kinds."""
    chance = random.Random(17)
    files = {"empty.css": b"", "one": b"x", f"{word} 1.txt": word.encode(), "zeros.bin": bytes(200_000),
             "noise.bin": chance.randbytes(200_000), "a b & c'd;[1].txt": b"name", "folder.x/UPPER.TXT": b"upper"}
    for period in (1, 2, 3, 4, 32767, 32768, 65535, 65536, 65537):
        files[f"period{period}.bin"] = (chance.randbytes(period) * (150_000 // period + 1))[:150_000]
    for size in (32767, 32768, 32769, 65535, 65536, 65537):
        files[f"size{size}.bin"] = bytes(chance.choices(b"abcde", k=size))
    return files


def run(*command, good=(0,)):
    done = subprocess.run([str(part) for part in command], capture_output=True, check=False, timeout=600)
    if done.returncode not in good:
        sys.exit(f"{command}: exit code {done.returncode}: {done.stdout[-500:]}{done.stderr[-500:]}")


def readers(mspack, kind):
    """All of them must be there: a reader that is missing would pass unseen."""
    seven = shutil.which("7zz") or shutil.which("7z")
    if not seven or not shutil.which("extract_chmLib"):
        sys.exit("7-Zip or extract_chmLib is missing: install the packages for tests")
    good = (0, 1) if kind == "hxs" else (0,)  # 7-Zip's word for the program file in front of a .hxs is 1
    found = {"7-Zip": lambda file, folder: run(seven, "x", "-y", f"-o{folder}", file, good=good)}
    if kind == "chm":
        found["CHMLib"] = lambda file, folder: run("extract_chmLib", file, folder)
    if kind == "chm" and mspack:
        found["libmspack"] = lambda file, folder: run(mspack, file, folder)
    return found


def inner(path):
    """Whether a name is of the container's own streams."""
    return path.startswith(("#", "$", "::"))


def compile_help(program, project, output):
    subprocess.run([program, "compile", project, "--output", output, "--quiet"], check=True, timeout=600)


def check_same(program, project, output, work):
    """The same files, made in another order elsewhere, give the same bytes."""
    copy = work / "copy"
    for path in sorted((path for path in project.parent.rglob("*") if path.is_file()), reverse=True):
        target = copy / path.relative_to(project.parent)
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copyfile(path, target)
    (work / "again").mkdir(exist_ok=True)
    again = work / "again" / output.name
    compile_help(program, copy / project.name, again)
    if not filecmp.cmp(output, again, shallow=False):
        sys.exit(f"{project}: a copy gives other bytes")
    shutil.rmtree(copy)


def check(program, mspack, project, names, work, kind):
    output = work / f"out.{kind}"
    compile_help(program, project, output)
    for reader, extract in readers(mspack, kind).items():
        target = work / "extracted"
        extract(output, target)
        found = {str(path.relative_to(target)) for path in target.rglob("*") if path.is_file()}
        found = {name for name in found if not inner(name)}
        if found != set(names):
            sys.exit(f"{project}: {reader} lists other files: {sorted(found ^ set(names))[:9]}")
        for name in names:
            if not filecmp.cmp(project.parent / name, target / name, shallow=False):
                sys.exit(f"{project}: {name} differs when {reader} reads it")
        shutil.rmtree(target)
        print(f"{project.parent.name}: {len(names)} files of .{kind} by {reader}", flush=True)
    if len(names) < 1000:
        check_same(program, project, output, work)


def check_pages(program, mspack, work, pages, encoding, page_encoding):
    project, names = make_project(work / f"{pages}-{encoding}-{page_encoding}", pages, encoding, page_encoding)
    check(program, mspack, project, names, work, "chm")
    collection = make_collection(project.parent, names)
    check(program, mspack, collection, names + ["c.HxC", "c.HxF"], work, "hxs")
    shutil.rmtree(project.parent)


def check_sample(program, mspack, work):
    sample = work / "sample"
    shutil.copytree(SAMPLE, sample)
    files = [str(path.relative_to(sample)) for path in sample.rglob("*") if path.suffix in (".htm", ".png", ".css")]
    check(program, mspack, sample / "lumiere.hhp", files + ["lumiere.hhc", "lumiere.hhk"], work, "chm")
    collection = [path.name for path in sample.glob("lumiere*.Hx?")]
    check(program, mspack, sample / "lumiere.HxC", files + collection, work, "hxs")


def main():
    program = Path(sys.argv[1]).resolve()
    mspack = sys.argv[2] if len(sys.argv) > 2 else None
    sizes = [(int(pages), "cp1251", "utf-8") for pages in sys.argv[3:]]
    with tempfile.TemporaryDirectory(prefix="quillbook-") as folder:
        work = Path(folder)
        for pages, encoding, page_encoding in sizes or ((1, "cp1252", "cp1252"), (20, "cp1251", "utf-8"),
                                                        (130, "cp932", "cp932"), (2000, "cp1251", "cp1251")):
            check_pages(program, mspack, work, pages, encoding, page_encoding)
        if not sizes:
            check_sample(program, mspack, work)


if __name__ == "__main__":
    main()
