"""Reads what Doxygen wrote: a page's title, links, anchors and the text behind each anchor."""
from html.parser import HTMLParser

EMPTY = {"area", "br", "col", "hr", "img", "input", "link", "meta"}


class Page(HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.path = path
        self.title = ""
        self.links = []  # the href and src of each element
        self.headings = {}  # anchor: heading, in the order of the page
        self.texts = {"": ""}  # anchor: what stands between it and the next one
        self.anchor = ""
        self.open = []  # the tag and the class of each open element
        self.feed(path.read_text(encoding="utf-8"))

    def handle_starttag(self, tag, attrs):
        attrs = dict(attrs)
        self.links += [attrs[name] for name in ("href", "src") if attrs.get(name)]
        anchor = attrs.get("id") or (tag == "a" and attrs.get("name"))
        if anchor and not self.is_within("ttc"):
            self.anchor = anchor
            self.texts.setdefault(anchor, "")
        if tag not in EMPTY:
            self.open.append((tag, attrs.get("class") or ""))

    def handle_endtag(self, tag):
        if tag in (name for name, _ in self.open):  # some of Doxygen's close nothing
            while self.open.pop()[0] != tag:
                pass
        self.texts[self.anchor] += " "

    def handle_data(self, data):
        tags = {tag for tag, _ in self.open}
        if self.is_within("title"):
            self.title += data.strip()
        elif {"h1", "h2", "h3"} & tags and self.anchor.startswith("autotoc"):
            self.headings[self.anchor] = (self.headings.get(self.anchor, "") + data).strip()
        elif self.is_within("contents") and not self.is_within("ttc") and "script" not in tags:
            self.texts[self.anchor] += data

    def is_within(self, css_class):
        return any(css_class in classes.split() for _, classes in self.open)

    def text(self, anchor=""):
        return " ".join(self.texts.get(anchor, "").split())
