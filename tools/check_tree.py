#!/usr/bin/python3
"""Checks which files of the source tree include which: tools/check_tree.py

- A folder of src includes only itself, include/, and the folders that its row below names.
- There is no circle of units. A unit is a header with the sources of its name: x.h with x.cpp and
  x_win.cpp. If there is an x_win.h, x_win.cpp belongs to that.
- Only base/windows_types.h includes <windows.h>; only _win files include other headers of Windows.
- demo, tour and examples include only the library's public headers and their own.
- Every header compiles alone: _win headers for Windows, the others natively. When a source of the
  same kind includes a header first, every build proves that; this script compiles the others.
- docs/architecture.md lists the same files under "Deliberate oddities" as have `// Deliberate:` marks.
- Every source file, test or script that a document names exists.

Prints each offending line and exits non-zero when there is one.
"""
import os
import re
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent

# The folders of src, each with the other folders that it may include. The lowest layer stands first.
# A row may name only folders of earlier rows, so that there is no circle of folders.
FOLDERS = {
    "base": "",
    "math": "base",
    "host": "base",
    "image": "base",
    "cities": "base math host",
    "render": "base math",
    "globe": "base math image cities render",
    "photos": "base image cities render",
    "window": "base math host image cities render globe photos",
    "api": "base math host image cities render globe photos window",
}
HOSTS = {"demo": ["demo"], "tour": ["tour", "demo"], "examples": ["examples"]}
WINDOWS_TYPES = "src/base/windows_types.h"
PORTABLE_SYSTEM_HEADERS = {"GL/gl.h", "GL/glu.h", "emmintrin.h", "xmmintrin.h"}
NAMED_FILE = re.compile(r"`((?:[\w.-]+/)*[\w-]+\.(?:cpp|h|py|sh|cs|rc|tsv))`")
INCLUDE = re.compile(r'\s*#\s*include\s*([<"])([^>"]+)[>"]')
NATIVE = ["c++"]
WINDOWS = ["x86_64-w64-mingw32-g++-posix", "-DUNICODE", "-D_UNICODE", "-D_WIN32_WINNT=0x0A00"]

faults = []


def sources(folder):
    return sorted(p for p in (ROOT / folder).rglob("*") if p.suffix in {".h", ".c", ".cpp"})


def includes(path):
    """Yields line number, whether it is in quotation marks, and name of each include."""
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        match = INCLUDE.match(line)
        if match:
            yield number, match[1] == '"', match[2]


def fault(path, number, name, why):
    faults.append(f"{path.relative_to(ROOT)}:{number}: includes {name}: {why}")


def is_windows(path):
    return path.stem.endswith("_win")


def is_system_header(name):
    return name.endswith(".h") and name not in PORTABLE_SYSTEM_HEADERS


def check_system_include(path, number, name):
    if name == "windows.h":
        if path != ROOT / WINDOWS_TYPES:
            fault(path, number, "<windows.h>", f"only {WINDOWS_TYPES} may")
    elif is_system_header(name) and not is_windows(path):
        fault(path, number, f"<{name}>", "headers of Windows belong in _win files")


def check_folders():
    rows = list(FOLDERS)
    for place, (folder, below) in enumerate(FOLDERS.items()):
        assert set(below.split()) <= set(rows[:place]), f"{folder} names a folder above it"
    for path in sources("src"):
        folder = path.relative_to(ROOT / "src").parts[0]
        allowed = set(FOLDERS[folder].split()) | {folder}
        for number, quoted, name in includes(path):
            if (ROOT / "src" / name).exists():
                if name.split("/")[0] not in allowed:
                    fault(path, number, name, f"src/{folder} may not include this folder")
            elif not quoted:
                check_system_include(path, number, name)
            elif not (ROOT / "include" / name).exists():
                fault(path, number, name, "no such file from src/ or include/")


def check_public_headers():
    for path in sources("include"):
        for number, quoted, name in includes(path):
            if name.endswith(".h") and not name.startswith("std") and \
                    not (ROOT / "include" / name).exists():
                fault(path, number, name, "a public header includes only the standard library")
    for host, roots in HOSTS.items():
        for path in sources(host):
            places = [path.parent, ROOT, ROOT / "include"] + [ROOT / root for root in roots]
            for number, quoted, name in includes(path):
                found = [p for place in places if (p := (place / name).resolve()).exists()]
                if quoted and not any(p.is_relative_to(ROOT / r) for p in found
                                      for r in [*roots, "include"]):
                    fault(path, number, name, "hosts include only public headers and their own")


def unit_of(path):
    """The header that a file belongs to, or the file itself."""
    stem = path.with_suffix("")
    for candidate in (stem, Path(str(stem).removesuffix("_win"))):
        if candidate.with_suffix(".h").exists():
            return candidate.with_suffix(".h")
    return path


def check_units():
    edges = {}
    for path in sources("src"):
        unit = unit_of(path)
        for number, quoted, name in includes(path):
            target = ROOT / "src" / name
            if quoted and target.exists() and unit_of(target) != unit:
                edges.setdefault(unit, {}).setdefault(unit_of(target), (path, number, name))
    done = set()

    def walk(unit, way):
        if unit in way:
            for here, there in zip(way[way.index(unit):], way[way.index(unit) + 1:] + [unit]):
                fault(*edges[here][there], "part of a circle of units")
        elif unit not in done:
            for target in edges.get(unit, {}):
                walk(target, way + [unit])
            done.add(unit)

    for unit in edges:
        walk(unit, [])


def compiles_alone(header):
    compiler = WINDOWS if is_windows(header) else NATIVE
    command = compiler + ["-std=c++20", "-fsyntax-only", "-Isrc", "-Iinclude", "-x", "c++", "-"]
    text = f'#include "{header}"\n'
    result = subprocess.run(command, input=text, text=True, capture_output=True, cwd=ROOT)
    if result.returncode != 0:
        faults.append(f"{header.relative_to(ROOT)}: does not compile alone\n{result.stderr}")


def check_headers():
    files = sources("src") + sources("include")
    proven = {ROOT / "src" / name for path in files if path.suffix == ".cpp"
              for _, quoted, name in list(includes(path))[:1]
              if quoted and is_windows(path) == is_windows(Path(name))}
    alone = [path for path in files if path.suffix == ".h" and path not in proven]
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        list(pool.map(compiles_alone, alone))


def check_deliberate():
    page = ROOT / "docs/architecture.md"
    table = page.read_text(encoding="utf-8").split("## Deliberate oddities")[1].split("\n## ")[0]
    cells = [line.split("|")[1] for line in table.splitlines() if line.startswith("|")]
    listed = {name for cell in cells for name in re.findall(r"`([^`]+)`", cell)}
    marked = {str(path.relative_to(ROOT / "src")) for path in sources("src")
              if "Deliberate:" in path.read_text(encoding="utf-8")}
    for name in sorted(listed ^ marked):
        lacks = "no row in docs/architecture.md" if name in marked else "no `// Deliberate:` mark"
        faults.append(f"src/{name}: {lacks}")


def check_named_files():
    """Checks the names of sources and scripts that documents have in `backticks`. A name may stand
    alone, or with some or all of its folders."""
    known = set()
    for path in ROOT.glob("*/**/*.*"):
        if (parts := path.relative_to(ROOT).parts)[0] != "build":
            known.update("/".join(parts[start:]) for start in range(len(parts)))
    for document in [*ROOT.glob("*.md"), *ROOT.glob("docs/*.md")]:
        for number, line in enumerate(document.read_text(encoding="utf-8").splitlines(), 1):
            for name in NAMED_FILE.findall(line):
                if name not in known and not (ROOT / name).exists():
                    faults.append(f"{document.relative_to(ROOT)}:{number}: no file {name}")


def main():
    check_folders()
    check_public_headers()
    check_units()
    check_headers()
    check_deliberate()
    check_named_files()
    for line in faults:
        print(line)
    print(f"Tree: {len(faults)} fault(s)" if faults else "Tree: clean")
    sys.exit(bool(faults))


if __name__ == "__main__":
    main()
