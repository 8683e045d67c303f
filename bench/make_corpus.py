#!/usr/bin/env python3
"""Writes a help project of any size, the same for the same arguments.

    make_corpus.py TOPICS FILE.qbp [--body BYTES] [--seed N]

Every topic has about 4 KB of HTML with headings, lists, a table, code and eight links to other topics, two to four
keywords and up to two related links. The table of contents has three levels; there are 200 glossary terms, some
categories, tasks, values, properties and one build profile.
"""

import argparse
import random
from xml.sax.saxutils import escape, quoteattr

VERBS = "configure open close select insert remove check publish review arrange rename export import preview".split()
NOUNS = ("topic keyword glossary contents window template profile picture table heading paragraph style script link "
         "category project folder status property layout index search result viewer printer margin caption").split()
FILLER = ("the a each every this that when before after while into from with without over under beside through "
          "current new next previous selected default empty visible hidden relative absolute complete partial "
          "choose type press drag save copy paste undo appears changes remains follows contains belongs describes "
          "author reader editor writer machine screen button menu dialog list tree page file name title text").split()
CHAPTER, SECTION = 100, 10  # topics below a book of the first and of the second level


class Corpus:
    def __init__(self, topics, body_bytes, seed):
        self.topics = topics
        self.body_bytes = body_bytes
        self.random = random.Random(seed)
        self.sentences = [self.sentence() for _ in range(2000)]

    def guid(self):
        h = "%032X" % self.random.getrandbits(128)
        return "{%s-%s-%s-%s-%s}" % (h[:8], h[8:12], h[12:16], h[16:20], h[20:])

    def sentence(self):
        words = [self.random.choice(FILLER if self.random.random() < 0.7 else NOUNS)
                 for _ in range(self.random.randint(7, 16))]
        text = " ".join(words).capitalize()
        return text.replace(" button ", " <b>button</b> ").replace(" file ", " <i>file</i> ") + "."

    def name(self, number):
        return "%s-%s-%06d" % (VERBS[number % len(VERBS)], NOUNS[number % len(NOUNS)], number)

    def title(self, number):
        return "%s the %s (%d)" % (VERBS[number % len(VERBS)].capitalize(), NOUNS[number % len(NOUNS)], number)

    def link(self):
        target = self.random.randrange(self.topics)
        return '<a href="%s.html">%s</a>' % (self.name(target), NOUNS[target % len(NOUNS)])

    def paragraph(self, sentences):
        return " ".join(self.random.choice(self.sentences) for _ in range(sentences))

    def body(self, number):
        parts = ["<h1>%s</h1>" % self.title(number)]
        size = links = section = 0
        while size < self.body_bytes:
            section += 1
            part = "<h2>%s</h2>\n<p>%s" % (self.random.choice(NOUNS).capitalize(), self.paragraph(5))
            if links < 8:
                part += " See %s and %s." % (self.link(), self.link())
                links += 2
            part += "</p>\n"
            if section == 2:
                part += "<ul>\n%s</ul>\n" % "".join("<li>%s</li>\n" % self.paragraph(1) for _ in range(4))
            if section == 3:
                part += "<pre><code>if (a &lt; b &amp;&amp; c) {\n\trun(%d);\n}</code></pre>\n" % number
            parts.append(part)
            size += len(part)
        return "\n".join(parts)

    def write(self, out):
        out.write('<?xml version="1.0" encoding="UTF-8"?>\n')
        out.write('<QBProject ProjectType="0" Version="0.1.0" SaveDateTime="01/02/2024 10:00:00" MVPFileName="" '
                  'TemplateName="Quillbook Web" SpellLastCheckDateTime="" Title="Corpus of %d topics" '
                  'SCCActivated="False" SCCProject="" HelpContextIDHeaderFile="" OutputDirectory="" '
                  'AutoGenerateIndexEntries="True" AutoGenerateCategoryIndex="False" BuildMVProject="True" '
                  'DefaultTopic="" Lite="True">\n' % self.topics)
        out.write("\t<SpellIgnoreAllWordList>corpus|qbp|html</SpellIgnoreAllWordList>\n")
        categories = [self.guid() for _ in range(12)]
        for i, key in enumerate(categories):
            out.write('\t<cat Name="%s" Key="%s" AutoIndex="True"/>\n' % (NOUNS[i].capitalize(), key))
        out.write('\t<VariableValue Name="Company">Example</VariableValue>\n')
        for i in range(20):
            out.write('\t<file FileName="images\\picture%02d.png" CaptureInfo="" IncludeInOutput="True"/>\n' % i)
        keys = [self.guid() for _ in range(self.topics)]
        for number in range(self.topics):
            self.write_topic(out, number, keys, categories)
        self.write_glossary(out)
        self.write_nodes(out, keys)
        self.write_rest(out, keys)
        out.write("</QBProject>\n")

    def write_topic(self, out, number, keys, categories):
        title = self.title(number)
        out.write('\t<Topic Key="%s" Name=%s Title=%s ContentsTitle=%s Status="In Progress" '
                  'CreatedOn="15-11-2023 16:25" ModifiedOn="16-11-2023 09:05" LayoutName="" AllStyleSheets="True" '
                  'AllScripts="True" AutoGenerateIndexEntry="True" IncludeInHelpFile="True" HelpContextIDs="" '
                  'Category="%s">\n' % (keys[number], quoteattr(self.name(number)), quoteattr(title), quoteattr(title),
                                        categories[number % len(categories)]))
        out.write("\t\t<Notes>%s</Notes>\n" % ("Check the pictures." if number % 7 == 0 else ""))
        for i in range(2 + number % 3):
            out.write('\t\t<K Value="%s, %s"/>\n' % (NOUNS[(number + i) % len(NOUNS)], VERBS[(number * 3 + i) % len(VERBS)]))
        for _ in range(number % 3):
            target = self.random.randrange(self.topics)
            out.write('\t\t<r t="%s" cat="See also" Title=%s rt="0" URL=""/>\n' % (keys[target], quoteattr(self.title(target))))
        out.write('\t\t<s k="BodyText">%s</s>\n\t</Topic>\n' % escape(self.body(number)))

    def write_glossary(self, out):
        out.write("\t<GlossaryItems>\n")
        for i in range(200):
            out.write('\t\t<glossaryitem Key="%s" Term="%s %s">%s</glossaryitem>\n' % (
                self.guid(), VERBS[i % len(VERBS)], NOUNS[i // len(VERBS) % len(NOUNS)], escape(self.paragraph(2))))
        out.write("\t</GlossaryItems>\n")

    def node(self, caption, topic=""):
        kind, caption_kind = ("1", "1") if topic else ("0", "2")
        return '<n key="%s" nt="%s" ct="%s" c=%s i="-1" cfn="" tid="%s" url=""' % (
            self.guid(), kind, caption_kind, quoteattr(caption), topic)

    def write_nodes(self, out, keys):
        out.write("\t<Nodes>\n")
        for chapter in range(0, self.topics, CHAPTER):
            out.write("\t\t%s>\n" % self.node("Chapter %d" % (chapter // CHAPTER + 1)))
            for section in range(chapter, min(chapter + CHAPTER, self.topics), SECTION):
                out.write("\t\t\t%s>\n" % self.node("Section %d" % (section // SECTION + 1)))
                for number in range(section, min(section + SECTION, self.topics)):
                    out.write("\t\t\t\t%s/>\n" % self.node("", keys[number]))
                out.write("\t\t\t</n>\n")
            out.write("\t\t</n>\n")
        out.write("\t</Nodes>\n")

    def write_rest(self, out, keys):
        out.write("\t<Tasks>\n")
        for i in range(20):
            out.write('\t\t<Task Key="%s" Priority="1" Title="Review %d" AssignedTo="ann" TopicID="%s" '
                      'Status="Not Started" CreatedOn="01-02-2024 08:00:00" CreatedBy="ann" '
                      'ModifiedOn="30-12-1899 00:00:00" ModifiedBy="">Read it again.</Task>\n' % (
                          self.guid(), i, keys[i % len(keys)] if keys else ""))
        out.write("\t</Tasks>\n\t<BuildProfiles>\n")
        out.write('\t\t<BuildProfile ID="%s" Name="Web" OutputDirectory="" CompileHelpFile="False" '
                  'HTMLHelpVersion="2" H2Namespace="corpus" H2FileID="corpus" H2PlugIn="" HelpFileName="corpus.hxs" '
                  'UseBuildFlags="False" ProjectTitle="" RemoveOutputFiles="False" BuildFlags="" '
                  'IncludeInBuild="True" DefaultTopicID="" LocaleID="0"/>\n' % self.guid())
        out.write("\t</BuildProfiles>\n\t<ProjectProperties>\n")
        out.write('\t\t<ProjectProperty PropertyName="Version" PropertyType="0" PropertyValue="1.0" ID="%s"/>\n' % self.guid())
        out.write("\t</ProjectProperties>\n")


def main():
    parser = argparse.ArgumentParser(description="Writes a help project of any size.")
    parser.add_argument("topics", type=int)
    parser.add_argument("file")
    parser.add_argument("--body", type=int, default=3600, help="least number of characters in a topic's body")
    parser.add_argument("--seed", type=int, default=1)
    arguments = parser.parse_args()
    with open(arguments.file, "w", encoding="utf-8", newline="") as out:
        Corpus(arguments.topics, arguments.body, arguments.seed).write(out)


if __name__ == "__main__":
    main()
