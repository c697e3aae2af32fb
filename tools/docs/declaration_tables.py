#!/usr/bin/python3
"""Checks that the tables of declarations in the reference pages match the plug-in; with --update, rewrites the tables.
Each module and class has a page with its name. The rest of the page is written by hand."""
import argparse
import re
import subprocess
import sys
from collections import namedtuple
from pathlib import Path

# Host versions and their names in the tables. The pages list the declarations for the last version.
VERSIONS = {"2010.0": "any", "2013.0": "2013r1", "2019.02": "2019r2", "2024.03": "2024r3"}
ALL_PROJECTS = 0x4
GLOBAL = 0x10
PROJECTS = {0x200: "desktop", 0x100: "web", 0x8: "console", 0x400: "iOS"}
# The lines that enclose a table.
BEGIN = "<!-- facts: made by ./dev update -->\n"
BEGIN_OF_MATRIX = "<!-- element types: made by ./dev update -->\n"
END = "<!-- end of facts -->\n"

Row = namedtuple("Row", "owner kind declaration flags key")


def rows_at(version, host):
    """Returns the declarations for a host version. A declaration's key is the same on every version."""
    rows = []
    listing = subprocess.check_output([*host, "--host-version", version, "catalogue"], text=True)
    for line in listing.splitlines()[1:]:
        title, *attributes = re.split("  +", line.strip())
        attributes = dict(attribute.partition(" ")[::2] for attribute in attributes)
        flags = int(attributes["flags"], 16)
        kind, declaration = re.fullmatch(r"(class extension|(?:global |shared )?\w+) (.*)", title).groups()
        if kind in ("module", "class", "class extension"):
            record, owner = kind, declaration
            if "super" in attributes:
                rows.append(Row(owner, "super class", attributes["super"], flags, owner))
            continue
        if kind == "global method":
            record, owner = "", ""
        if "property" in kind and attributes["setter"] == "none":
            declaration += " (read-only)"
        # Depending on the host version, a global method may be a member of a module, and an extension method may be a
        # member of a class. The key is the same either way.
        key = declaration
        if record == "class extension":
            key = key.replace("(", f"(extends ref as {owner}, ", 1)
        elif owner and not flags & GLOBAL:
            key += f" in {owner}"
        rows.append(Row(owner, kind, declaration, flags, key))
    return rows


def family_of(row):
    """Returns the declaration with T in place of the element type, and the element type; it is empty for a declaration
    without a family. The element type is the type of the first parameter, if that parameter is an array or a delegate's
    name contains the type."""
    first = re.match(r"(\w+)\((?:(?:extends|byref) )?\w+(\(\))? as (\w+)", row.declaration, re.I)
    if first is None or not (first[2] or row.kind == "delegate" and first[3] in first[1]):
        return row.declaration, ""
    parameters, result = row.declaration.rsplit(")", 1)
    # Matches the types of required parameters, and delegate names that contain the type.
    uses = rf"(^\w*| as \w*){first[3]}(\w*)\b(?! =)"
    return re.sub(uses, r"\1T\2", parameters, flags=re.I) + ")" + result, first[3]


def in_code(text):
    """Formats text as code in a table cell. An unescaped bar would end the cell."""
    return "`" + text.replace("|", r"\|") + "`"


def as_table(head, rows):
    lines = ["|" + "".join(f" {cell} |" if cell else " |" for cell in row) + "\n" for row in [head, *rows]]
    lines.insert(1, "|" + "---|" * len(head) + "\n")
    return "".join(lines)


def tables_of(host):
    """Returns the tables by page and first line: one for each module and class, and a matrix of the array methods and
    element types. Each cell of the matrix shows the first version that has the method for the type."""
    since = {}
    for version, name in VERSIONS.items():
        rows = rows_at(version, host)
        for row in rows:
            since.setdefault(row.key, name)
    pages, methods = {}, {}
    for row in rows:
        declaration, element = family_of(row)
        projects = "all" if row.flags & ALL_PROJECTS else ", ".join(
            name for flag, name in PROJECTS.items() if row.flags & flag)
        shared = row.kind, in_code(declaration), projects, since[row.key]
        pages.setdefault(row.owner, {}).setdefault(shared, []).append(element)
        if row.kind == "method" and "(extends " in declaration and element:
            name = in_code(declaration.split("(")[0]) + " by delegate" * ("theDelegate" in declaration)
            methods.setdefault(name, {})[element] = since[row.key]
    elements = sorted(set().union(*methods.values()))
    matrix = [[element, *(found.get(element, "") for found in methods.values())] for element in elements]
    tables = {("SortZKT", BEGIN_OF_MATRIX): as_table(["Element type", *methods], matrix)}
    for owner, families in pages.items():
        types = {shared: ", ".join(elements) for shared, elements in families.items()}
        middle = ["T"] if any(types.values()) else []
        tables[owner, BEGIN] = as_table(
            ["Kind", "Declaration", *middle, "Projects", "Since"],
            [[*shared[:2], *([elements] if middle else []), *shared[2:]] for shared, elements in types.items()])
    return tables


parser = argparse.ArgumentParser(description=__doc__)
parser.add_argument("--update", action="store_true", help="write the tables into the pages")
parser.add_argument("folder", type=Path, help="folder with the reference pages")
parser.add_argument("host", nargs=argparse.REMAINDER, help="command that runs xojo-host with the plug-in")
options = parser.parse_args()
failures = []
for (owner, begin), table in tables_of(options.host).items():
    page = options.folder / f"{owner}.md"
    text = page.read_text()
    before, found, rest = text.partition(begin)
    former, end, after = rest.partition(END)
    if not end:
        failures.append(f"{page}: the lines that enclose the table are missing:\n{begin}{END}")
    elif former != table and options.update:
        page.write_text(before + begin + table + end + after)
    elif former != table:
        failures.append(f"{page}: the table is out of date; ./dev update rewrites it")
sys.exit("\n".join(failures) or 0)
