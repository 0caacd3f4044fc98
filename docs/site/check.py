"""This module checks the built site: its links, its anchors, and that it loads nothing from elsewhere."""

import html.parser
import os
import re
import urllib.parse

ASKED = re.compile(r"url\([\"']?(?!data:)([^\"')]+)")
LOADED = {"img": "src", "script": "src", "link": "href", "iframe": "src", "object": "data"}


class Page(html.parser.HTMLParser):
    """This class takes from a page what it can be reached at, and where it leads."""

    def __init__(self, text):
        super().__init__()
        self.anchors, self.links, self.loaded = set(), [], []
        self.feed(text)

    def handle_starttag(self, tag, attrs):
        values = dict(attrs)
        self.anchors |= {values[key] for key in ("id", "name") if values.get(key)}
        if tag == "a" and values.get("href"):
            self.links.append(values["href"])
        if values.get(LOADED.get(tag)):
            self.loaded.append(values[LOADED[tag]])


def complaints(folder):
    """Returns a line for each link of the folder's pages that leads nowhere, and for each style sheet that asks for others."""
    pages = {str(file.relative_to(folder)): Page(file.read_text(encoding="utf-8")) for file in folder.rglob("*.html")}
    found = []
    for name, page in sorted(pages.items()):
        found += [f"{name}: loads {url} from elsewhere" for url in page.loaded if is_elsewhere(url)]
        for url in [*page.links, *page.loaded]:
            if not is_elsewhere(url) and not leads_somewhere(url, name, pages, folder):
                found.append(f"{name}: {url} leads nowhere")
    for file in sorted(folder.rglob("*.css")):
        name = str(file.relative_to(folder))
        found += [f"{name}: loads {url} from elsewhere" for url in ASKED.findall(file.read_text(encoding="utf-8"))
                  if is_elsewhere(url) or not leads_somewhere(url, name, pages, folder)]
    return found


def is_elsewhere(url):
    parts = urllib.parse.urlsplit(url)
    return bool(parts.scheme or parts.netloc)


def leads_somewhere(url, name, pages, folder):
    parts = urllib.parse.urlsplit(url)
    path = urllib.parse.unquote(parts.path)
    target = os.path.normpath(os.path.join(os.path.dirname(name), path)) if path else name
    if target not in pages:
        return (folder / target).is_file()
    return not parts.fragment or urllib.parse.unquote(parts.fragment) in pages[target].anchors
