#!/usr/bin/env python3
"""Seeded faults for the test suite: how many small mutations of the product code do the tests catch?

    scripts/mutants.py sample [--per-area N] [--seed S] [--out FILE]
        Lists every place a mutation operator applies in src/ and writes a fixed, seeded sample of N per
        folder of src/ (default: scripts/mutants-sample.jsonl). The sample is part of the repository, so
        that two runs at different times measure the same mutants.
    scripts/mutants.py run [--sample FILE] [--build DIR] [--area AREA] [--json FILE]
        For each mutant of the sample: applies it to its file, rebuilds the tests of its area
        incrementally, runs them, and puts the file back. A mutant is killed when a test fails (or times
        out), survives when all pass; a mutant that does not compile is stillborn and not counted.
        Prints killed / survived per area and every surviving mutant.

Operators: flip a comparison, swap && and ||, drop a + 1 or - 1, negate an if condition, drop an
assignment or an emit, change a text constant.
"""
import argparse
import collections
import json
import os
import random
import re
import shutil
import subprocess
import sys
import time

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
SRC = os.path.join(ROOT, "src")
DEFAULT_SAMPLE = os.path.join(ROOT, "scripts", "mutants-sample.jsonl")

# The tests that run for a mutant of each folder of src/: the folder's own, and those that drive the
# same code through the window or the real program.
AREA_TESTS = {
    "app": ["app/", "e2e/"],
    "appearance": ["appearance/", "ui/", "app/"],
    "base": ["base/", "player/", "playlist/", "app/"],
    "desktop": ["desktop/", "app/", "e2e/"],
    "mp3": ["reports/", "playlist/", "desktop/"],
    "playback": ["playback/", "app/", "e2e/"],
    "player": ["player/", "playback/", "app/", "e2e/"],
    "playlist": ["playlist/", "app/"],
    "power": ["power/", "app/"],
    "program": ["app/", "desktop/", "e2e/"],
    "reports": ["reports/", "app/"],
    "ui": ["ui/", "app/"],
    "update": ["update/", "updater/", "e2e/atspi_self_update"],
    "updater": ["updater/", "e2e/atspi_self_update"],
}

COMPARISONS = {"==": "!=", "!=": "==", "<": ">=", ">=": "<", ">": "<=", "<=": ">"}
COMPARISON_RE = re.compile(r"(?<=\S) (==|!=|<=|>=|<|>) (?=\S)")
LOGIC_RE = re.compile(r" (&&|\|\|) ")
PLUS_ONE_RE = re.compile(r" [+-] 1\b(?!\.)")
IF_RE = re.compile(r"\bif \(")
ASSIGN_RE = re.compile(r"^(\s*)[A-Za-z_][\w.\->\[\]]*(\(\))? [-+*/|&]?= [^=].*;\s*$")
EMIT_RE = re.compile(r"^(\s*)emit \w+\(.*\);\s*$")
TEXT_RE = re.compile(r'QStringLiteral\("([^"\\]{2,})"\)')
WINDOWS_IF_RE = re.compile(r"#\s*if(def)?\s*\(?\s*(defined\s*\(?\s*)?(_WIN32|Q_OS_WIN)\b")


def product_lines(path):
    """The lines of a file that are compiled on Linux and are code, as (number, text)."""
    stack = []  # per open #if: [kind, skipping], kind "win", "notwin" or "other"
    in_comment = False
    with open(path, encoding="utf-8") as f:
        for number, line in enumerate(f, 1):
            stripped = line.strip()
            if stripped.startswith("#"):
                if re.match(r"#\s*ifndef\s+(_WIN32|Q_OS_WIN)\b", stripped):
                    stack.append(["notwin", False])
                elif WINDOWS_IF_RE.match(stripped):
                    stack.append(["win", True])
                elif re.match(r"#\s*if", stripped):
                    stack.append(["other", False])
                elif re.match(r"#\s*(else|elif)", stripped) and stack and stack[-1][0] != "other":
                    stack[-1][1] = stack[-1][0] == "notwin"
                elif re.match(r"#\s*endif", stripped) and stack:
                    stack.pop()
                continue
            if in_comment:
                if "*/" in stripped:
                    in_comment = False
                continue
            if stripped.startswith("/*"):
                in_comment = "*/" not in stripped
                continue
            if any(skipping for _, skipping in stack) or not stripped or stripped.startswith("//"):
                continue
            # The step numbers of the error report are bookkeeping, not behaviour to mutate.
            if re.match(r"\s*line = \d+;", line):
                continue
            yield number, line.rstrip("\n")


def code_part(line):
    """The line up to a trailing // comment (outside strings)."""
    in_string = False
    for i, c in enumerate(line):
        if c == '"' and (i == 0 or line[i - 1] != "\\"):
            in_string = not in_string
        elif not in_string and line.startswith("//", i):
            return line[:i]
    return line


def balanced_end(text, start):
    depth = 0
    for i in range(start, len(text)):
        if text[i] == "(":
            depth += 1
        elif text[i] == ")":
            depth -= 1
            if depth == 0:
                return i
    return -1


def mutations(line):
    """Every (operator, mutated line) that applies to one line of code."""
    code = code_part(line)
    rest = line[len(code):]
    if "#include" in code or "static_assert" in code or "template <" in code:
        return
    for m in COMPARISON_RE.finditer(code):
        yield "flip comparison", code[:m.start(1)] + COMPARISONS[m.group(1)] + code[m.end(1):] + rest
    for m in LOGIC_RE.finditer(code):
        other = "||" if m.group(1) == "&&" else "&&"
        yield "swap && and ||", code[:m.start(1)] + other + code[m.end(1):] + rest
    for m in PLUS_ONE_RE.finditer(code):
        yield "drop +1/-1", code[:m.start()] + code[m.end():] + rest
    for m in IF_RE.finditer(code):
        open_at = m.end() - 1
        close_at = balanced_end(code, open_at)
        if close_at > 0:
            condition = code[open_at + 1:close_at]
            yield "negate condition", code[:open_at + 1] + "!(" + condition + ")" + code[close_at:] + rest
    if ASSIGN_RE.match(code) and " == " not in code.split("=", 1)[0]:
        yield "drop assignment", ASSIGN_RE.match(code).group(1) + ";" + rest
    if EMIT_RE.match(code):
        yield "drop emit", EMIT_RE.match(code).group(1) + ";" + rest
    for m in TEXT_RE.finditer(code):
        yield "change text", code[:m.start(1)] + m.group(1) + "~" + code[m.end(1):] + rest


def candidates():
    for area in sorted(os.listdir(SRC)):
        folder = os.path.join(SRC, area)
        if not os.path.isdir(folder):
            continue
        for dirpath, _, files in os.walk(folder):
            for name in sorted(files):
                if not name.endswith(".cpp"):
                    continue
                path = os.path.join(dirpath, name)
                rel = os.path.relpath(path, ROOT)
                for number, line in product_lines(path):
                    for op, mutated in mutations(line):
                        if mutated != line:
                            yield {"area": area, "file": rel, "line": number, "op": op, "from": line,
                                   "to": mutated}


def cmd_sample(args):
    by_area = collections.defaultdict(list)
    for c in candidates():
        by_area[c["area"]].append(c)
    chosen = []
    for area in sorted(by_area):
        # One generator per folder: a change in one folder leaves the other folders' samples as they are.
        rng = random.Random("%d-%s" % (args.seed, area))
        pool = by_area[area]
        # Spread over the operators: take them in turns, each operator's places shuffled.
        by_op = collections.defaultdict(list)
        for c in pool:
            by_op[c["op"]].append(c)
        for ops in by_op.values():
            rng.shuffle(ops)
        picked = []
        while len(picked) < min(args.per_area, len(pool)):
            for op in sorted(by_op):
                if by_op[op] and len(picked) < args.per_area:
                    picked.append(by_op[op].pop())
        chosen.extend(picked)
        print("%-11s %5d places, %3d taken" % (area, len(pool), len(picked)), file=sys.stderr)
    with open(args.out, "w", encoding="utf-8") as f:
        for i, c in enumerate(chosen, 1):
            c["id"] = i
            f.write(json.dumps(c, ensure_ascii=False) + "\n")
    print("%d mutants written to %s" % (len(chosen), os.path.relpath(args.out, ROOT)), file=sys.stderr)


def ctest_names(build):
    out = subprocess.run(["ctest", "--test-dir", build, "-N"], capture_output=True, text=True).stdout
    return re.findall(r"Test\s+#\d+: (\S+)", out)


def tests_for(area, names):
    prefixes = AREA_TESTS[area]
    return [n for n in names if any(n.startswith(p) for p in prefixes) and "fuzz" not in n]


def targets_for(tests):
    targets = set()
    for t in tests:
        if t.startswith("e2e/"):
            targets.update({"TavoMP3Player", "TavoMP3Update"})
        else:
            targets.add(t.replace("/", "_"))
    return sorted(targets)


def build(build_dir, targets):
    r = subprocess.run(["cmake", "--build", build_dir, "--target", *targets], capture_output=True, text=True)
    return r.returncode == 0


def run_tests(build_dir, tests):
    regex = "^(" + "|".join(re.escape(t) for t in tests) + ")$"
    r = subprocess.run(["ctest", "--test-dir", build_dir, "-R", regex, "-j2", "--timeout", "120",
                        "--stop-on-failure"], capture_output=True, text=True)
    return r.returncode == 0


def apply(mutant):
    path = os.path.join(ROOT, mutant["file"])
    with open(path, encoding="utf-8") as f:
        lines = f.read().split("\n")
    index = mutant["line"] - 1
    if index >= len(lines) or lines[index] != mutant["from"]:
        matches = [i for i, l in enumerate(lines) if l == mutant["from"]]
        if len(matches) != 1:
            return None
        index = matches[0]
    original = "\n".join(lines)
    lines[index] = mutant["to"]
    with open(path, "w", encoding="utf-8") as f:
        f.write("\n".join(lines))
    return original


def restore(mutant, original):
    with open(os.path.join(ROOT, mutant["file"]), "w", encoding="utf-8") as f:
        f.write(original)


def cmd_run(args):
    with open(args.sample, encoding="utf-8") as f:
        sample = [json.loads(l) for l in f if l.strip()]
    if args.area:
        sample = [m for m in sample if m["area"] == args.area]
    if not os.path.exists(os.path.join(args.build, "CMakeCache.txt")):
        subprocess.run(["cmake", "-S", ROOT, "-B", args.build, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Debug",
                        "-DTAVO_BUILD_BENCH=OFF"], check=True, capture_output=True)
    else:
        # Test programs added or removed since the last run: the test list must be the current one.
        subprocess.run(["cmake", "-S", ROOT, "-B", args.build], check=True, capture_output=True)
    names = ctest_names(args.build) or (build(args.build, ["all"]) and ctest_names(args.build))
    # The unmutated tests must pass, or every mutant would count as killed.
    all_targets = sorted({t for area in AREA_TESTS for t in targets_for(tests_for(area, names))})
    if not build(args.build, all_targets):
        sys.exit("the unmutated code does not build")
    for area in sorted({m["area"] for m in sample}):
        if not run_tests(args.build, tests_for(area, names)):
            sys.exit("the unmutated tests of %s fail" % area)
    results = []
    started = time.time()
    for n, m in enumerate(sample, 1):
        original = apply(m)
        if original is None:
            outcome = "stale"
        else:
            try:
                tests = tests_for(m["area"], names)
                if not build(args.build, targets_for(tests)):
                    outcome = "stillborn"
                else:
                    outcome = "survived" if run_tests(args.build, tests) else "killed"
            finally:
                restore(m, original)
        results.append(dict(m, outcome=outcome))
        print("[%3d/%d %5.0fs] %-9s %s:%d %s" % (n, len(sample), time.time() - started, outcome, m["file"],
                                                 m["line"], m["op"]), flush=True)
    # Put every touched object back to the unmutated code.
    build(args.build, all_targets)
    summary(results)
    if args.json:
        with open(args.json, "w", encoding="utf-8") as f:
            json.dump(results, f, ensure_ascii=False, indent=1)


def summary(results):
    table = collections.defaultdict(collections.Counter)
    for r in results:
        table[r["area"]][r["outcome"]] += 1
    print("\n%-11s %7s %9s %10s %6s" % ("area", "killed", "survived", "stillborn", "stale"))
    total = collections.Counter()
    for area in sorted(table):
        c = table[area]
        total.update(c)
        print("%-11s %7d %9d %10d %6d" % (area, c["killed"], c["survived"], c["stillborn"], c["stale"]))
    counted = total["killed"] + total["survived"]
    print("%-11s %7d %9d %10d %6d   score %d/%d = %.0f %%" % (
        "all", total["killed"], total["survived"], total["stillborn"], total["stale"], total["killed"], counted,
        100.0 * total["killed"] / counted if counted else 0))
    survivors = [r for r in results if r["outcome"] == "survived"]
    if survivors:
        print("\nsurviving mutants:")
        for r in survivors:
            print("  #%d %s:%d %s\n      - %s\n      + %s" % (r["id"], r["file"], r["line"], r["op"],
                                                            r["from"].strip(), r["to"].strip()))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    sub = parser.add_subparsers(dest="command", required=True)
    s = sub.add_parser("sample")
    s.add_argument("--per-area", type=int, default=9)
    s.add_argument("--seed", type=int, default=2026)
    s.add_argument("--out", default=DEFAULT_SAMPLE)
    r = sub.add_parser("run")
    r.add_argument("--sample", default=DEFAULT_SAMPLE)
    r.add_argument("--build", default=os.path.join(ROOT, "build-mutants"))
    r.add_argument("--area")
    r.add_argument("--json")
    args = parser.parse_args()
    if not shutil.which("cmake") or not shutil.which("ctest"):
        sys.exit("cmake and ctest are needed (scripts/deps.sh installs them)")
    {"sample": cmd_sample, "run": cmd_run}[args.command](args)


if __name__ == "__main__":
    main()
