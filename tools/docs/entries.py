#!/usr/bin/python3
"""Writes a page for each reference entry.

    entries.py FOLDER    FOLDER holds a copy of the project's pages; the new pages are added to it

The existing pages are the only source. An entry without a required fact is an error, as is a fact without an entry.
"""
import re
import sys
from pathlib import Path

from facts import FACTS, MESSAGES, Facts, Problem, messages_in, parameters_of, signature_of
from markdown import Pages, as_table, code_blocks, move_links, rows_with, target_of

FOLDER = "docs/reference/entries"
NO_TABLE_ROW = """It uses only the arrays and objects that you pass to it. Any cooperative thread may use it, and any
number of preemptive threads, as long as no two of them use the same array or object at the same time."""


class EntryPage:
    def __init__(self, entry, pages, facts):
        self.entry, self.pages, self.facts = entry, pages, facts
        self.is_property = "property" in entry.kind
        self.used_rows = []  # of the parameter table
        if entry.name in facts.properties:
            page, row = facts.properties[entry.name]
            self.row = row
            self.links = [(row["Property"], page, "")]
        else:
            self.row = self.required(facts.meanings.get(entry.name), "no meaning")[0]
            links = re.findall(r"\[(.+?)\]\((.+?)\)", self.row["Described in"])
            self.links = [(title, *target_of(link, FACTS)) for title, link in links]
        self.described_on = list(dict.fromkeys(page for _, page, _ in self.links))

    def required(self, value, complaint):
        if not value:
            raise Problem(f"{self.entry.name}: {complaint} in {FACTS}")
        return value

    def moved(self, text, page):
        return move_links(text, page, FOLDER)

    def meaning(self):
        text = self.moved(self.required(self.row["Meaning"], "no meaning"), self.links[0][1])
        if "," in self.row.get("Property", ""):
            return f"{self.row['Property']}: {text}."
        return text[0].upper() + text[1:] + "."

    def declarations(self):
        since = {"any": "every version that loads the plug-in"}
        rows = [{**row, "Since": since.get(row["Since"], f"{row['Since']} or newer")}
                for row in self.entry.declarations]
        titles = {"Declaration": "Declaration", "T": "T is", "Projects": "Kinds of projects", "Since": "Xojo"}
        return as_table([{title: row[key] for key, title in titles.items() if key in row} for row in rows])

    def parameters(self):
        rows = []
        for name, parameter in {} if self.entry.kind == "class" else parameters_of(self.entry).items():
            fitting = [row for row in self.facts.parameters if f"`{name.lower()}`" in row["Parameter"].lower()]
            own = [row for row in fitting if f"`{self.entry.name}`" in row["Of"]]
            meaning = self.required(own or [row for row in fitting if row["Of"] == "all"], f"no parameter {name}")[0]
            self.used_rows.append(meaning)
            rows.append({"Parameter": f"`{parameter.form}`", "Type": " or ".join(parameter.types),
                         "Default": f"`{parameter.default}`" if parameter.default else "required",
                         "Meaning": meaning["Meaning"]})
        return as_table(rows) if rows else "None.\n"

    def result(self):
        types = {} if self.entry.kind == "class" else {
            signature_of(row["Declaration"])[1]: 0 for row in self.entry.declarations}
        types = [kind for kind in types if kind]
        if not types:
            return "None.\n"
        if self.is_property:
            samples = [f" In {title}: {value}." for title, value in self.row.items() if title.startswith("`") and value]
            is_fixed = "(read-only)" in self.entry.declarations[0]["Declaration"]
            access = "read-only" if is_fixed else "can be read and set"
            return f"{types[0]}, {access}.{''.join(samples)}\n"
        return f"{' or '.join(types)}: {self.required(self.row['Result'], 'no result')}.\n"

    def exceptions(self):
        rows = self.facts.raised.get(self.entry.name, [])
        raised = [message for row in rows for message in messages_in(row["Message"])]
        if self.is_property and not raised:
            raised = ["no exception"]
        self.required(raised, "no exceptions")
        for message in self.shown_exceptions() - set(raised):
            raise Problem(f"{self.entry.name}: an example raises '{message}', which {FACTS} does not have")
        if raised == ["no exception"]:
            return "None.\n"
        if unknown := set(raised) - set(self.facts.explained):
            raise Problem(f"{self.entry.name}: {MESSAGES} does not explain {sorted(unknown)}")
        rows = []
        for message in raised:
            row = self.facts.explained[message]
            if rows and rows[-1]["Cause"] == row["Cause"]:
                rows[-1]["Message"] += f", {message}"
            else:
                rows.append({**row, "Message": message})
        return self.moved(as_table(rows), MESSAGES)

    def outcomes(self, text):
        return [row for row in rows_with(text, "Code", "Result") if self.entry.is_in(row["Code"])]

    def shown_exceptions(self):
        rows = [row for page in self.described_on for row in self.outcomes(self.pages.texts[page])]
        return {row["Result"].split(": ", 1)[1] for row in rows if re.match(r"\w+Exception: ", row["Result"])}

    def description(self):
        if self.entry.name in self.facts.properties:
            blocks = code_blocks(self.pages.texts[self.links[0][1]])
            naming = [block for block in blocks if self.entry.is_in(block)]
            return "## Example\n\n" + self.required(naming or blocks, "no example")[0]
        parts = []
        for title, page, anchor in self.links:
            sections = self.pages.sections(page)
            if anchor not in sections:
                raise Problem(f"{self.entry.name}: {page} has no section '{anchor}'")
            parts.append(f"## {title}\n\n{self.moved(sections[anchor].text, page)}")
        text = "\n".join(parts)
        if not code_blocks(text) and "no example" not in text:
            raise Problem(f"{self.entry.name}: no example in {self.links}")
        for page in self.described_on:
            section = self.pages.sections(page).get("what-happens-if")
            if section and (rows := self.outcomes(section.text)):
                text += f"\n## {section.title}\n\n{code_blocks(section.text)[0]}\n{as_table(rows)}"
        return text

    def threads(self):
        rows = self.facts.threads.get(self.entry.name)
        return as_table(rows) if rows else NO_TABLE_ROW

    def see_also(self):
        links = [f"[{name}]({FOLDER}/{name}.md)" for name, rows in self.facts.meanings.items()
                 if rows[0]["Described in"] == self.row.get("Described in") and name != self.entry.name]
        links.append(f"[All of {self.entry.owner}](docs/reference/{self.entry.owner}.md)")
        for page in self.pages.texts:
            if page.startswith("docs/guide/recipes/") and "ZKT" in self.entry.short_name:
                links += [f"[{section.title}]({page}#{anchor})" for anchor, section in self.pages.sections(page).items()
                          if anchor and self.entry.is_in(section.text)]
        return self.moved("".join(f"- {link}\n" for link in links), "README.md")

    def text(self):
        platforms = self.moved(f"{', '.join(self.facts.platforms)}. [Platforms](docs/guide/platforms.md)", "README.md")
        threads = self.moved("[Threads](docs/guide/threads.md)", "README.md")
        sections = {"Declaration": self.declarations(),
                    "Parameters": self.parameters(),
                    "Type" if self.is_property else "Result": self.result(),
                    "Exceptions": self.exceptions(),
                    "Threads": f"{self.threads()}\n{threads}\n",
                    "Platforms": platforms + "\n"}
        facts = "".join(f"## {title}\n\n{body}\n" for title, body in sections.items())
        return (f"# {self.entry.name}\n\n{self.meaning()}\n\n{facts}{self.description()}\n"
                f"## See also\n\n{self.see_also()}")


def write_pages(folder):
    """Adds the entry pages to the folder, and a hidden list of its entries to each reference page."""
    pages = Pages(folder)
    facts = Facts(pages)
    entry_pages = [EntryPage(entry, pages, facts) for entry in facts.entries.values()]
    texts = {page.entry.name: page.text() for page in entry_pages}
    used = [row for page in entry_pages for row in page.used_rows]
    for row in facts.parameters:
        if row not in used:
            raise Problem(f"{FACTS}: no declaration has {row['Parameter']} of {row['Of']}")
    (folder / FOLDER).mkdir()
    for name, text in texts.items():
        (folder / FOLDER / f"{name}.md").write_text(text)
    for owner in {page.entry.owner for page in entry_pages}:
        links = "".join(f"entries/{page.entry.name}\n" for page in entry_pages if page.entry.owner == owner)
        with open(folder / f"docs/reference/{owner}.md", "a") as page:
            page.write(f"\n```{{toctree}}\n:hidden:\n:titlesonly:\n\n{links}```\n")
    rows = [{"Entry": f"[{page.entry.name}](entries/{page.entry.name}.md)", "Kind": page.entry.kind,
             "Meaning": page.meaning()} for page in sorted(entry_pages, key=lambda page: page.entry.name.lower())]
    (folder / "docs/reference/entries.md").write_text(f"# Every entry\n\n{as_table(rows)}")


if __name__ == "__main__":
    try:
        write_pages(Path(sys.argv[1]))
    except Problem as problem:
        sys.exit(f"entries.py: {problem}")
