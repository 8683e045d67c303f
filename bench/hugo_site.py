#!/usr/bin/env python3
"""Writes the topics of a help project as a site for hugo, with a theme that shows what Quillbook Web shows.

    hugo_site.py FILE.qbp FOLDER

Every topic becomes a page of HTML with its title and related links as front matter; bodies are taken over as they are.
"""

import json
import pathlib
import shutil
import sys
import xml.etree.ElementTree as xml

CONFIG = {
    "baseURL": "/", "uglyURLs": True, "relativeURLs": False, "timeout": "600s",
    "disableKinds": ["taxonomy", "term", "RSS", "sitemap", "section", "404"],
}

HEAD = """<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>{{ .Title }} - {{ site.Title }}</title>
<meta name="generator" content="hugo">
<link rel="icon" type="image/svg+xml" href="/images/quillbook-web.svg">
<link rel="stylesheet" type="text/css" href="/stylesheets/quillbook-web.css">
"""

BANNER = """<a class="skip" href="#main">Skip to the text</a>
<header>
<p><a href="/index.html">{{ site.Title }}</a></p>
</header>
"""

TOPIC = """<!DOCTYPE html>
<html lang="en">
<head>
{{ partial "head.html" . }}</head>
<body>
{{ partial "banner.html" . }}<main id="main" tabindex="-1">
<article>
<h1>{{ .Title }}</h1>
{{ .Content }}
</article>
{{ with .Params.related }}<nav class="related" aria-label="Related">
<h2>Related</h2>
{{ range . }}<h3>{{ .name }}</h3>
<ul>
{{ range .links }}<li><a href="{{ .href }}">{{ .title }}</a></li>
{{ end }}</ul>
{{ end }}</nav>
{{ end }}</main>
</body>
</html>
"""

INDEX = """<!DOCTYPE html>
<html lang="en">
<head>
{{ partial "head.html" . }}</head>
<body>
<main id="main" tabindex="-1">
<nav class="topics" aria-label="Topics">
<h2>Topics</h2>
<ul>
{{ range where site.RegularPages "Type" "page" }}<li><a href="{{ .RelPermalink }}">{{ .Title }}</a></li>
{{ end }}</ul>
</nav>
</main>
</body>
</html>
"""


def related(topic, titles):
    groups = {}
    for link in topic.findall("r"):
        name, title = titles.get(link.get("t"), ("", "")) if link.get("rt") == "0" else ("", "")
        href = name + ".html" if name else link.get("URL")
        groups.setdefault(link.get("cat"), []).append({"href": href, "title": link.get("Title") or title})
    return [{"name": name, "links": links} for name, links in groups.items()]


def main():
    source, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    project = xml.parse(source).getroot()
    topics = project.findall("Topic")
    titles = {t.get("Key"): (t.get("Name"), t.get("Title")) for t in topics}
    for name in ("content", "layouts/partials", "layouts/_default", "static"):
        (folder / name).mkdir(parents=True, exist_ok=True)
    config = dict(CONFIG, title=project.get("Title"))
    (folder / "config.json").write_text(json.dumps(config))
    (folder / "layouts/partials/head.html").write_text(HEAD)
    (folder / "layouts/partials/banner.html").write_text(BANNER)
    (folder / "layouts/_default/single.html").write_text(TOPIC)
    (folder / "layouts/index.html").write_text(INDEX)
    template = pathlib.Path(__file__).parent.parent / "configuration/Templates/Quillbook Web"
    for name in ("images", "stylesheets"):
        shutil.copytree(template / name, folder / "static" / name, dirs_exist_ok=True)
    for topic in topics:
        front = {"title": topic.get("Title"), "related": related(topic, titles)}
        body = next(s.text for s in topic.findall("s") if s.get("k") == "BodyText")
        (folder / "content" / (topic.get("Name") + ".html")).write_text(json.dumps(front) + "\n\n" + body)


if __name__ == "__main__":
    main()
