#!/usr/bin/env python3
"""Does every public name of the headers carry a contract that an editor shows?

    check_contracts.py <root> <header>...

Reads the headers as clang does, which is what editors ask: a contract is the `///` comment that
clang itself attaches to the declaration. Exits with 1 and one line a fault.
"""
import re
import sys

from clang.cindex import AccessSpecifier, CursorKind, Index, TranslationUnit

CLASSES = {
    CursorKind.CLASS_DECL,
    CursorKind.STRUCT_DECL,
    CursorKind.CLASS_TEMPLATE,
    CursorKind.CLASS_TEMPLATE_PARTIAL_SPECIALIZATION,
}
SCOPES = CLASSES | {
    CursorKind.NAMESPACE,
    CursorKind.ENUM_DECL,
    CursorKind.LINKAGE_SPEC,
    CursorKind.UNEXPOSED_DECL,
    CursorKind.FRIEND_DECL,
}
NAMES = CLASSES | {
    CursorKind.ENUM_DECL,
    CursorKind.ENUM_CONSTANT_DECL,
    CursorKind.FUNCTION_DECL,
    CursorKind.FUNCTION_TEMPLATE,
    CursorKind.CXX_METHOD,
    CursorKind.CONSTRUCTOR,
    CursorKind.DESTRUCTOR,
    CursorKind.CONVERSION_FUNCTION,
    CursorKind.VAR_DECL,
    CursorKind.FIELD_DECL,
    CursorKind.TYPEDEF_DECL,
    CursorKind.TYPE_ALIAS_DECL,
    CursorKind.TYPE_ALIAS_TEMPLATE_DECL,
}
HIDDEN = {"detail", "abi"}
# What reads well where nothing but Doxygen understands it. The marks of a family (`@name`, `@{`)
# stand in a comment of their own, so a member that has only those has no contract.
MARKS = {"@code", "@endcode"}
# What Format.h needs of a header that comes with newer standard libraries.
FORMAT = """
#pragma once
#include <stdexcept>
#include <string_view>
namespace std {
template <typename T, typename Char = char> struct formatter;
template <typename Char> struct formatter<basic_string_view<Char>, Char> {};
struct format_error : runtime_error { using runtime_error::runtime_error; };
}
"""
# Each sees branches that the others do not.
READINGS = (["-stdlib=libstdc++", "-D__cpp_lib_format=1"], ["-stdlib=libc++"])


def tokens(cursor):
    return [token.spelling for token in cursor.get_tokens()]


def is_declared_here(cursor):
    """A definition or first declaration, of its own: not repeated, instantiated or deleted."""
    if cursor.kind in CLASSES:
        return cursor.is_definition()
    if cursor.semantic_parent != cursor.lexical_parent and cursor.lexical_parent.kind in (
        CursorKind.NAMESPACE,
        CursorKind.TRANSLATION_UNIT,
    ):
        return False  # a member's definition behind its class
    return tokens(cursor)[-2:] != ["=", "delete"] and "delete" not in tokens(cursor)[-3:]


def public_names(cursor, files):
    for child in cursor.get_children():
        place = child.location.file
        if place and place.name not in files and child.kind != CursorKind.LINKAGE_SPEC:
            continue
        is_private = child.access_specifier == AccessSpecifier.PRIVATE
        if is_private or child.spelling in HIDDEN:
            continue
        if child.kind in NAMES and is_declared_here(child):
            yield child
        if child.kind in SCOPES:
            yield from public_names(child, files)


def faults_of_text(comment):
    """What an editor would show with marks and escapes in it."""
    for escaped in re.findall(r"\\[<>@#$%&]", comment):
        yield f"escapes a character: {escaped}"
    text = re.sub(r"@code.*?@endcode", "", comment, flags=re.DOTALL)
    text = re.sub(r"`[^`]*`", "", text)
    for mark in re.findall(r"(?<![\w@])[@\\](?:[a-z]+|[{}])", text):
        if mark not in MARKS:
            yield f"holds a command that an editor shows as it is: {mark}"
    if not re.search(r"[A-Za-z]{2}", comment.replace("///<", "")):
        yield "says nothing"


def check(root, headers, reading):
    arguments = ["-x", "c++", "-std=c++20", f"-I{root}", "-I/stub", *reading]
    files = {f"{root}/{header}" for header in headers}
    everything = "".join(f"#include <{header}>\n" for header in headers)
    unit = Index.create().parse(
        "all.cpp",
        args=arguments,
        unsaved_files=[("all.cpp", everything), ("/stub/format", FORMAT)],
        options=TranslationUnit.PARSE_SKIP_FUNCTION_BODIES,
    )
    faults = [str(remark) for remark in unit.diagnostics if remark.severity >= 3]
    seen = 0
    for name in public_names(unit.cursor, files):
        seen += 1
        where = f"{name.location.file.name[len(root) + 1:]}:{name.location.line}: {name.spelling}"
        if not name.raw_comment:
            faults.append(f"{where} has no contract")
        else:
            faults += [f"{where} {fault}" for fault in faults_of_text(name.raw_comment)]
    return seen, faults


def main():
    root, headers = sys.argv[1].rstrip("/"), sys.argv[2:]
    faults, seen = {}, []
    for reading in READINGS:
        names, found = check(root, headers, reading)
        seen.append(names)
        faults.update(dict.fromkeys(found))
    text = " and ".join(map(str, seen))
    print("\n".join(faults) if faults else f"{text} public names, each with its contract")
    sys.exit(1 if faults or min(seen) < 500 else 0)


if __name__ == "__main__":
    main()
