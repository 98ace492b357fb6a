"""Names what the includes of src/ must not do: tie more than two components together, or lead from
a module to one that stands above it. A component is a header with its source.

Usage: knots.py [FOLDER], the folder of the project
"""

import re
import sys
from pathlib import Path

# What each module stands on, besides what these stand on.
ORDER = {
    "exception": [],
    "errorcode": ["exception"],
    "str": ["exception", "errorcode"],
    "tokenizer": ["str"],
    "cmd_arg_parser": ["str"],
    "algebra": ["exception", "str"],
    "expat_parser": ["errorcode"],
    "lxml": ["expat_parser", "tokenizer", "str"],
    "lxpath": ["lxml"],
    "xml_preprocessor": ["algebra", "lxml"],
}


def reached(start, edges):
    """All that can be reached from a node by one edge or more."""
    found, open_nodes = set(), [start]
    while open_nodes:
        for node in edges.get(open_nodes.pop(), ()):
            if node not in found:
                found.add(node)
                open_nodes.append(node)
    return found


def components(source):
    """The components that each component includes."""
    edges = {}
    for file in sorted(source.rglob("*.h")) + sorted(source.rglob("*.cpp")):
        name = file.relative_to(source).with_suffix("").as_posix()
        includes = re.findall(r'^#include "(.*)\.h"', file.read_text(), re.MULTILINE)
        edges.setdefault(name, set()).update(set(includes) - {name})
    return edges


def knots(edges):
    tied = {node: reached(node, edges) for node in edges}
    groups = {frozenset(other for other in tied[node] if node in tied.get(other, ()))
              for node in edges}
    for group in sorted(sorted(group) for group in groups if len(group) > 2):
        yield f"{len(group)} components include each other: {' '.join(group)}"


def climbs(edges):
    for node, includes in sorted(edges.items()):
        module = node.rpartition("/")[0].split("/")[0]
        if module and module not in ORDER:
            yield f"{node}: the module {module} has no place in the order"
        allowed = reached(module, ORDER) | {module, ""}
        for other in sorted(includes):
            if module and other.rpartition("/")[0].split("/")[0] not in allowed:
                yield f"{node} includes {other}, which {module} does not stand on"


def main():
    edges = components(Path(sys.argv[1] if len(sys.argv) > 1 else ".") / "src")
    found = [*knots(edges), *climbs(edges)]
    print(*found, sep="\n", end="\n" if found else "")
    sys.exit(1 if found else 0)


if __name__ == "__main__":
    main()
