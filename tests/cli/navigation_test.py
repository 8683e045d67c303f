#!/usr/bin/env python3
"""Contents, index and search of compiled help, as readers other than the program's own see them.

In each code page a help is made at random, with more of everything than a block of a table holds. Its files are unpacked
by CHMLib. A reader of tables that was written for this test, PyCHM, and the program itself must all tell what went in.

usage: navigation_test.py QUILLBOOK
"""
import json
import random
import re
import subprocess
import sys
import tempfile
from pathlib import Path

from chm_tables import ChmTables, WordIndex, word as read_word, dword

PAGES = 90
ASSOCIATIONS = ('<OBJECT type="application/x-oleobject" classid="clsid:1e2a7bd0-dab9-11d0-b93a-00c04fc99f9e">'
                '<param name="ALink Name" value="{}"></OBJECT>')
PARAM = '<param name="{}" value="{}">'
READER = Path(__file__).with_name("foreign_reader.py")

LATIN = "abcdefghijklmnopqrstuvwxyzäöüßéàçñ"
CYRILLIC = "абвгдежзийклмнопрстуфхцчшщъыьэюя"
JAPANESE = "印刷写真画面設定保存編集選択表示追加削除検索用紙色調整日本語" "のをにはがで" "カメラアルバムソフトポイント"


class Language:
    def __init__(self, locale, encoding, code_page, letters, foreign):
        self.locale, self.encoding, self.code_page, self.letters, self.foreign = \
            locale, encoding, code_page, letters, foreign
        self.random = random.Random(locale)
        self.vocabulary = [self.new_word() for _ in range(900)]

    @property
    def has_blanks(self):
        return self.letters is not JAPANESE

    def new_word(self):
        text = "".join(self.random.choice(self.letters) for _ in range(self.random.randint(2, 9)))
        return text.capitalize() if self.random.random() < 0.3 and not text.startswith("ß") else text

    def words(self, count):
        chosen = (self.random.choice(self.vocabulary) for _ in range(count))
        return (" " if self.has_blanks else "。").join(chosen)


LANGUAGES = [Language(0x407, "cp1252", 1252, LATIN, "印刷 слово"), Language(0x419, "cp1251", 1251, CYRILLIC, "印刷 été"),
             Language(0x411, "cp932", 932, JAPANESE, "été ñandú")]


def escaped(text):
    return text.replace("&", "&amp;").replace('"', "&quot;").replace("<", "&lt;")


class Help:
    """A help project made at random, and what it holds."""

    def __init__(self, language, folder):
        self.language, self.folder, self.random = language, folder, language.random
        folder.mkdir()
        self.pages = {}  # title and text by path
        self.associations = {}  # titles and addresses by name
        self.context_ids = {}
        self.stop_words = {word.lower() for word in language.vocabulary[:5]} if language.has_blanks else set()
        self.title = language.words(2) + " & <\"1\">"
        self.make_pages()
        self.contents = self.make_contents()
        self.index = self.make_index()
        self.write_project()

    def write(self, name, text, encoding=None):
        (self.folder / name).parent.mkdir(exist_ok=True)
        (self.folder / name).write_bytes(text.encode(encoding or self.language.encoding))

    def make_pages(self):
        for number in range(PAGES):
            encoding = "utf-8" if number % 2 else self.language.encoding
            title = f"{self.language.words(2)} {number}"
            text = f"{self.language.words(60)} n{number}"
            if encoding == "utf-8":
                text += f" {self.language.foreign} {self.language.words(3)}"
            path = f"html/page{number:03}.htm"
            self.pages[path] = (title, text)
            names = list(dict.fromkeys(word.lower() for word in self.random.sample(self.language.vocabulary[:60], 3)))
            for name in names:
                self.associations.setdefault(name, []).append((title, path))
            self.context_ids[1000 + 7 * number] = path
            self.write(path, f'<html><head><meta http-equiv="Content-Type" content="text/html; charset={encoding}">'
                             f"<title>{title}</title></head><body>{ASSOCIATIONS.format(';'.join(names))}<p>{text}</p></body></html>", encoding)

    def target(self):
        anchor = "#place" if self.random.random() < 0.2 else ""
        return self.random.choice(list(self.pages)) + anchor

    def make_contents(self):
        entries = []
        for book in range(14):
            entries.append((0, self.language.words(2) + f" & {book}", None if book % 3 else self.target()))
            for _ in range(self.random.randint(1, 12)):
                entries.append((1, self.language.words(2), self.target()))
                for _ in range(self.random.randint(0, 3)):
                    entries.append((2, self.language.words(1), self.target()))
        return entries

    def make_index(self):
        """(path, targets, see also) by path."""
        index = {}
        for word in dict.fromkeys(word.lower() for word in self.language.vocabulary[:350]):
            if self.random.random() < 0.1:
                index[(word,)] = ([], self.random.choice(self.language.vocabulary))
                continue
            index[(word,)] = (self.make_targets(), "")
            for sub in dict.fromkeys(word.lower() for word in self.random.sample(self.language.vocabulary, 2)):
                if self.random.random() < 0.3:
                    index[(word, sub)] = (self.make_targets(), "")
        return index

    def make_targets(self):
        targets = {self.target(): self.language.words(2) for _ in range(self.random.randint(1, 4))}
        return [(title, path) for path, title in targets.items()]

    def write_project(self):
        language = self.language
        self.write("toc.hhc", self.sitemap((level, PARAM.format("Name", escaped(name)) +
                                            (PARAM.format("Local", path.replace("/", "\\")) if path else ""))
                                           for level, name, path in self.contents))
        self.write("keys.hhk", self.sitemap(
            (len(path) - 1, PARAM.format("Name", path[-1]) +
             "".join(PARAM.format("Name", title) + PARAM.format("Local", local) for title, local in targets) +
             (PARAM.format("See Also", other) if other else ""))
            for path, (targets, other) in self.index.items()))
        self.write("stop.stp", "\r\n".join(self.stop_words))
        self.write("p.hhp", f"[OPTIONS]\nCompiled file=p.chm\nContents file=toc.hhc\nIndex file=keys.hhk\n"
                            f"Default topic=html\\page007.htm\nTitle={self.title}\nLanguage={language.locale:#x}\n"
                            "Full-text search=Yes\nBinary TOC=Yes\nBinary Index=Yes\n"
                            "Full text search stop list file=stop.stp\nDefault Window=main\n[WINDOWS]\n"
                            f'main="{self.pages_title()}","toc.hhc","keys.hhk","html\\page007.htm","html\\page002.htm"'
                            ",,,,,0x63520,220,0x10384e,[80,60,1000,700],0xb0000,,,,,,0\n[FILES]\n" +
                   "\n".join(self.pages) + "\n[ALIAS]\n" +
                   "".join(f"ID{number}={path}\n" for number, path in self.context_ids.items()) + "[MAP]\n" +
                   "".join(f"#define ID{number} {number}\n" for number in self.context_ids))

    def pages_title(self):
        """The title of some page."""
        return self.pages["html/page003.htm"][0]

    @staticmethod
    def sitemap(entries):
        text, depth = "<HTML><BODY>\n", -1
        for level, parameters in entries:
            text += "<UL>" * (level - depth) + "</UL>" * (depth - level)
            text += f'<LI><OBJECT type="text/sitemap">{parameters}</OBJECT>\n'
            depth = level
        return text + "</UL>" * (depth + 1) + "</BODY></HTML>\n"

    def page_words(self, path):
        """The words of title and text in order; none where the index has no word: a stop word, or foreign letters."""
        for text in self.pages[path]:
            for word in re.findall(r"\w+", text.lower()):
                try:
                    yield None if word in self.stop_words else word.encode(self.language.encoding)
                except UnicodeEncodeError:
                    yield None


def expect(found, wanted, what):
    if found != wanted:
        sys.exit(f"{what}:\n  found  {str(found)[:1500]}\n  wanted {str(wanted)[:1500]}")


def check_tables(made, tables):
    language = made.language
    system = tables.system()
    expect(tables.text(system[3]), made.title, "title")
    expect(tables.text(system[2]), "html/page007.htm", "default topic")
    expect((tables.text(system[0]), tables.text(system[1])), ("toc.hhc", "keys.hhk"), "contents and index file")
    expect(dword(system[4], 0), language.locale, "language")
    expect(dword(system[4], 4), int(language.code_page == 932), "whether characters have two bytes")
    expect([dword(system[4], at) for at in (8, 12)], [1, 1], "whether there is search and index")
    titles = {path: title for title, path in (tables.topic(i) for i in reversed(range(tables.topic_count())))}
    expect({path: titles[path] for path in made.pages}, {path: title for path, (title, _) in made.pages.items()},
           "titles of pages")
    contents = tables.contents()
    expect(contents, made.contents, "contents")
    keywords = tables.keywords()
    check_keywords(made, keywords)
    associations = {name: sorted(targets) for name, _, _, targets, _ in tables.keywords("$WWAssociativeLinks")}
    expect(associations, {name: sorted(targets) for name, targets in made.associations.items()}, "associative links")
    expect(tables.context_ids(), made.context_ids, "context ids")
    expect(tables.windows(), [("main", made.pages_title(), "toc.hhc", "keys.hhk", "html/page007.htm",
                               "html/page002.htm")], "windows")
    tree = tables.table("$WWKeywordLinks/BTree")
    expect((dword(tree, 0x30), dword(tree, 0x34)), (language.code_page, language.locale), "code page of the index")
    expect(read_word(tree, 0x2A) > 1, True, "index of several levels")
    return contents, keywords


def check_keywords(made, keywords):
    found, path = {}, []
    for name, last, level, targets, other in keywords:
        path = path[:level] + [last]
        expect(", ".join(path), name, "path of a keyword")
        found[tuple(path)] = (targets, other)
    expect(len(found), len(keywords), "different keywords")
    expect(found, made.index, "keywords")


def check_words(made, tables):
    """Every word of every page at its place, and nothing else."""
    language = made.language
    index = WordIndex(tables.table("$FIftiMain"))
    expect((index.code_page, index.language, index.pages), (language.code_page, language.locale, PAGES), "word index")
    expect(index.depth > 1, True, "word index of several levels")
    numbers = {}
    for number in reversed(range(tables.topic_count())):
        numbers[tables.topic(number)[1]] = number
    found = {number: {} for number in range(tables.topic_count())}
    different, total = [], 0
    for word, in_title, places in index.words():
        different.append((word, in_title))
        for topic, positions in places.items():
            for position in positions:
                expect(position in found[topic], False, "two words at one place")
                found[topic][position] = (word, in_title)
                total += 1
    expect(different, sorted(set(different)), "order of words")
    expect((total, len(different)), (index.total, index.different), "number of words")
    for path, (title, text) in made.pages.items():
        words = found.pop(numbers[path])
        if language.has_blanks:
            titled = len(re.findall(r"\w+", title))
            wanted = {i: (word, i < titled) for i, word in enumerate(made.page_words(path)) if word}
            expect(words, wanted, f"words of {path}")
        else:
            # How words are divided is the dictionary's matter; together they are the text.
            for part, in_title in ((title, True), (text.replace(language.foreign, ""), False)):
                joined = b"".join(word for _, (word, mark) in sorted(words.items()) if mark == in_title)
                expect(joined.decode(language.encoding), "".join(re.findall(r"\w+", part.lower())), f"text of {path}")
            expect(sorted(words)[-1] + 1 - len(words), 2, f"places of foreign words in {path}") if \
                language.foreign in text else expect(sorted(words), list(range(len(words))), f"places of {path}")
    expect(any(found.values()), False, "words of other topics")
    return {word: {tables.topic(topic)[1] for topic in index.find(word)} for word, _ in different}


def check_foreign_reader(made, file, hits):
    chosen = made.random.sample(sorted(hits), 80)
    absent = [word for word in (b"nowhere", b"\xef\xf0\xe8\xe2\xe5\xf2") if word not in hits]
    answer = subprocess.run(["/usr/bin/python3", READER, file], check=True, capture_output=True, timeout=300,
                            input=json.dumps([word.hex() for word in chosen + absent]).encode())
    told = json.loads(answer.stdout)
    encoding = made.language.encoding
    expect(bytes.fromhex(told["title"]).decode(encoding), made.title, "PyCHM: title")
    expect(bytes.fromhex(told["home"]), b"/html/page007.htm", "PyCHM: default topic")
    expect(told["language"], made.language.locale, "PyCHM: language")
    expect(told["searchable"], True, "PyCHM: whether there is a search")
    for name, text in (("contents", "toc.hhc"), ("index", "keys.hhk")):
        expect(bytes.fromhex(told[name]), (made.folder / text).read_bytes(), f"PyCHM: {name}")
    for word in chosen + absent:
        expect({bytes.fromhex(path).decode() for path in told["hits"][word.hex()]}, hits.get(word, set()),
               f"PyCHM: pages with {word.decode(encoding, 'replace')}")
    return len(chosen)


def check_own_reader(program, made, file, contents, keywords):
    told = json.loads(subprocess.run([program, "inspect", file, "--json"], check=True, capture_output=True,
                                     timeout=300).stdout)
    expect([(entry["level"], entry["title"], entry["page"].replace("\\", "/") or None) for entry in told["contents"]],
           contents, "own reader: contents")
    own = sorted((entry["level"], entry["keyword"], entry["seeAlso"],
                  [(target["title"], target["page"]) for target in entry["targets"]]) for entry in told["index"])
    expect(own, sorted((level, last, other, targets) for _, last, level, targets, other in keywords),
           "own reader: index")
    expect((told["title"], told["language"], told["codePage"], told["defaultTopic"], told["problems"]),
           (made.title, made.language.locale, made.language.code_page, "html/page007.htm", []), "own reader: facts")


def main():
    program = Path(sys.argv[1]).resolve()
    with tempfile.TemporaryDirectory(prefix="quillbook-") as work:
        for language in LANGUAGES:
            folder = Path(work) / language.encoding
            made = Help(language, folder)
            subprocess.run([program, "compile", folder / "p.hhp", "--quiet"], check=True, timeout=300,
                           capture_output=True)
            subprocess.run(["extract_chmLib", folder / "p.chm", folder / "out"], check=True, capture_output=True,
                           timeout=300)
            tables = ChmTables(folder / "out", language.encoding)
            contents, keywords = check_tables(made, tables)
            hits = check_words(made, tables)
            asked = check_foreign_reader(made, folder / "p.chm", hits)
            check_own_reader(program, made, folder / "p.chm", contents, keywords)
            print(f"{language.encoding}: {len(contents)} contents entries, {len(keywords)} keywords, {len(hits)} words, "
                  f"{asked} of them found by PyCHM")


if __name__ == "__main__":
    main()
