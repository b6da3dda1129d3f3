#!/usr/bin/env python3
"""Turns a header's plain comments into what Doxygen reads: contracts.py HEADER.

The head of a file describes the file, and the class that it names: "// RWCString: a mutable ...".
A comment holds for every declaration below it, up to an empty line or the next comment.
"// Fails   std::bad_alloc" becomes a list item. A comment after a member documents that member.
"""

import re
import sys

FIELD = re.compile(r"^([A-Za-z`][\w`.,&*-]*(?: [a-z]+)?)  +(\S.*)$")
COMMENT = re.compile(r"^(\s*)// ?(.*)$")
TRAILING = re.compile(r"^(\s*[^/\s].*[;,}]\s*)// (.*)$")
COMPLETE = re.compile(r"[;}{:]\s*(//.*)?$")
TYPE = re.compile(r"^(?:class|struct) (?:PAGESCAN_EXPORT )?(\w+)[^;]*$")


def doxygen(comment):
    """One line of a comment as a line of Doxygen's."""
    comment = comment.replace("@", "\\@")
    field = FIELD.match(comment)
    if field:
        return f"/// - **{field[1].strip('`')}** {field[2]}"
    return f"/// {comment.lstrip()}".rstrip()


def split_head(lines):
    """The comment that opens a file, and the lines after it."""
    size = next((i for i, line in enumerate(lines) if not COMMENT.match(line)), len(lines))
    return [doxygen(COMMENT.match(line)[2]) for line in lines[:size]], lines[size:]


def translate(lines):
    head, lines = split_head(lines)
    yield from ["/// @file", *head, ""]
    contract, indent, in_comment, in_declaration = [], "", False, False
    for line in lines:
        comment = COMMENT.match(line)
        if comment:
            contract = contract * in_comment + [doxygen(comment[2])]
            indent, in_comment = comment[1], True
            continue
        in_comment = False
        if not line.strip():
            contract, in_declaration = [], False
        type_name = TYPE.match(line)
        if type_name and not contract and head and head[0].startswith(f"/// {type_name[1]}:"):
            contract = head
        if not in_declaration and re.match(indent + r"\w", line):
            yield from contract
        if type_name:
            contract = []
        yield TRAILING.sub(r"\1///< \2", line)
        in_declaration = line.strip() and not COMPLETE.search(line)


def main():
    with open(sys.argv[1], encoding="utf-8") as header:
        print("\n".join(translate(header.read().splitlines())))


if __name__ == "__main__":
    main()
