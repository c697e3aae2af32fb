#!/usr/bin/python3
"""Checks that the Xojo projects in examples/xojo match the example scripts; with --update, rewrites the projects."""
import argparse
import re
import sys
from collections import namedtuple
from pathlib import Path
from textwrap import indent

# A folder of handwritten items for each project, and the "common" folder. They may contain placeholders.
TEMPLATES = Path(__file__).resolve().parent / "templates"
EXAMPLES = Path(__file__).resolve().parents[2] / "examples"
KINDS = {"App.xojo_code": "Class", "Build Automation.xojo_code": "BuildSteps", "MainMenu.xojo_menu": "MenuBar",
         "MainWindow.xojo_window": "DesktopWindow"}  # all other items are modules

# @OLDEST@ is the oldest version of the IDE, and @FLAGS@ are the systems to build for.
CONSOLE = {"@TYPE@": "Console", "@OLDEST@": "20070100", "@FLAGS@": "&h4100", "@DEFAULTS@\n": "", "@DISPLAY@\n": ""}
DESKTOP = {"@TYPE@": "Desktop", "@OLDEST@": "20210300", "@FLAGS@": "&h4900",
           "@DEFAULTS@\n": "DefaultWindow=MainWindow\nAppMenuBar=MainMenu\n",
           "@DISPLAY@\n": "HiDPI=True\nDarkMode=True\n"}

# A script is split into methods and statements, because a Xojo item has no code outside methods.
Script = namedtuple("Script", "path name statements methods")


def read_script(path):
    name = "".join(word.capitalize() for word in path.stem.split("_"))
    # Only code at the top level starts in the first column.
    method = r"^(?:Sub|Function) (?:.*\n)*?End (?:Sub|Function)\n"
    statements = re.sub(method, "", path.read_text(), flags=re.M)
    # Removing a method leaves the empty lines around it, so drop all but one of them.
    statements = re.sub(r"\n{3,}", "\n\n", statements.lstrip("\n"))
    return Script(path, name, statements, re.findall(method, path.read_text(), re.M))


def in_tag(code):
    """Indents code for use inside a tag."""
    return "".join(f"\t\t{line or '  '}\n" for line in code.splitlines())


def methods_of_item(methods, scope="Protected", flags="&h1"):
    """Formats methods, separated by empty lines. Protected methods of a module are called as Name.Method."""
    begin, end = f"\t#tag Method, Flags = {flags}\n", "\t#tag EndMethod\n"
    return "\n".join(begin + in_tag(f"{scope} {code}") + end for code in methods)


def module(name, methods):
    """Returns the file name and the text of a module."""
    text = f"#tag Module\nProtected Module {name}\n{methods_of_item(methods)}\n\nEnd Module\n#tag EndModule\n"
    return {f"{name}.xojo_code": text}


def collecting(code):
    """Replaces the methods that print with those that collect the output, except in string literals and comments."""
    collectors = {"print": "Collect", "consoleexecutezkt": "StartAndCollect"}
    words = r'"[^"\n]*"|\'.*|\b(Print|ConsoleExecuteZKT)\b'
    return re.sub(words, lambda match: collectors[match[1].lower()] if match[1] else match[0], code, flags=re.I)


def check_of(script):
    """Returns the source of a Xojo method that runs an example and compares its output with the expected output."""
    printed = script.path.with_suffix(".txt").read_text().replace('"', '""').splitlines()
    expected = "".join(f'  expected.Add("{line}")\n' for line in printed)
    return f"""\
Sub Check{script.name}()
  Var expected() As String
{expected}  Try
    {script.name}Example.Run
  Catch e As RuntimeException
    Collect "stopped by an exception: " + e.Message
  End Try
  CompareOutput("{script.path.name}", expected)
End Sub
"""


def id_of(name):
    """Returns an ID that depends only on the name: a hash (FNV-1a)."""
    value = 0xCBF29CE484222325
    for byte in name.encode():
        value = (value ^ byte) * 0x100000001B3 % 2**64
    return f"&h{value:016X}"


def replaced(text, replacements):
    for placeholder, value in replacements.items():
        text = text.replace(placeholder, value)
    return text


def project(name, settings, modules, replacements):
    """Returns the contents of a project's files by path."""
    items = dict(modules)
    for path in [*(TEMPLATES / name).iterdir(), TEMPLATES / "common/Build Automation.xojo_code"]:
        items[path.name] = replaced(path.read_text(), replacements)
    lines = ""
    for file in sorted(items):
        stem = Path(file).stem
        lines += f"{KINDS.get(file, 'Module')}={stem};{file};{id_of(stem)};&h0000000000000000;false\n"
    overview = (TEMPLATES / "common/project").read_text()
    items[f"{name}.xojo_project"] = replaced(overview, settings | {"@ITEMS@\n": lines, "@NAME@": name})
    items[f"{name}.xojo_resources"] = "ICNS\0\0\0\x08\0\0\0\0"  # no icon
    return {f"{name}/{file}": text for file, text in items.items()}


def make_projects():
    """Makes the console examples, a window with rotated text, and a program that checks the examples in Xojo."""
    # The tour comes last, because it changes process-wide counters that another script prints.
    scripts = [read_script(path) for path in [*sorted(EXAMPLES.glob("scripts/*.xojo")), EXAMPLES / "tour.xojo"]]
    drawing = [script for script in scripts if "MessageBox(" in script.statements]
    printing = [script for script in scripts if script not in drawing]
    files = {}
    for script in drawing:
        # A Paint event provides g and needs no picture.
        statements = re.search(r"^Var g As Graphics.*\n((?:.*\n)*)Var file As FolderItem", script.statements, re.M)
        if statements is None:
            sys.exit(f"{script.path}: expected a line that declares g, and after it one that declares file")
        files |= project("RotatedText", DESKTOP, {}, {
            "@PAINT@\n": in_tag(indent(statements[1], "  ")),
            "@METHODS@\n": methods_of_item(script.methods, "Private", "&h21")})
    examples, collectors = {}, {}
    for script in printing:
        # The suffix keeps names such as "Arrays" from colliding with Xojo classes and methods.
        name = script.name + "Example"
        methods = [f"Sub Run()\n{indent(script.statements, '  ')}End Sub\n", *script.methods]
        examples |= module(name, methods)
        collectors |= module(name, [collecting(code) for code in methods])
    runs = "".join(f"  {script.name}Example.Run\n" for script in printing)
    checks = "".join(f"  Checks.Check{script.name}\n" for script in printing)
    collectors |= module("Checks", [check_of(script) for script in printing])
    files |= project("Examples", CONSOLE, examples, {"@CALLS@\n": in_tag(runs)})
    return files | project("SelfCheck", CONSOLE, collectors, {"@CALLS@\n": in_tag(checks)})


parser = argparse.ArgumentParser(description=__doc__)
parser.add_argument("--update", action="store_true", help="write the projects")
update = parser.parse_args().update
folder = EXAMPLES / "xojo"
wanted = {folder / file: text.encode() for file, text in make_projects().items()}
present = {path: path.read_bytes() for path in folder.rglob("*") if path.is_file()}
failures = []
for path in sorted(wanted.keys() | present):
    if present.get(path) == wanted.get(path):
        continue
    if not update:
        problem = "missing, or differs from the example scripts" if path in wanted else "no project has this file"
        failures.append(f"{path}: {problem}; ./dev update corrects it")
    elif path in wanted:
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(wanted[path])
    else:
        path.unlink()
sys.exit("\n".join(failures) or 0)
