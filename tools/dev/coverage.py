"""Reads the output of `llvm-cov export` and prints a table by folder of src/.

A branch of a template counts once, because the source contains it only once. It counts as run if any instantiation runs
it, because some element types can never take it."""
import collections
import json
import pathlib
import sys

project = pathlib.Path(__file__).resolve().parents[2]
folders = collections.defaultdict(collections.Counter)
for file in json.load(sys.stdin)["data"][0]["files"]:
    path = pathlib.Path(file["filename"]).relative_to(project)
    folder = folders["/".join(path.parts[:2])]
    folder["lines"] += file["summary"]["lines"]["count"]
    folder["lines run"] += file["summary"]["lines"]["covered"]
    outcomes = collections.Counter()
    for *place, true_count, false_count, _, _, _ in file["branches"]:
        outcomes[(*place, True)] += true_count
        outcomes[(*place, False)] += false_count
    folder["branches"] += len(outcomes)
    folder["branches run"] += sum(count > 0 for count in outcomes.values())
folders["all"] = sum(folders.values(), collections.Counter())


def percent(folder, what):
    return f"{100 * folder[what + ' run'] / folder[what]:.1f}%" if folder[what] else "-"


print(f"{'folder':16} {'lines':>8} {'branches':>9}")
for name, folder in sorted(folders.items(), key=lambda item: (item[0] == "all", item[0])):
    print(f"{name:16} {percent(folder, 'lines'):>8} {percent(folder, 'branches'):>9}")
