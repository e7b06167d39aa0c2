# SPDX-License-Identifier: MIT
"""Looks at a built site: each link and anchor leads to something in it, and no page loads anything from elsewhere.

usage: site_links.py FOLDER
"""

import os
import sys
from html.parser import HTMLParser
from urllib.parse import unquote, urlsplit


class Page(HTMLParser):
    """Where a page's elements lead, what they load, and which names they have."""

    def __init__(self, text):
        super().__init__()
        self.links, self.loads, self.names = [], [], set()
        self.feed(text)

    def handle_starttag(self, tag, attrs):
        given = dict(attrs)
        if given.get("id"):
            self.names.add(given["id"])
        if tag == "a" and given.get("href"):
            self.links.append(given["href"])
        elif tag == "link" and given.get("href"):
            self.loads.append(given["href"])
        elif given.get("src"):
            self.loads.append(given["src"])


def main(folder):
    pages = {}
    for place, _, files in os.walk(folder):
        for name in files:
            if name.endswith(".html") and name != "404.html":
                path = os.path.join(place, name)
                with open(path, encoding="utf-8") as text:
                    pages[os.path.realpath(path)] = Page(text.read())
    faults = []
    for path, page in pages.items():
        shown = os.path.relpath(path, folder)
        faults += [f"{shown} loads {link}" for link in page.loads if urlsplit(link).netloc]
        for link in page.links + page.loads:
            parts = urlsplit(link)
            if parts.scheme or parts.netloc:
                continue
            target = os.path.realpath(os.path.join(os.path.dirname(path), unquote(parts.path))) if parts.path else path
            if os.path.isdir(target):
                target = os.path.join(target, "index.html")
            if not os.path.exists(target):
                faults.append(f"{shown} leads to {link}, which is not there")
            elif parts.fragment and target in pages and unquote(parts.fragment) not in pages[target].names:
                faults.append(f"{shown} leads to {link}, where there is no such place")
    print("\n".join(faults) or f"{len(pages)} pages")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1]))
