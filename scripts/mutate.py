#!/usr/bin/env python3
"""Asks the unit tests whether they would notice: changes one token of the services or the models at a
time, and runs the tests of that folder. A change that they let live points at what nobody tests, or
at code that could as well be different.

Everything happens in a copy of the tree, which goes afterwards.
"""

import argparse
import difflib
import os
import random
import re
import signal
import subprocess
import sys
import tempfile
from collections import Counter
from dataclasses import dataclass
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
FOLDERS = ("src/services", "src/models")
TEST_SECONDS = 90  # far more than the tests of a folder take; a change can make a loop endless

# The spaces tell an operator from the punctuation of types, as the format of the sources has it.
SWAPS = {
    " == ": [" != "], " != ": [" == "],
    " < ": [" <= "], " <= ": [" < "], " > ": [" >= "], " >= ": [" > "],
    " && ": [" || "], " || ": [" && "],
    " + ": [" - "], " - ": [" + "], " * ": [" / "], " / ": [" * "],
    " += ": [" -= "], " -= ": [" += "], "++": ["--"], "--": ["++"],
    "true": ["false"], "false": ["true"],
}
# What is no code comes first, and is passed over.
TOKENS = re.compile(
    r"""
    (?P<other> //[^\n]* | /\*.*?\*/ | ^[ ]*\#[^\n]* | "(?:\\.|[^"\\\n])*" | '(?:\\.|[^'\\\n])+' )
  | (?P<word> \b(?:true|false)\b )
  | (?P<number> (?<![\w.'])\d[\d']*(?:\.\d+)?(?=[a-zA-Z]*\b) (?!x) )
  | (?P<operator> \ (?:==|!=|<=|>=|<|>|&&|\|\||\+=|-=|[-+*/])\  | \+\+ | -- )
  | (?P<negation> (?<=[\s(])!(?=[\w(]) )
    """,
    re.VERBOSE | re.MULTILINE | re.DOTALL,
)


@dataclass(frozen=True)
class Mutation:
    path: str  # below the root
    begin: int
    end: int
    replacement: str

    def apply(self, text):
        return text[: self.begin] + self.replacement + text[self.end :]

    def describe(self, text):
        lines = difflib.unified_diff(text.splitlines(), self.apply(text).splitlines(), n=0,
                                     lineterm="")
        changed = [line for line in lines if line[:1] in "-+" and line[:3] not in ("---", "+++")]
        return f"{self.path}:{text.count(chr(10), 0, self.begin) + 1}", changed


def neighbours(number):
    """The number one higher and one lower, written as it is."""
    plain = number.replace("'", "")
    whole, point, fraction = plain.partition(".")
    return [f"{value}{point}{fraction}" for value in (int(whole) + 1, int(whole) - 1) if value >= 0]


def mutations(path, text):
    found = []
    for token in TOKENS.finditer(text):
        kind, old = token.lastgroup, token.group()
        if kind == "number":
            replacements = neighbours(old)
        elif kind == "negation":
            replacements = [""]
        else:
            replacements = SWAPS.get(old, []) if kind != "other" else []
        found += [Mutation(path, token.start(), token.end(), new) for new in replacements]
    return found


def spread(by_file, chooser):
    """Every mutation in a random order that goes round the files."""
    queues = [chooser.sample(list_, len(list_)) for _, list_ in sorted(by_file.items())]
    chooser.shuffle(queues)
    while queues:
        for queue in queues:
            yield queue.pop()
        queues = [queue for queue in queues if queue]


def test_of(path):
    """The test program that ought to notice."""
    return f"unit_{Path(path).parent.name}"


class Copy:
    """The tree at another place, with a build of its own."""

    def __init__(self, directory):
        self.root = Path(directory)
        self.build = self.root / "build" / "mutate"
        # The compiler's cache holds for every copy, wherever it is.
        self.environment = dict(os.environ, CCACHE_BASEDIR=directory, CCACHE_NOHASHDIR="1")
        listing = subprocess.run(
            ["git", "-C", ROOT, "ls-files", "-z", "--cached", "--others", "--exclude-standard"],
            check=True, capture_output=True, text=True).stdout
        for name in filter(None, listing.split("\0")):
            if (ROOT / name).is_file():
                (self.root / name).parent.mkdir(parents=True, exist_ok=True)
                (self.root / name).write_bytes((ROOT / name).read_bytes())

    def run(self, command, timeout=None):
        """Whether the command succeeds, and what it prints; a command out of time doesn't."""
        process = subprocess.Popen(command, cwd=self.root, env=self.environment, text=True,
                                   errors="replace", stdout=subprocess.PIPE,
                                   stderr=subprocess.STDOUT, start_new_session=True)
        try:
            output, _ = process.communicate(timeout=timeout)
            return process.returncode == 0, output
        except BaseException as reason:
            os.killpg(process.pid, signal.SIGKILL)
            process.communicate()
            if isinstance(reason, subprocess.TimeoutExpired):
                return False, "out of time\n"
            raise

    def configure(self):
        # Without optimisation and debug information, which nobody reads, and without warnings, so
        # that a variable that a change leaves unused doesn't end it.
        return self.run(["cmake", "-S", self.root, "-B", self.build, "-G", "Ninja",
                         "-DCMAKE_BUILD_TYPE=", "-DCMAKE_CXX_FLAGS=-O0 -w"])

    def make(self, targets):
        return self.run(["cmake", "--build", self.build, "--parallel", str(os.cpu_count()),
                         "--target", *targets])

    def test(self, target):
        program = next(path for path in self.build.rglob(target)
                       if path.is_file() and os.access(path, os.X_OK))
        return self.run([program, "--gtest_brief=1"], TEST_SECONDS)


def fate(copy, mutation):
    """What becomes of the mutation: "killed", "alive", or "invalid" when it doesn't compile."""
    file = copy.root / mutation.path
    text = file.read_text()
    file.write_text(mutation.apply(text))
    try:
        target = test_of(mutation.path)
        is_made, _ = copy.make([target])
        if not is_made:
            return "invalid"
        has_passed, _ = copy.test(target)
        return "alive" if has_passed else "killed"
    finally:
        file.write_text(text)


def must(result):
    is_good, output = result
    if not is_good:
        sys.exit(f"{output}\nThe tree as it is doesn't build or doesn't pass.")


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--seed", type=int, default=random.SystemRandom().randrange(1_000_000))
    parser.add_argument("--number", type=int, default=40, help="changes to try (40)")
    parser.add_argument("--only", default="", help="a part of the paths of the files to change")
    options = parser.parse_args()
    signal.signal(signal.SIGTERM, lambda *_: sys.exit("ended"))
    print(f"seed {options.seed}", flush=True)

    with tempfile.TemporaryDirectory(prefix="quorvin-mutate-") as directory:
        copy = Copy(directory)
        paths = [str(path.relative_to(copy.root)) for folder in FOLDERS
                 for path in (copy.root / folder).rglob("*.cpp")]
        by_file = {path: mutations(path, (copy.root / path).read_text())
                   for path in paths if options.only in path}
        by_file = {path: found for path, found in by_file.items() if found}
        print(f"{sum(map(len, by_file.values()))} changes in {len(by_file)} files", flush=True)
        must(copy.configure())
        targets = sorted({test_of(path) for path in by_file})
        must(copy.make(targets))
        for target in targets:
            must(copy.test(target))

        fates = Counter()
        for mutation in spread(by_file, random.Random(options.seed)):
            if fates["killed"] + fates["alive"] == options.number:
                break
            what = fate(copy, mutation)
            fates[what] += 1
            where, changed = mutation.describe((copy.root / mutation.path).read_text())
            print(f"{what}: {where}", flush=True)
            if what == "alive":
                print("\n".join(f"    {line}" for line in changed), flush=True)
    print(f"{fates['killed']} killed, {fates['alive']} alive, {fates['invalid']} did not compile")


if __name__ == "__main__":
    main()
