"""Reads the tables of compiled HTML Help that a viewer finds its way by.

Written from public descriptions of the format, without a look at the program's own reader: it is there to find out
whether both mean the same. It takes files as another program has unpacked them.
"""
import struct
from pathlib import Path


def word(data, at):
    return struct.unpack_from("<H", data, at)[0]


def dword(data, at):
    return struct.unpack_from("<I", data, at)[0]


class FormatError(Exception):
    pass


def demand(condition, what):
    if not condition:
        raise FormatError(what)


class ChmTables:
    def __init__(self, folder, encoding):
        self.folder = Path(folder)
        self.encoding = encoding
        self.strings, self.topics, self.url_table, self.url_strings = (
            self.table(name) for name in ("#STRINGS", "#TOPICS", "#URLTBL", "#URLSTR"))

    def table(self, name):
        return (self.folder / name).read_bytes()

    def text(self, data):
        return data.split(b"\0")[0].decode(self.encoding)

    def system(self):
        """Records of #SYSTEM by their code."""
        data, at, records = self.table("#SYSTEM"), 4, {}
        demand(dword(data, 0) == 3, "version of #SYSTEM")
        while at < len(data):
            code, length = struct.unpack_from("<HH", data, at)
            records[code] = data[at + 4:at + 4 + length]
            demand(len(records[code]) == length, "record of #SYSTEM")
            at += 4 + length
        return records

    def string(self, offset):
        demand(offset < len(self.strings), "offset in #STRINGS")
        text = self.strings[offset:].split(b"\0")[0]
        demand(offset // 4096 == (offset + len(text)) // 4096, "string across blocks")
        return text.decode(self.encoding)

    def topic_count(self):
        demand(len(self.topics) % 16 == 0, "length of #TOPICS")
        return len(self.topics) // 16

    def topic(self, number):
        """Title (none without one) and address of a topic."""
        demand(number < self.topic_count(), "number of a topic")
        _, title, row, kind, _ = struct.unpack_from("<IIIHH", self.topics, number * 16)
        demand(kind in (2, 6), "kind of a topic")
        demand(row % 4096 % 12 == 0 and row % 4096 < 341 * 12, "row of #URLTBL")
        _, back, address = struct.unpack_from("<III", self.url_table, row)
        demand(self.row_of(back) == row, "topic that a row of #URLTBL names")
        return None if title == 0xFFFFFFFF else self.string(title), self.text(self.url_strings[address + 8:])

    def row_of(self, number):
        return dword(self.topics, number * 16 + 8)

    def contents(self):
        """Level, name and address of every entry, in document order; no address for a heading."""
        data, entries = self.table("#TOCIDX"), []
        open_entries = [(dword(data, 0), 0, 0)]
        places = {}
        while open_entries:
            at, parent, level = open_entries.pop()
            flags, reference, above, following = struct.unpack_from("<IIII", data, at + 4)
            demand(above == parent, "parent of a contents entry")
            demand(at // 4096 == (at + (28 if flags & 4 else 20) - 1) // 4096, "contents entry across blocks")
            if flags & 8:
                entries.append((level, *self.topic(reference)))
                places[at] = reference
            else:
                entries.append((level, self.string(reference), None))
            if following:
                open_entries.append((following, parent, level))
            if flags & 4:
                open_entries.append((dword(data, at + 20), at, level + 1))
        self.check_places(data, places)
        return entries

    def check_places(self, data, places):
        """Pages lead to their contents entries, and a list at the end names all of these in document order."""
        for number in range(self.topic_count()):
            place, _, _, kind, _ = struct.unpack_from("<IIIHH", self.topics, number * 16)
            demand((kind == 6) == (place != 0), "contents place of a topic")
            if place:
                demand(self.topic(places[place])[1] == self.topic(number)[1], "contents entry of a topic")
        at, count, topics = dword(data, 4), dword(data, 8), dword(data, 12)
        demand(count == len(places), "number of pages in the contents")
        for i, (place, reference) in enumerate(places.items()):
            demand(dword(data, at + 16 * i) == place, "list of contents entries")
            demand(dword(data, at + 16 * i + 8) == topics + 4 * i, "list of contents entries, second part")
            demand(dword(data, topics + 4 * i) == reference, "list of topics in the contents")

    def keywords(self, folder="$WWKeywordLinks"):
        """Path, list of (title, address) and See Also of every keyword, in the order of the index."""
        tree = self.table(f"{folder}/BTree")
        demand(tree[:2] == b"\x3B\x29" and word(tree, 4) == 2048, "header of the index")
        last, root, blocks, depth, count = dword(tree, 0x1A), dword(tree, 0x1E), dword(tree, 0x26), word(tree, 0x2A), \
            dword(tree, 0x2C)
        demand(len(tree) == 0x4C + 2048 * blocks, "length of the index")
        listing, first_keys = [], {}
        self.walk_tree(tree, root, depth, listing, first_keys)
        demand(listing[-1] == last, "last block of the index")
        keywords, firsts = [], []
        for i, block in enumerate(listing):
            data = tree[0x4C + 2048 * block:][:2048]
            before, after = dword(data, 4), dword(data, 8)
            demand(before == (listing[i - 1] if i else 0xFFFFFFFF), "block before")
            demand(after == (listing[i + 1] if i + 1 < len(listing) else 0xFFFFFFFF), "block after")
            firsts.append((len(keywords), block))
            at = 12
            for _ in range(word(data, 2)):
                entry, at = self.keyword(data, at)
                demand(dword(data, at) == 1 and dword(data, at + 4) == 13 * len(keywords), "end of a keyword")
                at += 8
                if len(keywords) == firsts[-1][0]:
                    demand(first_keys.get(block, entry[0]) == entry[0], "keyword that leads to a block")
                keywords.append(entry)
            demand(word(data, 0) == 2048 - at, "free room of a block")
        demand(len(keywords) == count, "number of keywords")
        table = self.table(f"{folder}/Map")
        demand(word(table, 0) == len(firsts), "length of the map")
        for i, pair in enumerate(firsts):
            demand(struct.unpack_from("<II", table, 2 + 8 * i) == pair, "map of the index")
        demand(len(self.table(f"{folder}/Data")) == 13 * count, "data of the index")
        return keywords

    def context_ids(self):
        """Address by number."""
        data = self.table("#IVB")
        demand(dword(data, 0) == len(data) - 4, "length of #IVB")
        pairs = struct.iter_unpack("<II", data[4:])
        return {number: self.string(offset) for number, offset in pairs}

    def windows(self):
        """Name, title, contents and index file, first page and home of every window."""
        data = self.table("#WINDOWS")
        demand(dword(data, 4) == 196 and len(data) == 8 + 196 * dword(data, 0), "length of #WINDOWS")
        return [tuple(self.string(dword(data, at + field)) for field in (0x08, 0x14, 0x60, 0x64, 0x68, 0x6C))
                for at in range(8, len(data), 196)]

    def walk_tree(self, tree, block, depth, listing, first_keys):
        """Lists the lowest blocks from left to right."""
        if depth == 1:
            listing.append(block)
            return
        data = tree[0x4C + 2048 * block:][:2048]
        self.walk_tree(tree, dword(data, 4), depth - 1, listing, first_keys)
        at = 8
        for _ in range(word(data, 2)):
            entry, at = self.keyword(data, at)
            child = dword(data, at)
            at += 4
            if depth == 2:
                first_keys[child] = entry[0]
            self.walk_tree(tree, child, depth - 1, listing, first_keys)
        demand(word(data, 0) == 2048 - at, "free room of an index block")

    def keyword(self, data, at):
        name, at = self.utf16(data, at)
        see_also, level, start, _, count = struct.unpack_from("<HHIII", data, at)
        at += 16
        # The path is one text; only the place of its last part is told.
        last = name.encode("utf-16-le")[2 * start:].decode("utf-16-le")
        if see_also:
            other, at = self.utf16(data, at)
            return (name, last, level, [], other), at
        topics = [self.topic(dword(data, at + 4 * i)) for i in range(count)]
        return (name, last, level, topics, ""), at + 4 * count

    @staticmethod
    def utf16(data, at):
        end = at
        while word(data, end):
            end += 2
        return data[at:end].decode("utf-16-le"), end + 2


class WordIndex:
    """$FIftiMain."""
    HEADER, NODE = 0x400, 4096

    def __init__(self, data):
        self.data = data
        demand(data[:4] == b"\0\0\x28\0" and dword(data, 0x2E) == self.NODE, "header of the word index")
        self.pages, self.last_leaf, self.root, self.depth = dword(data, 4), dword(data, 8), dword(data, 0x14), \
            word(data, 0x18)
        self.scales = data[0x1E:0x24]
        demand(self.scales[::2] == b"\2\2\2", "scales of the word index")
        self.total, self.different = dword(data, 0x3E), dword(data, 0x42)
        self.code_page, self.language = dword(data, 0x7A), dword(data, 0x7E)

    def leaf_of(self, wanted):
        """Goes down the tree: each key is the last word of the node below."""
        at = self.root
        for _ in range(self.depth - 1):
            node, key = self.data[at:at + self.NODE], b""
            place, end = 2, self.NODE - word(node, 0)
            at = None
            while place < end and at is None:
                key, place = self.key(node, place, key)
                if wanted <= key:
                    at = dword(node, place)
                place += 6
            if at is None:
                return None
        return at

    def find(self, wanted):
        """Places of a word: by topic, of titles and of bodies together."""
        found, leaf = {}, self.leaf_of(wanted)
        while leaf:
            for key, _, places in self.leaf(leaf):
                if key == wanted:
                    for topic, positions in places.items():
                        found.setdefault(topic, []).extend(positions)
                elif key > wanted:
                    return found
            leaf = dword(self.data, leaf)
        return found

    def words(self):
        """Every word with whether it stands in titles, and its places; leaf by leaf."""
        leaf = self.leaf_of(b"")
        while leaf:
            yield from self.leaf(leaf)
            following = dword(self.data, leaf)
            demand(following or leaf == self.last_leaf, "last leaf")
            leaf = following

    @staticmethod
    def key(node, at, before):
        length, shared = node[at] - 1, node[at + 1]
        return before[:shared] + node[at + 2:at + 2 + length], at + 2 + length

    def leaf(self, offset):
        node, key, at = self.data[offset:offset + self.NODE], b"", 8
        while at < self.NODE - word(node, 6):
            key, at = self.key(node, at, key)
            in_title = bool(node[at])
            count, at = self.low_first(node, at + 1)
            place = dword(node, at)
            length, at = self.low_first(node, at + 6)
            yield key, in_title, self.places(self.data[place:place + length], count)

    @staticmethod
    def low_first(data, at):
        value = shift = 0
        while True:
            value |= (data[at] & 0x7F) << shift
            shift += 7
            at += 1
            if data[at - 1] < 0x80:
                return value, at

    def places(self, data, count):
        bits = "".join(f"{byte:08b}" for byte in data)
        at = topic = 0
        result = {}

        def number(root):
            nonlocal at
            ones = bits.index("0", at) - at
            at += ones + 1
            width = root + max(0, ones - 1)
            value = int(bits[at:at + width] or "0", 2) + ((1 << width) if ones else 0)
            at += width
            return value

        for _ in range(count):
            topic += number(self.scales[1])
            position, positions = 0, []
            for _ in range(number(self.scales[3])):
                position += number(self.scales[5])
                positions.append(position)
            result[topic] = positions
            at = (at + 7) // 8 * 8
        demand(at == len(bits), "length of a word's places")
        return result
