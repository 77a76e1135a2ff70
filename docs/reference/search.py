#!/usr/bin/env python3
"""Writes the search of the built documentation: search.js behind the index that it reads.

    search.py <html folder> <Doxygen's searchdata.xml>

An entry is [title, address, text]: one for each section of a page and each name of the reference.
"""
import json
import sys
import xml.etree.ElementTree as ElementTree
from functools import lru_cache
from pathlib import Path

from html_page import Page

read = lru_cache(maxsize=None)(Page)


def sections(html):
    """The parts of the guide's pages, each from its heading to the next."""
    for path in [html / "index.html", *sorted(html.glob("md_*.html"))]:
        page = read(path)
        headings = list(page.headings.items())
        first = [page.text(anchor) for anchor in page.texts if anchor not in page.headings]
        begin = " ".join(first).strip() or page.text(headings[0][0] if headings else "")
        yield [page.title, path.name, begin]
        for anchor, heading in headings:
            yield [f"{page.title}: {heading}", f"{path.name}#{anchor}", page.text(anchor)]


def names(html, searchdata):
    for doc in ElementTree.parse(searchdata).getroot():
        field = {entry.get("name"): entry.text or "" for entry in doc}
        if field["type"] in ("source", "page", "file", "namespace"):
            continue
        name, _, anchor = field["url"].partition("#")
        title = f"{field['name']}{field.get('args', '')}"
        yield [title, field["url"], read(html / name).text(anchor or "details")]


def main():
    html = Path(sys.argv[1])
    entries = [*sections(html), *names(html, sys.argv[2])]
    rows = ",\n".join(json.dumps(entry) for entry in entries)
    code = (Path(__file__).parent / "search.js").read_text(encoding="utf-8")
    (html / "search" / "search.js").write_text(
        f"const searchIndex = [\n{rows}\n];\n{code}", encoding="utf-8"
    )


if __name__ == "__main__":
    main()
