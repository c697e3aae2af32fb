#!/usr/bin/python3
"""Makes facts in the documentation wrong or removes them. The build must report each change and name the entry."""
import sys
import tempfile
from pathlib import Path

PROJECT = Path(__file__).resolve().parents[2]
sys.dont_write_bytecode = True
sys.path.append(str(PROJECT / "tools/docs"))
from entries import Problem, write_pages  # noqa: E402

FACTS = "docs/reference/parameters.md"
MESSAGES = "docs/guide/messages.md"
THREADS = "docs/guide/threads.md"
GLOBALS = "docs/reference/UtilGlobalsZKT.md"
PAGE = "docs/reference/entries/SumZKT.md"

FAILURES = [
    # note, page, old text, new text, expected message
    ("a method without meaning", FACTS, "| `SetQOSClassZKT` | sets", "| `GetQOSClassZKT` | sets",
     "SetQOSClassZKT: no meaning"),
    ("a property without meaning", "docs/reference/LocaleZKT.md", "| `Name` | the name", "| `ExitZKT` | the name",
     "LocaleZKT.Name: no meaning"),
    ("a method without result", FACTS, "0, or the system's error number", "", "SetQOSClassZKT: no result"),
    ("a new method", GLOBALS, "| method | `AbortZKT` ", "| method | `RetryZKT` | all | any |\n| method | `AbortZKT` ",
     "RetryZKT: no meaning"),
    ("a new parameter", GLOBALS, "`ExitZKT(code as integer)`", "`ExitZKT(code as integer, now as Boolean = False)`",
     "ExitZKT: no parameter now"),
    ("a parameter that does not exist", FACTS, "| `m` | `Call", "| `n` | `ExitZKT` | none |\n| `m` | `Call",
     "no declaration has `n` of `ExitZKT`"),
    ("a method without exceptions", FACTS, "`DifferenceZKT`, `GetQOSClassZKT`,", "`DifferenceZKT`,",
     "GetQOSClassZKT: no exceptions"),
    ("an exception that an example shows", FACTS, "| Invalid format. | `FormatZKT` |", "| Invalid format. | `CDblZKT` |",
     "FormatZKT: an example raises 'Invalid format.'"),
    ("an exception that nothing explains", MESSAGES, "| date is nil |", "| date was nil |", "'date was nil'"),
    ("an exception of an unknown method", FACTS, "| date is nil | `FormatDateZKT`", "| date is nil | `FormatTimeZKT`",
     "FormatTimeZKT: unknown"),
    ("threads of an unknown method", THREADS, "| `PrintBacktraceZKT` |", "| `PrintStackZKT` |", "PrintStackZKT: unknown"),
    ("a section that does not exist", FACTS, "UtilGlobalsZKT.md#other-programs", "UtilGlobalsZKT.md#others",
     "ConsoleExecuteZKT: docs/reference/UtilGlobalsZKT.md has no section 'others'"),
    ("a method without example", GLOBALS, "so there is no example", "so that is all", "ExitZKT: no example"),
]

SHOWN = ["Adds the elements of a range.", "2013r1 or newer", "| `sourceCount` | Integer | `-2` | the number of elements",
         "Int64 or Currency or UInt64 or Double: the sum", "| OutOfBoundsException | sourceIndex < 0 | a negative",
         "preemptive", "macOS arm64 (11 and newer)", "prices.SumZKT", "111.75", "`a.SumZKT(3)`", "recipes/arrays.md#sum-part-of-an-array"]


def build(page="", old="", new=""):
    """Builds the entries after one change. Returns the error message and the SumZKT page; either may be empty."""
    with tempfile.TemporaryDirectory() as name:
        folder = Path(name)
        for source in PROJECT.glob("docs/**/*.md"):
            text = source.read_text()
            if source.relative_to(PROJECT).as_posix() == page:
                assert text.count(old) == 1, f"{page}: expected 1, found {text.count(old)}: {old}"
                text = text.replace(old, new)
            target = folder / source.relative_to(PROJECT)
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_text(text)
        try:
            write_pages(folder)
        except Problem as problem:
            return str(problem), ""
        return "", (folder / PAGE).read_text()


failures = []
error, shown = build()
if error:
    sys.exit(error)
failures += [f"the page of SumZKT lacks: {text}" for text in SHOWN if text not in shown]
for note, *change, message in FAILURES:
    error, _ = build(*change)
    if message not in error:
        failures.append(f"{note}: expected '{message}', found '{error}'")
sys.exit("\n".join(failures) or 0)
