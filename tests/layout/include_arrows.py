#!/usr/bin/env python3
"""Holds every #include of a tree to the layers: include_arrows.py ROOT.

A file includes files of its own layer and of the layers above it in LAYERS, never of one below.
Hosts (the tool, the examples, tests that stand for a host) see the exported headers alone.
"""

import re
import sys
from fnmatch import fnmatch
from pathlib import Path

LAYERS = [
    ("base", ["include/pagescan_export.h", "src/base/*"]),
    ("rw", ["include/rw/*", "src/rw/*"]),
    ("text helpers", ["src/text_view.*", "src/scratch_text.*",
                      "src/standard_output.*"]),
    ("host routines", ["include/hostroutines.h", "src/host/*"]),
    ("encodings", ["*/charset*", "*/zkutf8*", "*/zkurlencoding*", "*/tqbuffpart*"]),
    ("scanning and URLs", ["*/zkhtmlparseutils*", "src/blanking.*", "src/url_*", "*/tqurlbase*",
                           "*/urlcmp*"]),
    ("finder and records", ["*/zkhtmlattributefinder*", "*/zkhtmldiet*", "src/attribute_names.*",
                            "src/tags_of_interest.*"]),
    ("tags and style text", ["src/tag_attributes.*", "src/style_urls.*"]),
    ("offset parser", ["*/zkhtmloffsetparser*"]),
    ("everything", ["include/pagescan.h"]),
]
HOSTS = ["tool/*", "examples/*", "tests/shared/*", "tests/host/*", "tests/host_one/*",
         "tests/hosts/*"]
SOURCES = ("*.h", "*.cpp")
INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"', re.MULTILINE)


def layer_of(path):
    for rank, (_, patterns) in enumerate(LAYERS):
        if any(fnmatch(path, pattern) for pattern in patterns):
            return rank
    return None


def resolve(root, includer, name):
    """The file meant by #include "name", relative to the root; None if the tree has none."""
    for folder in (includer.parent, root / "include", root / "src", root / "tests"):
        candidate = (folder / name).resolve()
        if candidate.is_file():
            return candidate.relative_to(root).as_posix()
    return None


def library_fault(source, target):
    source_layer, target_layer = layer_of(source), layer_of(target)
    for path, layer in ((source, source_layer), (target, target_layer)):
        if layer is None:
            return f"{path} belongs to no layer: name it in LAYERS"
    if target_layer > source_layer:
        return f"{LAYERS[source_layer][0]} must not know {LAYERS[target_layer][0]}"
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
    print("\n".join(found) if found else "every include follows the layers")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
