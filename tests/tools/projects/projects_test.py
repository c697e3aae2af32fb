#!/usr/bin/python3
"""Checks that the Xojo projects are complete and contain the code and the expected output of the example scripts."""
import re
import unittest
from collections import namedtuple
from pathlib import Path

EXAMPLES = Path(__file__).resolve().parents[3] / "examples"
PROJECTS = EXAMPLES / "xojo"
# For each kind of item, the line that must occur once in the item's file, followed by the item's name.
HEADERS = {"Class": "Protected Class ", "Module": "Protected Module ", "DesktopWindow": "Begin DesktopWindow ",
           "MenuBar": "Begin Menu ", "BuildSteps": None}
Item = namedtuple("Item", "kind name path id parent is_encrypted")


def scripts(for_desktop):
    """Returns the scripts for desktop or console projects. Scripts that draw need a project that has windows."""
    found = [*EXAMPLES.glob("scripts/*.xojo"), EXAMPLES / "tour.xojo"]
    return [script for script in found if ("As Graphics" in script.read_text()) == for_desktop]


def name_of(script):
    """Converts a path to a name in camel case: scripts/crash_safe_call.xojo becomes CrashSafeCall."""
    return re.sub(r"(?:^|_)([a-z])", lambda match: match[1].upper(), script.stem)


class XojoProjects(unittest.TestCase):
    def read_lines(self, path):
        text = path.read_bytes().decode()
        self.assertTrue(text.endswith("\n") and not text.startswith("\ufeff") and "\r" not in text, path)
        return text.split("\n")[:-1]

    def read_project(self, path):
        """Returns a project's items and settings. Anything that the format does not allow fails the test."""
        items, settings = [], {}
        for line in self.read_lines(path):
            key, equals, value = line.partition("=")
            self.assertTrue(equals, f"{path}: {line}")
            if value.count(";") >= 4:
                items.append(Item(key, *value.split(";")))
            else:
                self.assertNotIn(key, settings, path)
                settings[key] = value
        return items, settings

    def without_indentation(self, line, indentation):
        self.assertTrue(line.startswith(indentation), line)
        return line[len(indentation):]

    def read_item(self, path):
        """Returns the lines of each method and event by declaration, except empty lines. The item's Run method and its
        event correspond to the top level of a script; their declaration is empty. Tags and blocks must be nested."""
        parts, open_blocks, key, declaration = {}, [], None, None
        for line in self.read_lines(path):
            first, second, *_ = [*line.split(), "", ""]
            is_in_member = bool(open_blocks) and open_blocks[-1] in ("Method", "Event")
            if first == "#tag" and not second.startswith("End"):
                open_blocks.append(second.rstrip(","))
                declaration = None
            elif first == "#tag":
                self.assertEqual(open_blocks and "End" + open_blocks.pop(), second, f"{path}: {line}")
            elif is_in_member and declaration is None:
                declaration = self.without_indentation(line, "\t\t")
                key = re.sub("^(Protected|Private) ", "", declaration)
                if key == "Sub Run()" or open_blocks[-1] == "Event":
                    key = ""
                self.assertNotIn(key, parts, path)
                parts[key] = []
            elif is_in_member and line.startswith("\t\tEnd "):
                self.assertIn(f" {second} ", f" {declaration}", path)
            elif is_in_member:
                if code := self.without_indentation(line, "\t\t  "):
                    parts[key].append(code)
            elif first == "Begin":
                open_blocks.append("block")
            elif first == "End" and not second:
                self.assertEqual(open_blocks and open_blocks.pop(), "block", f"{path}: {line}")
        self.assertEqual(open_blocks, [], path)
        return parts

    def read_script(self, path):
        """Returns the lines of each method by declaration. The lines at the top level have an empty declaration."""
        parts, method = {"": []}, ""
        for line in self.read_lines(path):
            is_end = line.startswith(("End Sub", "End Function"))
            if line.startswith(("Sub ", "Function ")):
                method = line
                parts[method] = []
            elif line and not is_end:
                parts[method].append(line[2:] if method else line)
            if is_end:
                method = ""
        return parts

    def test_are_complete(self):
        for name in "Examples", "RotatedText", "SelfCheck":
            folder = PROJECTS / name
            items, settings = self.read_project(folder / f"{name}.xojo_project")
            for item in items:
                self.assertRegex(item.id, "^&h[0-9A-F]{16}$")
                self.assertEqual(item.parent, "&h0000000000000000")
                lines = self.read_lines(folder / item.path)
                if header := HEADERS[item.kind]:
                    self.assertEqual(lines.count(header + item.name), 1, item.path)
                self.assertNotRegex("\n".join(lines), "@[A-Z]+@", item.path)
                self.read_item(folder / item.path)
            self.assertEqual(len({item.id for item in items}), len(items))
            listed = {item.path for item in items} | {f"{name}.xojo_project", f"{name}.xojo_resources"}
            self.assertEqual(listed, {path.name for path in folder.iterdir()})
            is_desktop = settings["Type"] == "Desktop"
            self.assertEqual(settings["AppIcon"], f"{name}.xojo_resources;&h0")
            self.assertEqual((folder / f"{name}.xojo_resources").read_bytes(), b"ICNS\0\0\0\x08\0\0\0\0")
            for setting, kind in ("DefaultWindow", "DesktopWindow"), ("AppMenuBar", "MenuBar"):
                self.assertEqual(setting in settings, is_desktop, setting)
                named = [item for item in items if item.kind == kind and item.name == settings.get(setting)]
                self.assertEqual(len(named), is_desktop, setting)

    def test_have_the_code_of_the_scripts(self):
        self.assertGreaterEqual(len(scripts(False)), 6)
        for script in scripts(False):
            wanted = self.read_script(script)
            file = f"{name_of(script)}Example.xojo_code"
            self.assertEqual(self.read_item(PROJECTS / "Examples" / file), wanted)
            # Instead of Print and ConsoleExecuteZKT, the self-check calls methods that collect the output.
            collecting = self.read_item(PROJECTS / "SelfCheck" / file)
            for declaration, lines in collecting.items():
                code = re.sub(r"\"[^\"\n]*\"|'.*", "", "\n".join(lines))
                self.assertNotRegex(code, r"(?i)\b(Print|ConsoleExecuteZKT)\b")
                collecting[declaration] = [re.sub(r"\bStartAndCollect\b", "ConsoleExecuteZKT",
                                                  re.sub(r"\bCollect\b", "Print", line)) for line in lines]
            self.assertEqual(collecting, wanted)

    def test_draw_in_the_window_what_the_script_draws(self):
        [script] = scripts(True)
        wanted = self.read_script(script)
        # The script creates a picture before drawing and saves it afterward. The project draws in the window instead.
        lines = wanted[""]
        first = lines.index("Var g As Graphics = sheet.Graphics") + 1
        for line in lines[:first - 1]:
            self.assertTrue(line.startswith(("' ", "Var sheet ")), line)
        omitted = "Var file ", "sheet.Save(", "MessageBox("
        wanted[""] = [line for line in lines[first:] if not line.startswith(omitted)]
        self.assertEqual(self.read_item(PROJECTS / "RotatedText/MainWindow.xojo_window"), wanted)

    def test_run_and_compare_every_example(self):
        wanted = {}
        for script in scripts(False):
            printed = [line.replace('"', '""') for line in self.read_lines(script.with_suffix(".txt"))]
            wanted[f"Sub Check{name_of(script)}()"] = [
                "Var expected() As String", *(f'expected.Add("{line}")' for line in printed), "Try",
                f"  {name_of(script)}Example.Run", "Catch e As RuntimeException",
                '  Collect "stopped by an exception: " + e.Message', "End Try",
                f'CompareOutput("{script.name}", expected)']
        self.assertEqual(self.read_item(PROJECTS / "SelfCheck/Checks.xojo_code"), wanted)
        # The tour must run last, because it changes counters that another example prints.
        for project, call in ("Examples", "{}Example.Run"), ("SelfCheck", "Checks.Check{}"):
            found = self.read_item(PROJECTS / project / "App.xojo_code")[""]
            found = [line for line in found if not line.startswith(("' ", "Return "))]
            self.assertEqual(found[-1], call.format("Tour"))
            self.assertEqual(sorted(found), sorted(call.format(name_of(script)) for script in scripts(False)))


unittest.main()
