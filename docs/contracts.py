#!/usr/bin/env python3
"""Doxygen's input filter: hands it the headers' plain `//` comments as documentation.

    contracts.py <header>

A comment right above a declaration is the contract of all declarations down to the next comment or
blank line. A comment with blank lines around it opens a section, written "title", "title: contract"
or as a contract alone; it holds until the next one and joins the contracts of its members. A
comment behind a declaration belongs to it. Every line keeps its number.
"""
import re
import sys

ACCESS = re.compile(r"(public|protected|private):$")
TYPE = re.compile(r"(template <.*?> )?(class|struct|enum)\b[^;]*\{")
UNLISTED = re.compile(
    r"namespace|#|\}|static_assert|extern template"
    r"|(friend )?(class|struct) (HALVTYPES_API )?[\w:]+;"
)


def escape(text):
    """Keeps what Doxygen would take for commands or tags; code in back quotes is left alone."""
    pieces = re.split(r"(`[^`]*`)", text)
    pieces[::2] = [re.sub(r"[\\@<>#%$]", r"\\\g<0>", piece) for piece in pieces[::2]]
    return "".join(pieces)


def sentence(text):
    """Lower-case notes become sentences, so that they can stand before others."""
    if re.match(r"[a-z]+(-[a-z]+)?[ ,;:]|[a-z-]+$", text):
        text = text[0].upper() + text[1:]
    return text if text.endswith((".", ":")) else text + "."


def bare(line):
    """The code of a line, without literals and comment."""
    line = re.sub(r'"(\\.|[^"\\])*"|' + r"'(\\.|[^'\\])+'", "0", line)
    return line.split("//")[0].strip()


def comment_text(line):
    return line.strip()[2:].rstrip()


def is_comment(line):
    return line.lstrip().startswith("//")


def is_layout(lines):
    return any(comment_text(line).startswith("     ") for line in lines)


def in_one_line(lines):
    """A comment that several declarations share, its paragraphs parted by a tag."""
    words = [escape(comment_text(line).strip()) or "<p>" for line in lines]
    return " ".join(words)


def layout(texts):
    """Marks the indented lines between two empty ones as code."""
    out = [text if text.startswith("     ") else escape(text) for text in texts]
    for i, text in enumerate(texts):
        if not text:
            is_start = i + 1 < len(texts) and texts[i + 1].startswith("     ")
            is_end = i > 0 and texts[i - 1].startswith("     ")
            out[i] = "@endcode" * is_end + "@code{.unparsed}" * is_start
    return out


class Filter:
    def __init__(self, lines):
        self.lines = lines + [""]
        self.out = list(self.lines)
        self.scopes = []  # what each open brace holds: a "namespace", a "type", a "body"...
        self.family = ""  # the contract of the declarations that follow without a blank line
        self.family_at = 0  # the first of them
        self.section = ""  # the contract of the section
        self.is_group_open = False
        self.is_private = False

    def run(self):
        at = self.file_comment()
        while at < len(self.lines):
            if not self.lines[at].strip():
                self.family = ""
                at += 1
            elif is_comment(self.lines[at]):
                at = self.comment(at)
            else:
                at = self.declaration(at)
        return self.out

    def end_of_comment(self, at):
        while is_comment(self.lines[at]):
            at += 1
        return at

    def file_comment(self):
        """A comment of its own behind `#pragma once` is about the file."""
        end = self.end_of_comment(2)
        if self.lines[end].strip():
            end = 2
        self.out[0] += " /** @file"
        self.out[1] = in_one_line(self.lines[2:end]) + " */"
        return end

    def is_listed(self):
        return not self.is_private and not {"hidden", "body"} & set(self.scopes)

    def comment(self, at):
        end = self.end_of_comment(at)
        lines = self.lines[at:end]
        if not self.is_listed():
            return end
        if not self.lines[end].strip():
            self.open_section(at, end)
            return end
        self.family = in_one_line(lines)
        self.family_at = end
        if TYPE.match(self.text_of(end)[0]):
            self.family = ""
            for i in range(at, end):
                text = comment_text(self.lines[i])
                self.out[i] = "///" + (text if text.startswith("     ") else escape(text))
        return end

    def open_section(self, at, end):
        self.close_section(at - 1)
        lines = self.lines[at:end]
        title, first = "", comment_text(lines[0]).strip()
        if not first[:1].islower():
            self.section = in_one_line(lines)
        elif len(lines) > 1 and not comment_text(lines[1]):
            title = first
            self.section = "" if is_layout(lines) else in_one_line(lines[2:])
        else:
            title, _, self.section = in_one_line(lines).partition(": ")
            if not self.section and "," in title:  # more than a name
                self.section = title
            self.section = sentence(self.section) if self.section else ""
        if not self.scopes or self.scopes[-1] == "namespace":
            return
        if not title:
            return
        self.is_group_open = True
        self.out[at] = f"/** @name {sentence(title)[:-1]}"
        self.out[at + 1 : end] = [""] * (end - at - 1)
        if is_layout(lines):
            self.out[at + 1 : end] = layout([comment_text(line) for line in lines[1:]])
        self.out[end] = f"{self.section} */ /**@{{*/"

    def close_section(self, at):
        if self.is_group_open:
            self.out[at] += " /**@}*/"
        self.is_group_open = False
        self.section = ""

    def text_of(self, at):
        """The declaration that begins here, and the line where it or its body's head ends."""
        text = ""
        for end in range(at, len(self.lines)):
            text += bare(self.lines[end]) + " "
            is_open = text.count("(") > text.count(")") or (
                text.startswith("template") and text.count("<") > text.count(">")
            )
            is_whole = not is_open and text.rstrip().endswith((";", "}", "{", ","))
            if text.startswith("#") or is_whole:
                break
        return text.strip(), end

    def declaration(self, at):
        access = ACCESS.match(bare(self.lines[at]))
        if access:
            self.close_section(at - 1)
            self.is_private = access.group(1) == "private"
            return at + 1
        text, end = self.text_of(at)
        if not text.startswith("#"):
            if self.is_listed() and not UNLISTED.match(text):
                self.document(at, end, text)
            self.follow(text, end)
        return end + 1

    def follow(self, text, line):
        """Keeps track of the scopes that a declaration opens and closes."""
        for brace in re.findall(r"[{}]", text):
            if brace == "{":
                self.scopes.append(self.scope_of(text))
            elif self.scopes and self.scopes.pop() != "body":
                self.close_section(line - 1)
                self.is_private = False

    def scope_of(self, text):
        if text.startswith("namespace"):
            return "hidden" if "detail" in text else "namespace"
        if TYPE.match(text):
            return "type of std" if " std::" in text.split("{")[0].split(" : ")[0] else "type"
        return "body"

    def document(self, at, end, text):
        is_deleted = text.endswith("= delete;")
        is_guest = is_deleted or re.search(r"~\w+\(", text)
        own = "" if is_guest and at != self.family_at else self.family
        behind = re.search(r" // (.*)", self.lines[end])
        if behind:
            note = escape(behind.group(1))
            note = note if text.endswith(",") else sentence(note)
            notes = (own, note) if "(" in text else (note, own)
            own = " <p> ".join(filter(None, notes))
            self.out[end] = self.lines[end][: behind.start()]
        section = "" if TYPE.match(text) or is_guest else self.section
        contract = " <p> ".join(filter(None, (own, section))) or self.by_language(text)
        if contract:
            self.out[at] = f"/** {contract} */ {self.out[at]}"

    def by_language(self, text):
        """What the language alone says of a declaration that has no comment."""
        if self.scopes and self.scopes[-1] == "type of std":
            return "As the standard library asks of it."
        if text.endswith("= delete;"):
            return "Not offered."
        if text.endswith("= default;"):
            return "As the compiler makes it."
        return "Ends the object and what it owns." if re.search(r"~\w+\(", text) else ""


def main():
    with open(sys.argv[1], encoding="utf-8") as file:
        print("\n".join(Filter(file.read().splitlines()).run()[:-1]))


if __name__ == "__main__":
    main()
