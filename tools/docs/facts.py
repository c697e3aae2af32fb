"""Collects the facts that the pages state about each reference entry: a method, class, delegate or property."""
import re
from dataclasses import dataclass, field
from pathlib import Path

from markdown import names, rows_with, tables

FACTS = "docs/reference/parameters.md"
MESSAGES = "docs/guide/messages.md"
# Rows of the thread table that do not name their methods.
THREAD_ROWS = {"sorting by a delegate": ["SortArrayZKT", "SortZKT"]}


class Problem(Exception):
    """A missing fact, or a fact that belongs to no entry."""


@dataclass
class Entry:
    name: str  # with its owner, unless it is global
    owner: str
    kind: str
    declarations: list = field(default_factory=list)

    @property
    def short_name(self):
        return self.name.split(".")[-1]

    def is_in(self, code):
        """Returns whether the code uses the entry. Member names are common words, so they count only after a period."""
        before = r"\." if "." in self.name else r"\b"
        return re.search(before + self.short_name + r"\b", code) is not None


@dataclass
class Parameter:
    form: str  # the name, preceded by "byref" or "extends" if present
    types: list
    default: str


def signature_of(declaration):
    """Returns the parameter list and the result type. Either may be empty."""
    parts = re.fullmatch(r"\w+(?:\((.*?)\))?(?: as (\w+(?:\(\))?))?(?: \(read-only\))?", declaration.strip("`"), re.I)
    if parts is None:
        raise Problem(f"{declaration}: cannot be parsed")
    return parts[1] or "", parts[2] or ""


def parameters_of(entry):
    """Returns the parameters of the entry's declarations, by name."""
    found = {}
    for row in entry.declarations:
        form = r"(?:(extends|byref) )?(\w+)(\(\))? as (\w+)(?: = ([^,]+))?"
        texts = re.findall(form, signature_of(row["Declaration"])[0], re.I)
        for modifier, name, array, kind, default in texts:
            parameter = found.setdefault(name, Parameter(f"{modifier} {name}".strip(), [], default))
            if kind + array not in parameter.types:
                parameter.types.append(kind + array)
    return found


def messages_in(cell):
    """Splits a list of messages at its commas, but not at ", but", which two messages contain."""
    return re.split(r", (?!but )", cell)


class Facts:
    def __init__(self, pages):
        self.entries = {}
        reference = {page: text for page, text in pages.texts.items() if re.fullmatch(r"docs/reference/\w+\.md", page)}
        for page, text in reference.items():
            self._collect(Path(page).stem, text)
        facts = pages.texts[FACTS]
        self.meanings = self._by_entry(rows_with(facts, "Name", "Described in"), "Name")
        self.parameters = rows_with(facts, "Parameter", "Of")
        self._by_entry(self.parameters, "Of", {"all": []})
        raised = rows_with(facts, "Message", "Raised by")
        self.raised = self._by_entry(raised, "Raised by")
        explained = rows_with(pages.texts[MESSAGES], "Exception", "Message", "Cause", "Fix")
        self.explained = {message: row for row in explained for message in messages_in(row["Message"])}
        if unused := set(self.explained) - {message for row in raised for message in messages_in(row["Message"])}:
            raise Problem(f"{FACTS}: nothing raises {sorted(unused)}")
        threads = rows_with(pages.texts["docs/guide/threads.md"], "Method", "Preemptive threads")
        self.threads = self._by_entry(threads, "Method", THREAD_ROWS)
        self.properties = {f"{Path(page).stem}.{name}": (page, row) for page, text in reference.items()
                           for row in rows_with(text, "Property", "Meaning") for name in names(row["Property"])}
        self.platforms = list(tables(pages.texts["docs/guide/platforms.md"])[0][0])[1:]

    def _collect(self, owner, text):
        """Adds a page's declarations. Methods are global, except those on a class page."""
        is_class = text.startswith("# Class ")
        for row in rows_with(text, "Kind", "Declaration", "Projects", "Since"):
            short_name = re.search(r"\w+", row["Declaration"])[0]
            is_member = is_class or "property" in row["Kind"]
            found = {f"{owner}.{short_name}" if is_member else short_name: row["Kind"]}
            if row["Kind"] == "super class":
                found = {owner: "class"}
            elif is_class and short_name == "Constructor" and owner not in self.entries:
                found[owner] = "class"
            for name, kind in found.items():
                self.entries.setdefault(name, Entry(name, owner, kind)).declarations.append(row)

    def _by_entry(self, rows, column, aliases=None):
        """Groups the rows by entry. A parameter in a cell of the column stands for every entry that has it."""
        found = {}
        for row in rows:
            for name in names(row[column]) or (aliases or {}).get(row[column], [row[column]]):
                entries = self._named(name)
                if not entries:
                    raise Problem(f"{name}: unknown, but named in a column '{column}'")
                for entry in entries:
                    found.setdefault(entry, []).append(row)
        return found

    def _named(self, name):
        """Returns the entries with a name, which may lack the owner, or the methods with a parameter of that name."""
        entries = self.entries.values()
        return ([name] if name in self.entries else
                [entry.name for entry in entries if entry.short_name == name] or
                [entry.name for entry in entries if entry.kind == "method" and name in parameters_of(entry)])
