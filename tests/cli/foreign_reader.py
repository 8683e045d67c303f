#!/usr/bin/python3
"""Asks PyCHM, a reader that knows nothing of this program, about a compiled help file.

usage: foreign_reader.py FILE < WORDS

WORDS is a list of words in JSON, each as the hexadecimal form of its bytes; so are all texts in the answer. Run it with
Debian's own Python, which has the package.
"""
import json
import sys

from chm import chm


def main():
    file = chm.CHMFile()
    if not file.LoadCHM(sys.argv[1]):
        sys.exit("PyCHM can't open the file")
    hits = {}
    for word in json.load(sys.stdin):
        # It stops at the first entry of a word, which may have one for bodies and one for titles.
        found = [path for in_title in (0, 1) for path in file.Search(bytes.fromhex(word), 1, in_title)[1].values()]
        hits[word] = sorted(path.hex() for path in set(found))
    print(json.dumps({
        "title": file.title.hex(), "home": file.home.hex(), "language": file.lcid,
        "contents": file.GetTopicsTree().hex(), "index": file.GetIndex().hex(),
        "searchable": bool(file.IsSearchable()), "hits": hits}))


if __name__ == "__main__":
    main()
