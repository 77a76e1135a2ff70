#!/usr/bin/env python3
"""Do the pages hold what they promise: links, code, output, pictures, samples, search?

    check_pages.py <root> <html folder>

Exits with 1 and one line a fault.
"""
import re
import subprocess
import sys
from pathlib import Path
from shutil import which
from urllib.parse import unquote

from html_page import Page

# What people look for, and does not stand in a title that way.
SOUGHT = ("owner", "UTF", "thread", "GDB", "little-endian", "realloc", "CSV", "ERR_WRONG_TYPE",
          "memoryview")
FENCE = re.compile(r"^( *)```(\w*)\n(.*?)^\1```$", re.DOTALL | re.MULTILINE)


def guide_pages(root):
    return [*sorted((root / "docs").glob("*.md")), *sorted(root.glob("*.md"))]


def is_elsewhere(link):
    return re.match(r"[a-z]+:", link) is not None


def anchors_on_a_forge(text):
    """What a forge makes of the headings."""
    text = FENCE.sub("", text)
    headings = re.findall(r"^#+ +(.*)$", text, re.MULTILINE)
    slugs = [re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings]
    return {*slugs, *re.findall(r'<a (?:id|name)="([^"]+)"', text)}


def links_of_markdown(pages):
    for page in pages:
        text = page.read_text(encoding="utf-8")
        plain = re.sub(r"`[^`\n]*`", "", FENCE.sub("", text))
        for link in re.findall(r"\]\(([^)\s]+)\)", plain):
            if is_elsewhere(link):
                continue
            name, _, anchor = unquote(link).partition("#")
            target = page.parent / name if name else page
            if not target.exists():
                yield f"{page.name}: {link} leads nowhere"
            elif anchor and anchor not in anchors_on_a_forge(target.read_text(encoding="utf-8")):
                yield f"{page.name}: {link} has no such heading"


def files_named(pages, root):
    """What a page names by its path in the tree is there."""
    top = "|".join(path.name for path in root.iterdir() if path.is_dir() and path.name != "build")
    for page in pages:
        if page.name == "CHANGELOG.md":
            continue  # speaks of other times too
        text = FENCE.sub("", page.read_text(encoding="utf-8"))
        for name in re.findall(rf"`(?:\./)?((?:{top})/[\w./-]*)", text):
            if not (root / name).exists() and not list(root.glob(f"{name}.*")):
                yield f"{page.name}: {name} is not in the tree"


def links_of_html(pages, html):
    for name, page in pages.items():
        for link in page.links:
            if is_elsewhere(link) or link.startswith("search_opensearch"):
                continue
            target, _, anchor = unquote(link).partition("#")
            target = target.partition("?")[0] or name
            if not (html / target).exists():
                yield f"{name}: {link} leads nowhere"
            elif anchor and target in pages and anchor not in pages[target].texts:
                yield f"{name}: {link} has no such anchor"


def squeezed(text):
    """Code without layout and without the marks of the examples' pieces."""
    return re.sub(r"\s+", "", re.sub(r"^\s*//! ?\[.*$", "", text, flags=re.MULTILINE))


def text_of(path):
    """A page, or a header's contracts with their samples as fences."""
    text = path.read_text(encoding="utf-8")
    if path.suffix == ".md":
        return text
    contracts = re.sub(r"^ */// ?|^(?! *///).*$", "", text, flags=re.MULTILINE)
    return contracts.replace("@code\n", "```cpp\n").replace("@endcode", "```")


def code_and_output(pages, root):
    files = [path for path in (root / "examples").rglob("*") if path.is_file()]
    sources = [squeezed(path.read_text(encoding="utf-8", errors="replace")) for path in files]
    for page in [*pages, *sorted((root / "Halvora").rglob("*.h"))]:
        text = text_of(page)
        for fence in FENCE.finditer(text):
            is_output = re.search(r"prints:?\s*$", text[: fence.start()])
            if fence[2] not in ("cpp", "python") and not is_output:
                continue
            pieces = [squeezed(piece) for piece in re.split(r"(?://|#) \.\.\.\n", fence[3])]
            pattern = re.compile(".*".join(re.escape(piece) for piece in pieces if piece))
            if not any(pattern.search(source) for source in sources):
                line = text.count("\n", 0, fence.start()) + 1
                yield f"{page.name}:{line}: this stands in no file of examples/"
        for command in re.findall(r"^[\\@](?:include|snippet|dotfile|verbinclude)\b.*", text, re.M):
            yield f"{page.name}: a forge shows this as it is: {command}"


def pictures(folder):
    """Each drawing shows what its source says; the layout may be another Graphviz's."""
    for source in sorted(folder.glob("*.dot")) if which("dot") else []:
        drawn = subprocess.run(["dot", "-Tsvg", source], capture_output=True, check=True, text=True)
        words = [re.findall(r"<text[^>]*>([^<]*)", text)
                 for text in (drawn.stdout, source.with_suffix(".svg").read_text(encoding="utf-8"))]
        if words[0] != words[1]:
            yield f"{source.name}: draw it again: dot -Tsvg {source.name} -o {source.stem}.svg"


def classes(pages):
    """The page of a class leads to its page of the guide and shows a sample."""
    for name, page in pages.items():
        if not re.match(r"(class|struct)Halvora", name) or "-members" in name:
            continue
        text = page.path.read_text(encoding="utf-8")
        if not any(link.startswith("md_docs_") for link in page.links):
            yield f"{name}: no link to the guide"
        if '<dt>Example</dt><dd><div class="fragment"><div class="line">' not in text:
            yield f"{name}: no sample"


def escapes(pages):
    """What was meant for Doxygen and is shown instead."""
    for name, page in pages.items():
        text = "" if "_source" in name else page.path.read_text(encoding="utf-8")
        text = re.sub(r'<(div class="line"|pre|script)\b.*?</', "", text, flags=re.DOTALL)
        for escaped in re.findall(r"\\(?:&lt;|&gt;|&amp;|[@#$%])", text):
            yield f"{name}: shows an escape: {escaped}"


def orphans(guide):
    """Each page of the guide is found from another one."""
    texts = {page: page.read_text(encoding="utf-8") for page in guide}
    for page in guide:
        others = "".join(text for other, text in texts.items() if other != page)
        if page.name != "README.md" and f"{page.name})" not in others:
            yield f"{page.name}: no other page leads here"


def search(html):
    index = (html / "search" / "search.js").read_text(encoding="utf-8")
    entries = [line for line in index.split("\n") if re.match(r'\["', line)]
    pages = [line for line in entries if '"md_docs_' in line or '"index.html' in line]
    for word in SOUGHT:
        if not any(word.lower() in page.lower() for page in pages):
            yield f"searching for {word} finds no page"
    if len(entries) < 500:
        yield f"the search knows {len(entries)} places only"


def main():
    root, html = (Path(argument).resolve() for argument in sys.argv[1:3])
    guide = guide_pages(root)
    pages = {path.name: Page(path) for path in sorted(html.glob("*.html"))}
    faults = [
        *links_of_markdown(guide),
        *files_named(guide, root),
        *links_of_html(pages, html),
        *code_and_output(guide, root),
        *pictures(root / "docs" / "pictures"),
        *classes(pages),
        *escapes(pages),
        *orphans(guide),
        *search(html),
    ]
    print("\n".join(faults) if faults else f"{len(guide)} pages of the guide, {len(pages)} of HTML")
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
