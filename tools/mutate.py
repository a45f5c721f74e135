#!/usr/bin/env python3
"""A small mutation pass: does the test suite notice when the code is changed?

Picks a seeded sample of simple mutants in the .cpp files of the given folders (a comparison
or logical operator flipped, a boolean literal inverted, a call statement removed), builds each
one and runs the test suite until its first failure. A mutant is killed when a test fails or
times out, survives when every test passes, and is left out when it does not compile.

    python3 tools/mutate.py --build build --per-folder 20 src/session src/transport src/widgets

--targets and --test-dirs narrow a pass to some test programs (say, leaving out the real-X11
ones), built and run from their own folders of the build tree.

Prints one line per mutant and the kill rate per folder; --json writes the results as well.
The source tree is restored after every mutant, also when the run is interrupted.
"""
import argparse
import json
import random
import re
import subprocess
import sys
import time
from pathlib import Path

SWAPS = [
    (" == ", " != "), (" != ", " == "), (" < ", " <= "), (" <= ", " < "),
    (" > ", " >= "), (" >= ", " > "), (" && ", " || "), (" || ", " && "),
    ("true", "false"), ("false", "true"), (" + 1", " - 1"), (" - 1", " + 1"),
]
CALL_STATEMENT = re.compile(r"^(\s+)(?!return\b|delete\b|case\b|if\b|for\b|while\b)"
                            r"[A-Za-z_][\w:.\->]*(<[^;]*>)?\(.*\);\s*$")
SKIP = re.compile(r"^\s*(//|#|\*|/\*)|static_assert|Q_OBJECT|Q_PROPERTY|QStringLiteral\(\"")


def candidates(path):
    lines = path.read_text().splitlines(keepends=True)
    found = []
    for index, line in enumerate(lines):
        if SKIP.search(line) or '"' in line and line.count('"') >= 2 and "==" not in line:
            continue
        for old, new in SWAPS:
            start = line.find(old)
            while start != -1:
                if old in ("true", "false") and not re.match(
                        r"\W", line[start - 1:start] or " ") or line[start + len(old):][:1].isalnum():
                    start = line.find(old, start + 1)
                    continue
                found.append((path, index, line[:start] + new + line[start + len(old):],
                              f"{old.strip()} -> {new.strip()}"))
                start = line.find(old, start + 1)
        if CALL_STATEMENT.match(line) and not line.rstrip().endswith(") {"):
            indent = CALL_STATEMENT.match(line).group(1)
            found.append((path, index, indent + ";\n", "call removed"))
    return found


def run(command, timeout):
    try:
        return subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                              timeout=timeout).returncode
    except subprocess.TimeoutExpired:
        return -1


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("folders", nargs="+")
    parser.add_argument("--build", default="build")
    parser.add_argument("--per-folder", type=int, default=20)
    parser.add_argument("--seed", type=int, default=21)
    parser.add_argument("--test-timeout", type=int, default=600)
    parser.add_argument("--json")
    parser.add_argument("--exclude", default="package",
                        help="tests left out (a ctest -E pattern), such as ones that fail unmutated")
    parser.add_argument("--targets", nargs="*", default=[], help="build only these targets")
    parser.add_argument("--test-dirs", nargs="*", default=["."],
                        help="run the tests of these folders of the build tree")
    args = parser.parse_args()

    rng = random.Random(args.seed)
    build = ["cmake", "--build", args.build] + (["--target"] + args.targets if args.targets else [])
    results = []
    for folder in args.folders:
        sites = [site for path in sorted(Path(folder).rglob("*.cpp")) for site in candidates(path)]
        rng.shuffle(sites)
        tried = 0
        for path, index, mutated, operator in sites:
            if tried == args.per_folder:
                break
            original = path.read_text()
            lines = original.splitlines(keepends=True)
            lines[index] = mutated
            path.write_text("".join(lines))
            try:
                started = time.monotonic()
                if run(build, 900) != 0:
                    outcome = "uncompilable"
                else:
                    failed = any(run(["ctest", "--test-dir", f"{args.build}/{folder}", "-j2",
                                      "--stop-on-failure", "-E", args.exclude],
                                     args.test_timeout) != 0 for folder in args.test_dirs)
                    outcome = "killed" if failed else "survived"
            finally:
                path.write_text(original)
            if outcome == "uncompilable":
                continue
            tried += 1
            seconds = time.monotonic() - started
            print(f"{outcome:9} {path}:{index + 1} {operator} ({seconds:.0f} s)", flush=True)
            results.append({"folder": folder, "file": str(path), "line": index + 1,
                            "operator": operator, "outcome": outcome})
    run(build, 900)

    for folder in args.folders:
        mine = [r for r in results if r["folder"] == folder]
        killed = sum(r["outcome"] == "killed" for r in mine)
        print(f"{folder}: {killed}/{len(mine)} killed"
              f" ({100.0 * killed / max(1, len(mine)):.0f}%)")
    total_killed = sum(r["outcome"] == "killed" for r in results)
    print(f"all: {total_killed}/{len(results)} killed")
    if args.json:
        Path(args.json).write_text(json.dumps(results, indent=1))
    return 0


if __name__ == "__main__":
    sys.exit(main())
