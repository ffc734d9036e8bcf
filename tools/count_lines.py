#!/usr/bin/python3
"""Counts the lines of the tests and of everything else: tools/count_lines.py [--limit PERCENT]

A line counts unless it is blank or nothing but a // comment. Notes (*.md) and pictures do not
count. Prints both sums with their folders, and the tests as a percentage of the rest. With --limit, exits
non-zero when the tests are more than PERCENT of the rest; a third is 33.33.
"""
import argparse
import subprocess
import sys
from collections import Counter
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
TESTS = {"tests"}
REST = {"src", "include", "demo", "tour", "bench", "tools", "examples", "cmake", ".ci"}
LANGUAGES = "demo/languages/"  # texts, which translators write
NOT_COUNTED = {".md", ".png", ".jpg"}


def files():
    """The files that git knows and new ones, relative to the root; nothing that it ignores."""
    command = ["git", "ls-files", "-z", "--cached", "--others", "--exclude-standard"]
    listing = subprocess.run(command, cwd=ROOT, stdout=subprocess.PIPE, check=True).stdout
    return [Path(name) for name in listing.decode().split("\0") if name and (ROOT / name).is_file()]


def part_of(path):
    """The folder or script that a file is counted under; None for a file that does not count."""
    if path.suffix in NOT_COUNTED or path.as_posix().startswith(LANGUAGES):
        return None
    if path.parts[0] in TESTS | REST:
        return path.parts[0]
    is_root_script = len(path.parts) == 1 and path.suffix == ".sh"
    return path.name if is_root_script or path.as_posix() == "CMakeLists.txt" else None


def counted_lines(path):
    lines = (ROOT / path).read_text(encoding="utf-8").splitlines()
    return sum(1 for line in lines if line.strip() and not line.lstrip().startswith("//"))


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--limit", type=float, metavar="PERCENT",
                        help="fail when the tests are more than this percentage of the rest")
    limit = parser.parse_args().limit
    lines = Counter()
    for path in files():
        if part := part_of(path):
            lines[part] += counted_lines(path)
    tests = sum(count for part, count in lines.items() if part in TESTS)
    rest = lines.total() - tests
    parts = ", ".join(f"{part} {count}" for part, count in lines.most_common() if part not in TESTS)
    print(f"tests: {tests} lines\nrest:  {rest} lines ({parts})")
    print(f"The tests are {100 * tests / rest:.1f} % of the rest.")
    if limit is not None and 100 * tests > limit * rest:
        excess = tests - int(limit * rest / 100)
        sys.exit(f"At most {limit:g} % are allowed: {excess} lines too many.")


if __name__ == "__main__":
    main()
