#!/usr/bin/env python3
"""Makes a help project of many pages, the same at every run: make_help.py PAGES FOLDER

Pages of some 5.6 KB with words of uneven frequency, links, a contents tree of two levels and an index with as many
keywords as there are pages.
"""
import random
import sys
from pathlib import Path

ITEM = ('<LI> <OBJECT type="text/sitemap">\n<param name="Name" value="{}">\n<param name="Local" value="{}">\n'
        "</OBJECT>\n")
HEADING = '<LI> <OBJECT type="text/sitemap">\n<param name="Name" value="{}">\n</OBJECT>\n'
OPTIONS = """[OPTIONS]
Compatibility=1.1 or later
Compiled file=out.chm
Contents file=toc.hhc
Index file=index.hhk
Default topic=html/page00000.htm
Default Window=main
Title=Help of many pages
Language=0x409 English (United States)
Full-text search=Yes
Binary TOC=Yes
Binary Index=Yes

[WINDOWS]
main="Help","toc.hhc","index.hhk","html/page00000.htm","html/page00000.htm",,,,,0x63520,220,0x10384e,[80,60,1000,700],0xb0000,,,,,,0

[FILES]
"""


def main():
    count, folder = int(sys.argv[1]), Path(sys.argv[2])
    (folder / "html").mkdir(parents=True, exist_ok=True)
    chance = random.Random(7)
    words = ["".join(chance.choice("etaoinshrdlucmfwypvbgkjqxz") for _ in range(chance.randint(2, 10)))
             for _ in range(12000)]
    weights = [1 / (place + 1) for place in range(len(words))]
    names = [f"html/page{number:05}.htm" for number in range(count)]
    for number, name in enumerate(names):
        some = chance.choices(words, weights, k=700)
        body = "".join(
            f"<h2>{' '.join(some[at:at + 3])}</h2>\n<p class=\"text\">{' '.join(some[at + 3:at + 60])} "
            f'<a href="page{chance.randrange(count):05}.htm">{some[at + 60]}</a> '
            f"<b>{' '.join(some[at + 61:at + 70])}</b>.</p>\n" for at in range(0, 700, 70))
        (folder / name).write_text(
            '<html><head><meta http-equiv="Content-Type" content="text/html; charset=windows-1252">'
            f'<title>Page {number} {some[0]}</title><link rel="stylesheet" href="style.css"></head>\n'
            f"<body>\n{body}</body></html>\n")
    (folder / "html/style.css").write_text("body { font: 10pt Arial }\n")
    contents = ""
    for first in range(0, count, 20):
        contents += HEADING.format(f"Chapter {first // 20}") + "<UL>\n"
        contents += "".join(ITEM.format(f"Topic {number}", names[number])
                            for number in range(first, min(count, first + 20))) + "</UL>\n"
    keywords = sorted({f"{words[i % len(words)]} {words[i * 7 % len(words)]}" for i in range(count)})
    index = "".join(ITEM.format(keyword, names[i % count]) for i, keyword in enumerate(keywords))
    for name, items in (("toc.hhc", contents), ("index.hhk", index)):
        (folder / name).write_text(f"<HTML><HEAD><!-- Sitemap 1.0 --></HEAD><BODY><UL>\n{items}</UL></BODY></HTML>\n")
    (folder / "p.hhp").write_text(OPTIONS + "\n".join(names) + "\nhtml/style.css\n")


if __name__ == "__main__":
    main()
