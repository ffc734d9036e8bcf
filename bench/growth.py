#!/usr/bin/python3
"""Measures how time and memory grow and plots them: called by bench/growth.sh."""

import json
import subprocess
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
DATA = ROOT / "build/bench/growth"
NATIVE = ROOT / "build/bench/bin/growth_bench"
FRAME = ROOT / "build/bench-mingw/bin/bench/frame_bench.exe"
FIRST_PICTURE = ROOT / "build/bench-mingw/bin/bench/first_picture.exe"
FRAME_BUDGET_MS = 1000


def native(what):
    (DATA / f"{what}.dat").write_text(subprocess.check_output([NATIVE, what], text=True))


def windows(program, *arguments):
    """The lines that a program under Wine printed."""
    text = subprocess.run(["wine", program, *map(str, arguments)], check=True,
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True,
                          timeout=300).stdout
    return [json.loads(line) for line in text.splitlines() if line.startswith("{")]


def frame(width, height, labels, cities):
    """Milliseconds of the quickest frame and of its work outside OpenGL, peak of memory in MiB."""
    lines = {line["name"]: line
             for line in windows(FRAME, width, height, labels, cities, FRAME_BUDGET_MS)}
    # There may be one or two labels more: with very many cities, some of those that are spread over
    # the globe are near the middle of the window, too.
    if lines["frame/labels"]["value"] < labels:
        raise RuntimeError(f"{lines['frame/labels']['value']} labels instead of {labels}")
    return (lines["frame"]["best_ms"], lines["frame_outside_gl/own_best"]["value"],
            lines["frame/peak"]["value"])


def frames(name, heading, cases):
    """Writes a line for each case: the amount that grows, then the three figures of the frame."""
    lines = [f"# {heading} frame_ms own_ms peak_mib"]
    for amount, case in cases:
        figures = frame(*case)
        lines.append(" ".join(f"{figure:.4f}" for figure in (amount, *figures)))
        print(name, lines[-1], flush=True)
    (DATA / f"{name}.dat").write_text("\n".join(lines) + "\n")


def first_pictures(sizes):
    """Writes a line for each size: megapixels of the window, peak of memory at the first picture."""
    lines = ["# megapixels peak_mib"]
    for width, height in sizes:
        peak = windows(FIRST_PICTURE, width, height)[-1]["peak_mib"]
        lines.append(f"{width * height / 1e6:.4f} {peak:.2f}")
    (DATA / "first_pictures.dat").write_text("\n".join(lines) + "\n")


def main():
    DATA.mkdir(parents=True, exist_ok=True)
    native("pictures")
    native("cities")
    sizes = [(400, 300), (800, 600), (1280, 720), (1920, 1080), (2560, 1440), (3200, 1800),
             (3840, 2160)]
    frames("windows", "megapixels",
           [(width * height / 1e6, (width, height, 0, 417)) for width, height in sizes])
    first_pictures(sizes)
    frames("labels", "labels", [(labels, (800, 600, labels, 417))
                                for labels in (0, 8, 16, 24, 32, 40, 48, 56, 64)])
    frames("frame_cities", "cities", [(cities, (400, 300, 0, cities))
                                      for cities in (0, 20000, 60000, 100000, 140000)])
    plot = ROOT / "docs/pictures/growth.png"
    plot.parent.mkdir(parents=True, exist_ok=True)
    subprocess.run(["gnuplot", "-e", f"data='{DATA}'; picture='{plot}'",
                    ROOT / "bench/growth.gp"], check=True)
    print(f"plotted: {plot}")


main()
