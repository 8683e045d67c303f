#!/usr/bin/env python3
"""The manual as a reader meets it: links, images, keyboard, small screens, light and dark, and without script."""
import json
import os
import subprocess
import sys
import tempfile
import unittest
from pathlib import Path

from webdriver import Browser

PROGRAM = sys.argv.pop(1)
MANUAL = Path(__file__).resolve().parents[2] / "docs/manual/manual.qbp"
TAB, ENTER = "\ue004", "\ue007"

# The least contrast of texts and links with what lies behind them, as WCAG counts it.
CONTRAST = """
const parse = c => c.match(/[\\d.]+/g).map(Number);
const light = ([r, g, b]) => [r, g, b].map(v => (v /= 255) <= .03928 ? v / 12.92 : ((v + .055) / 1.055) ** 2.4)
  .reduce((sum, v, i) => sum + v * [.2126, .7152, .0722][i], 0);
const behind = e => { for (; e; e = e.parentElement) { const c = parse(getComputedStyle(e).backgroundColor);
  if (c.length < 4 || c[3] > 0) return c; } return [255, 255, 255]; };
return Math.min(...[...document.querySelectorAll('p, li, a, h1, h2, td, th, dt, code')].map(e => {
  const [a, b] = [light(parse(getComputedStyle(e).color)), light(behind(e))].sort((x, y) => y - x);
  return (a + .05) / (b + .05); }));
"""


class Manual(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        cls.folder = tempfile.TemporaryDirectory(prefix="quillbook-")
        cls.addClassCleanup(cls.folder.cleanup)
        cls.pages = Path(cls.folder.name, "web")
        env = os.environ | {"QUILLBOOK_REGISTRY": cls.folder.name}
        done = subprocess.run([PROGRAM, "build", MANUAL, "--output", cls.pages, "--json"], env=env, check=True,
                              capture_output=True, text=True)
        cls.report = json.loads(done.stdout)
        cls.browser = cls.enterClassContext(Browser())

    def open_all(self):
        for page in sorted(self.pages.glob("*.html")):
            with self.subTest(page=page.name):
                self.browser.open(page)
                yield page

    def test_reader_goes_from_the_start_page_to_a_topic_and_on(self):
        browser = self.browser
        browser.open(self.pages / "index.html")
        self.assertEqual(browser.text("h1"), "Quillbook manual")
        browser.click(browser.find("Related links", using="link text"))
        self.assertEqual(browser.text("h1"), "Related links")
        self.assertIn("Each link leads to a topic of the project or to any URL.", browser.text("main"))
        self.assertEqual(browser.text("nav.related h3"), "See also")
        browser.click(browser.find("nav.related a"))
        self.assertEqual(browser.text("h1"), "Topics")
        browser.click(browser.find("header a"))
        self.assertTrue(browser.url().endswith("/index.html"))

    def test_start_page_lists_every_topic_once(self):
        self.browser.open(self.pages / "index.html")
        targets = self.browser.run("return [...document.querySelectorAll('.topics a')].map(a => a.href)")
        pages = {page.resolve().as_uri() for page in self.pages.glob("*.html") if page.name != "index.html"}
        self.assertEqual(sorted(targets), sorted(pages))
        self.assertEqual(self.report["pages"], len(pages) + 1)

    def test_no_link_and_no_image_is_broken(self):
        for _ in self.open_all():
            targets = self.browser.run("return [...document.links].map(a => a.href.split('#')[0])")
            here = [target for target in targets if target.startswith("file:")]
            self.assertEqual([target for target in here if not Path(target.removeprefix("file://")).is_file()], [])
            self.assertEqual(self.browser.run(
                "return [...document.images].filter(i => !i.naturalWidth).map(i => i.src)"), [])
            self.assertGreaterEqual(self.browser.run("return document.styleSheets.length"), 1)

    def test_no_page_shows_an_evaluation_error_or_an_element(self):
        for page in self.open_all():
            text = self.browser.text("body")
            self.assertNotRegex(text, r"!(MISSING|ERROR|UNCRECOGNISED|INVALID)")
            self.assertNotRegex(page.read_text(encoding="utf-8"), r"%%/?[a-z]+(:[^%]*)?%%")

    def test_pages_are_told_their_language_and_structure(self):
        for _ in self.open_all():
            self.assertEqual(self.browser.run("return [document.documentElement.lang, document.characterSet]"),
                             ["en", "UTF-8"])
            self.assertEqual([len(self.browser.find_all(name)) for name in ("main", "h1", "header")], [1, 1, 1])
            self.assertEqual(self.browser.run("return document.compatMode"), "CSS1Compat")

    def test_keyboard_skips_to_the_text(self):
        self.browser.open(self.pages / "topics.html")
        self.browser.press([TAB])
        self.assertEqual(self.browser.run("return document.activeElement.className"), "skip")
        self.browser.press([ENTER])
        self.assertEqual(self.browser.run("return document.activeElement.id"), "main")

    def test_small_screen_needs_no_sideways_scrolling(self):
        self.browser.emulate("setDeviceMetricsOverride", {"width": 360, "height": 640, "deviceScaleFactor": 1,
                                                          "mobile": True})
        self.addCleanup(self.browser.emulate, "clearDeviceMetricsOverride", {})
        for _ in self.open_all():
            self.assertLessEqual(self.browser.run("return document.documentElement.scrollWidth"), 360)

    def test_light_and_dark_have_enough_contrast(self):
        backgrounds = set()
        self.addCleanup(self.browser.emulate, "setEmulatedMedia", {"features": []})
        for scheme in ("light", "dark"):
            self.browser.emulate("setEmulatedMedia", {"features": [{"name": "prefers-color-scheme",
                                                                    "value": scheme}]})
            for name in ("index.html", "command-line.html", "first-build.html"):
                with self.subTest(scheme=scheme, page=name):
                    self.browser.open(self.pages / name)
                    self.assertGreaterEqual(self.browser.run(CONTRAST), 4.5)
            backgrounds.add(self.browser.run("return getComputedStyle(document.body).backgroundColor"))
        self.assertEqual(len(backgrounds), 2)

    def test_pages_work_without_script(self):
        with Browser(script=False) as browser:
            browser.open(self.pages / "index.html")
            browser.click(browser.find("Build profiles", using="link text"))
            self.assertEqual(browser.text("h1"), "Build profiles")


if __name__ == "__main__":
    unittest.main()
