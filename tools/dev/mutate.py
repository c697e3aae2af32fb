"""Makes one small change at a time to src/ and shows which changes no test detects.

  mutate.py [--seed N] [--count N] [FILE...]

The script copies the last commit to build/mutate/source and works there. If a change cannot alter any result, list it
with the reason in tests/data/equivalent_mutants.txt, so that it is not tried again."""
import argparse
import pathlib
import random
import re
import subprocess
import sys

COPY = pathlib.Path("build/mutate/source")
EQUIVALENT = pathlib.Path("tests/data/equivalent_mutants.txt")
PROGRAMS = ["unit_tests", "allocation_tests", "process_tests", "scenario_tests"]
SECONDS = 300  # a mutant that hangs is stopped after this time, and counts as detected

COMPARISONS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "&&": "||", "||": "&&"}
NAME = r"[A-Za-z_][\w.]*"
RELEASE = r"^ *(?:if \(.*\) )?[\w:.>-]*(?:[Uu]nlock|[Rr]elease|[Ff]ree)\w*\(.*\);$"
DESTRUCTOR = r"( ~\w+\(\)) \{ .+; \}"
CHECK = r"^ *if \([^{]*\) (?:return|continue|break)[^{]*;$"


def mutants_of_line(line):
    """Yields the kind and the result of each possible change to a line."""
    code = line.split("//")[0].rstrip()
    if not code or code.lstrip().startswith(("#", '"', "static_assert", "template", "requires", "using")) or '"' in code:
        return
    for match in re.finditer(r" (<=|>=|==|!=|<|>|&&|\|\|) ", code):
        yield "comparison", line[:match.start(1)] + COMPARISONS[match[1]] + line[match.end(1):]
    for match in re.finditer(r" [+-] 1\b(?![.'\w])", code):
        yield "off by one", line[:match.start()] + line[match.end():]
    for match in re.finditer(rf"\w\(({NAME}), ({NAME})\)", code):
        yield "swapped arguments", line[:match.start(1)] + f"{match[2]}, {match[1]}" + line[match.end(2):]
    if re.match(RELEASE, code):
        yield "dropped release", ""
    if re.search(DESTRUCTOR, code):
        yield "dropped release", re.sub(DESTRUCTOR, r"\1 {}", line)
    if re.match(CHECK, code):
        yield "removed check", ""


def described(line, changed):
    return f"{line.strip()} -> {changed.strip() or '(nothing)'}"


def mutants(files):
    known = EQUIVALENT.read_text() if EQUIVALENT.exists() else ""
    for file in files:
        for number, line in enumerate((COPY / file).read_text().split("\n")):
            for kind, changed in mutants_of_line(line):
                if f"{file}: {described(line, changed)}\n" not in known:
                    yield file, number, kind, line, changed


def succeeds(*command, show_failure=False):
    try:
        process = subprocess.run(command, cwd=COPY, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                 stderr=subprocess.STDOUT, timeout=SECONDS)
    except subprocess.TimeoutExpired as failure:
        process = subprocess.CompletedProcess(command, 1, failure.stdout or b"")
    if show_failure and process.returncode != 0:
        print(process.stdout.decode(errors="replace")[-2000:])
    return process.returncode == 0


def build():
    return succeeds("cmake", "--build", "--preset", "dev")


def passes(**options):
    """Returns whether all tests pass. Runs the programs first, because they detect most mutants much sooner than ctest
    would. ctest runs the other tests, whose names do not begin with a capital letter."""
    return all(succeeds(f"build/dev/bin/{program}", "--gtest_brief=1", "--gtest_fail_fast", **options)
               for program in PROGRAMS) and \
        succeeds("ctest", "--preset", "dev", "--stop-on-failure", "-j2", "-E", "^[A-Z]|^stress_[A-Z]", **options)


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=50)
    parser.add_argument("files", nargs="*")
    options = parser.parse_args()

    if COPY.exists():
        subprocess.run(["git", "-C", COPY, "fetch", "-q"], check=True)
    else:
        subprocess.run(["git", "clone", "-q", ".", COPY], check=True)
    subprocess.run(["git", "-C", COPY, "reset", "-q", "--hard", "origin/HEAD"], check=True)
    files = options.files or sorted(str(file.relative_to(COPY)) for file in (COPY / "src").rglob("*.*")
                                    if file.suffix in (".cpp", ".h") and "/macos/" not in str(file))
    subprocess.run(["cmake", "--preset", "dev"], cwd=COPY, check=True, stdout=subprocess.DEVNULL)
    subprocess.run(["cmake", "--build", "--preset", "dev", "--", "--quiet"], cwd=COPY, check=True)
    if not passes(show_failure=True):
        sys.exit("The tests fail even without a change.")

    tried = list(mutants(files))
    chosen = random.Random(options.seed).sample(tried, min(options.count, len(tried)))
    results = {"killed": 0, "survived": 0, "not compiled": 0}
    for file, number, kind, line, changed in chosen:
        path = COPY / file
        text = path.read_text()
        lines = text.split("\n")
        lines[number] = changed
        path.write_text("\n".join(lines))
        result = "not compiled" if not build() else "survived" if passes() else "killed"
        path.write_text(text)
        results[result] += 1
        print(f"{result:12} {kind:17} {file}:{number + 1}: {described(line, changed)}", flush=True)
    print(f"{len(tried)} mutants possible, {len(chosen)} tried: " + ", ".join(f"{n} {name}" for name, n in results.items()))
    sys.exit(results["survived"] > 0)


main()
