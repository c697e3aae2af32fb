"""Reads the project's Markdown pages: sections, tables, code and links."""
import re
from collections import namedtuple
from functools import cache
from pathlib import Path
from posixpath import dirname, join, normpath, relpath


Section = namedtuple("Section", "title text")


@cache
def tables(text):
    """Returns the rows of each table as dictionaries whose keys are the header's cells."""
    found = []
    for table in re.findall(r"(?:^\|.*\n)+", text, re.M):
        head, _, *rows = [[cell.strip() for cell in re.split(r"(?<!\\)\|", line)[1:-1]] for line in table.splitlines()]
        found.append([dict(zip(head, row)) for row in rows])
    return found


def rows_with(text, *columns):
    return [row for table in tables(text) for row in table if set(columns) <= set(row)]


def as_table(rows):
    cells = [list(rows[0]), ["---"] * len(rows[0]), *(row.values() for row in rows)]
    return "".join("| " + " | ".join(row) + " |\n" for row in cells)


def names(cell):
    """Returns the names in a table cell that are formatted as code."""
    return re.findall(r"`(\w[\w.]*)`", cell)


def code_blocks(text):
    """Returns each block of Xojo code, together with the output block that follows, if any."""
    return re.findall(r"^```xojo\n.*?^```\n(?:\n```text\n.*?^```\n)?", text, re.M | re.S)


class Pages:
    """The Markdown pages in the docs subfolder of a folder, by path."""

    def __init__(self, folder):
        self.texts = {path.relative_to(folder).as_posix(): path.read_text()
                      for path in sorted(Path(folder).glob("docs/**/*.md"))}

    @cache
    def sections(self, page):
        """Returns the sections of a page, keyed by anchor. The introduction has an empty anchor."""
        introduction, *rest = re.split(r"^## (.*)\n+", self.texts[page], flags=re.M)
        title, text = re.match(r"# (.*)\n+", introduction)[1], re.sub(r"^# .*\n+", "", introduction)
        sections = {"": Section(title, text)}
        for title, text in zip(rest[::2], rest[1::2]):
            sections[re.sub(r"[^\w -]", "", title.lower()).replace(" ", "-")] = Section(title, text)
        return sections


def target_of(link, page):
    """Returns the target page and anchor of a link on a page."""
    path, _, anchor = link.partition("#")
    return normpath(join(dirname(page), path)) if path else page, anchor


def move_links(text, page, folder):
    """Returns text from a page, with its links rewritten to work from another folder."""
    def moved(match):
        if re.match(r"\w+:", match[1]):
            return match[0]
        target, anchor = target_of(match[1], page)
        return f"]({relpath(target, folder)}{'#' + anchor if anchor else ''})"
    return re.sub(r"\]\(([^)\s]+)\)", moved, text)
