#!/usr/bin/env python3
"""Holds what objects define to their own namespace: own_namespaces.py NAMESPACE EXPORTS FILE...

Two functions or tables of one name, one of the library and one of a program that is linked to it
statically, would become one without a word. So whatever a library or program defines and does not
export is in a namespace of its own. EXPORTS lists the library's exported names, or names that are
prescribed, one a line; members of those classes may be anywhere, as their inline functions are.
"""

import re
import subprocess
import sys
from pathlib import Path

# Of the language, of the standard library, and of the libraries that programs are made with.
FOREIGN = {"std", "__gnu_cxx", "__cxxabiv1", "operator", "DW", "CLI", "nlohmann", "testing",
           "main", "RWTOOL_INDEXERR"}
# What stands before the name: what the symbol is for, or the type that a template returns.
OWNER = re.compile(r"(?:(?:vtable|VTT|typeinfo|typeinfo name|guard variable|construction vtable|"
                   r"non-virtual thunk|virtual thunk) (?:for|to) )?(.*)")


def defined_symbols(files):
    listing = subprocess.run(["nm", "--demangle", "--defined-only", "--extern-only", "--quiet",
                              *files], check=True, capture_output=True, text=True).stdout
    for line in listing.splitlines():
        match = re.match(r"[0-9a-f]+ [A-Zuvw] (.*)", line)
        if match:
            yield match.group(1)


def without_arguments(name):
    """The name itself: neither template arguments nor parameters nor the type returned."""
    flat = re.sub(r"\((anonymous namespace)\)", r"\1", OWNER.match(name).group(1))
    depth = 0
    kept = []
    for c in flat:
        if c == "<":
            depth += 1
        if c == "(" and depth == 0:
            break
        if depth == 0:
            kept.append(c)
        if c == ">" and depth > 0:
            depth -= 1
    words = "".join(kept).split("operator")[0].split()
    return words[-1] if words else "operator"


def main():
    namespace, exports, *files = sys.argv[1:]
    exported = {without_arguments(line) for line in Path(exports).read_text().splitlines()}
    known = FOREIGN | {name.split("::")[0] for name in exported}
    faults = []
    for symbol in sorted(set(defined_symbols(files))):
        name = without_arguments(symbol)
        first = re.split(r"::|[.\[]", name)[0]
        if not (name.startswith(namespace + "::") or name in exported or first in known):
            faults.append(symbol)
    print("\n".join(faults) if faults else f"all that is not exported is in {namespace}")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
