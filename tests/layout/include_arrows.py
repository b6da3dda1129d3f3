#!/usr/bin/env python3
"""Holds every #include of a tree to the graph of its parts: include_arrows.py ROOT.

A file includes files of its own part and of the parts that its part names in USES, nothing else.
Hosts (the tool, the examples, tests that stand for a host) see the exported headers alone.
"""

import re
import sys
from fnmatch import fnmatch
from pathlib import Path

# The parts; the first pattern that fits a file names its part.
PARTS = [
    ("base", ["include/pagescan_export.h", "src/base/*"]),
    ("rw", ["include/rw/*", "src/rw/*"]),
    ("encoding", ["include/pagescan/export.h", "src/encoding/*"]),
    ("url", ["include/pagescan/url.h", "src/url/*"]),
    ("edits", ["include/pagescan/edits.h", "src/edits/*"]),
    ("page", ["include/pagescan/*", "src/page/*"]),
    ("text helpers", ["src/classic/text_view.*", "src/classic/scratch_text.*",
                      "src/classic/standard_output.*"]),
    ("host routines", ["include/hostroutines.h", "src/host/*"]),
    ("encodings", ["*/charset*", "*/zkutf8*", "*/zkurlencoding*", "*/tqbuffpart*"]),
    ("scanning and URLs", ["*/zkhtmlparseutils*", "src/classic/blanking.*", "src/classic/removal.*",
                           "src/classic/url_*", "*/tqurlbase*", "*/urlcmp*"]),
    ("finder and records", ["*/zkhtmlattributefinder*", "*/zkhtmldiet*",
                            "include/recordattributes.h",
                            "src/classic/attribute_names.*", "src/classic/tags_of_interest.*"]),
    ("tags and style text", ["src/classic/tag_attributes.*", "src/classic/style_urls.*"]),
    ("offset parser", ["*/zkhtmloffsetparser*"]),
    ("all of the classic library", ["include/pagescan.h"]),
]
# The parts that a part uses, and with them those that they use. The classic library and the page
# reader have base in common, and nothing else: their rules differ.
USES = {
    "base": [],
    "rw": ["base"],
    "text helpers": ["rw"],
    "host routines": ["base"],
    "encodings": ["text helpers", "host routines"],
    "scanning and URLs": ["encodings"],
    "finder and records": ["scanning and URLs"],
    "tags and style text": ["finder and records"],
    "offset parser": ["tags and style text"],
    "all of the classic library": ["offset parser"],
    "encoding": ["base"],
    "url": ["encoding"],
    "page": ["url"],
    "edits": ["page"],
}
HOSTS = ["tool/**/*", "examples/*", "tests/shared/*", "tests/host/*", "tests/host_one/*",
         "tests/hosts/*"]
SOURCES = ("*.h", "*.cpp")
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)


def part_of(path):
    for part, patterns in PARTS:
        if any(fnmatch(path, pattern) for pattern in patterns):
            return part
    return None


def may_use(source, target):
    return source == target or any(may_use(used, target) for used in USES[source])


def resolve(root, includer, name):
    """The file meant by #include "name", relative to the root; None if the tree has none."""
    for folder in (includer.parent, root / "include", root / "src", root / "tool", root / "tests"):
        candidate = (folder / name).resolve()
        if candidate.is_file():
            return candidate.relative_to(root).as_posix()
    return None


def library_fault(source, target):
    source_part, target_part = part_of(source), part_of(target)
    for path, part in ((source, source_part), (target, target_part)):
        if part is None:
            return f"{path} belongs to no part: name it in PARTS"
    if not may_use(source_part, target_part):
        return f"{source_part} must not know {target_part}"
    if source.startswith("include/") and not target.startswith("include/"):
        return "an exported header includes exported headers alone"
    return None


def host_fault(source, target):
    own = target.startswith(source.split("/")[0] + "/")
    return None if own or target.startswith("include/") else "a host sees exported headers alone"


def faults(root):
    hosts = [p for pattern in HOSTS for p in root.glob(pattern)]
    library = [p for folder in ("include", "src") for kind in SOURCES
               for p in (root / folder).rglob(kind)]
    for files, fault_of in ((library, library_fault), (hosts, host_fault)):
        for path in sorted(p for p in files if p.suffix in (".h", ".cpp")):
            source = path.relative_to(root).as_posix()
            for name in INCLUDE.findall(path.read_text(encoding="utf-8")):
                target = resolve(root, path, name)
                fault = fault_of(source, target) if target else "no such file in this tree"
                if fault:
                    yield f'{source}: #include "{name}": {fault}'
    if not library:
        yield f"{root}: no sources found"


def main():
    found = list(faults(Path(sys.argv[1]).resolve()))
    print("\n".join(found) if found else "every include follows the graph")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
