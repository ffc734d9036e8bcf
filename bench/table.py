#!/usr/bin/python3
"""Runs the benchmarks and prints their table: bench/table.py [--record]. Called by bench/run.sh,
which builds the programs, makes the maps and starts Wine. With --record the table also replaces the
one in docs/performance.md."""

import json
import os
import signal
import statistics
import subprocess
import sys
import time
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
NATIVE = ROOT / "build/bench/bin"
WINDOWS = ROOT / "build/bench-mingw/bin/bench"
WORLD_CLOCK = ROOT / "build/bench-mingw/bin/world_clock.exe"
DATA = ROOT / "build/bench/data"
MIB = 1024.0 * 1024.0
LARGE_HALVED_MIB = 4096 * 2048 * 3 / MIB  # what the 8192 x 4096 map shrinks to
PAIRS = 15
PEAK_RUNS = 5
REPORT = ROOT / "docs/performance.md"
TABLE_BEGIN = "<!-- table: bench/run.sh --record -->\n"
TABLE_END = "<!-- end of table -->\n"


def windows_path(path):
    return "Z:" + str(path).replace("/", "\\")


def run_native(program):
    """Figures of a Google Benchmark program, by name."""
    text = subprocess.run([NATIVE / program, "--benchmark_format=json"], check=True,
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True).stdout
    return {figure["name"].split("/iterations")[0]: figure
            for figure in json.loads(text)["benchmarks"]}


def run_windows(program, *arguments):
    """The lines that a program under Wine printed."""
    # A full path in `program` replaces the folder.
    command = ["wine", WINDOWS / program, *map(str, arguments)]
    run = subprocess.run(command, check=False, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                         text=True, timeout=300)
    lines = [json.loads(line) for line in run.stdout.splitlines() if line.startswith("{")]
    # Wine's server kills a program that is slow to end. That is no failure, because the program has
    # printed its figures.
    if not lines or run.returncode not in (0, -signal.SIGKILL):
        raise RuntimeError(f"{program} ended with {run.returncode} after {len(lines)} figures")
    return lines


def by_name(lines):
    return {line["name"]: line for line in lines}


def first_picture(program, *arguments):
    """Milliseconds from the start of a process to its first picture, and its peak memory."""
    start = time.time() * 1000.0
    shown = run_windows(program, *arguments)[-1]
    return shown["shown_at_ms"] - start, shown["peak_mib"]


def bare_map():
    return first_picture("bare_map.exe", windows_path(ROOT / "assets/map.jpg"), 1920, 1080)


def library_alone():
    return first_picture("first_picture.exe", 1920, 1080)


def world_clock():
    """The whole sample host. Its window has the size that the map has in the other programs."""
    return first_picture(WORLD_CLOCK, 1920, 1080)


def compare_first_pictures(name, program):
    """Whole processes in turns; the first pair only warms the disk's cache."""
    pairs = []
    for number in range(PAIRS + 1):
        runs = {}
        for run in (program, bare_map) if number % 2 else (bare_map, program):
            runs[run] = run()
        pairs.append((runs[bare_map], runs[program]))
    pairs = pairs[1:]
    ratios = [measured[0] / baseline[0] for baseline, measured in pairs]
    low, _, high = statistics.quantiles(ratios, n=4)
    median = statistics.median
    return {
        name: {
            "baseline_ms": median(baseline[0] for baseline, _ in pairs),
            "measured_ms": median(measured[0] for _, measured in pairs),
            "ratio": median(ratios), "low": low, "high": high,
        },
        f"{name}/peak": {
            "baseline_mib": median(baseline[1] for baseline, _ in pairs),
            "measured_mib": median(measured[1] for _, measured in pairs),
        },
    }


def measure_peaks():
    """Peak memory of processes that only decode and of those that load and shrink: medians."""
    peaks = {}
    for mode, name in (("decode", "peak_decode"), ("load", "peak_load_shrink")):
        runs = [run_windows("image_bench.exe", mode, windows_path(DATA / "map_8192.jpg"), 4096,
                            2048)[-1]["value"] for _ in range(PEAK_RUNS)]
        peaks[name] = {"value": statistics.median(runs)}
    return peaks


def measure():
    """All figures, by name."""
    figures = {}
    steps = [
        ("image pipeline, native", lambda: run_native("image_pipeline_bench")),
        ("hit test, native", lambda: run_native("city_pick_bench")),
        ("image pipeline, GDI+", lambda: by_name(
            run_windows("image_bench.exe", "pairs", windows_path(DATA / "map_8192.jpg"), 4096,
                        2048))),
        ("peaks of decoding and loading", measure_peaks),
        ("compile", lambda: by_name(run_windows("compile_bench.exe"))),
        ("frame", lambda: by_name(run_windows("frame_bench.exe"))),
        ("first picture", lambda: compare_first_pictures("first_picture", library_alone)),
        ("world clock", lambda: compare_first_pictures("world_clock", world_clock)),
    ]
    for name, step in steps:
        start = time.time()
        figures.update(step())
        print(f"{name}: {time.time() - start:.0f} s", file=sys.stderr, flush=True)
    return figures


class Table:
    """Rows of the table in Markdown, and how many of them miss their target."""

    def __init__(self):
        self.missed = 0
        self.lines = ["| operation | baseline, ms | measured, ms "
                      "| figure (quartiles of the pairs) | target | |",
                      "|---|---|---|---|---|---|"]

    def row(self, operation, baseline, measured, figure, target, holds):
        self.missed += not holds
        self.lines.append(f"| {operation} | {baseline} | {measured} | {figure} | {target} | "
                          f"{'holds' if holds else 'MISSED'} |")

    def speed(self, operation, pair, least, unit="x the baseline's speed"):
        figure = f"{1 / pair['ratio']:.2f} ({1 / pair['high']:.2f} to {1 / pair['low']:.2f})"
        self.row(operation, f"{pair['baseline_ms']:.2f}", f"{pair['measured_ms']:.2f}", figure,
                 f"at least {least} {unit}", 1 / pair["ratio"] >= least)

    def time(self, operation, pair, most):
        figure = f"{pair['ratio']:.3f} ({pair['low']:.3f} to {pair['high']:.3f})"
        self.row(operation, f"{pair['baseline_ms']:.3f}", f"{pair['measured_ms']:.3f}", figure,
                 f"at most {most} x the baseline's time", pair["ratio"] <= most)

    def value(self, operation, figure, most, unit):
        # Rounded to three digits, because the heap rounds blocks up.
        self.row(operation, "", "", f"{figure:.3f}", f"at most {most} {unit}",
                 round(figure, 3) <= most)


def make_table(figures):
    table = Table()
    for size in ("8192", "16384"):
        table.speed(f"Rescale, both sides halved, from {size}", figures[f"rescale_halved/{size}"],
                    0.40)
    table.speed("Rescale, 10800 x 5400 to 8192 x 4096", figures["rescale_ratio/10800"], 0.20)
    table.speed("the same against the straightforward form (3 pairs)",
                figures["rescale_plain/10800"], 10, "x its speed")
    for name in ("rescale_halved/8192", "rescale_ratio/10800"):
        table.value(f"memory beside the block, {name}", figures[name]["extra_bytes_per_column"],
                    16, "bytes x width")
    for size in ("8192", "16384"):
        table.speed(f"Load without shrink, {size}", figures[f"load/{size}"], 0.82)
    table.speed("Load without shrink, 8192, GDI+ under Wine", figures["gdi_load"], 0.82)
    for size in ("8192", "16384"):
        table.time(f"Load with shrink, {size} halved", figures[f"load_shrink/{size}"], 0.85)
        table.value(f"its peak, {size}", figures[f"load_shrink/{size}"]["peak_to_result"], 1.01,
                    "x the result")
    table.time("Load with shrink, 8192 halved, GDI+ under Wine", figures["gdi_load_shrink"], 0.85)
    above = figures["peak_load_shrink"]["value"] - figures["peak_decode"]["value"]
    table.value("its peak above GDI+'s own", above / LARGE_HALVED_MIB, 1.01, "x the result")
    for size in ("8192", "16384"):
        table.speed(f"Split 4 x 2, {size}", figures[f"split/{size}"], 0.75)
        table.value(f"its peak, {size}", figures[f"split/{size}"]["peak_to_picture"], 1.5,
                    "x the picture")
    table.time("Image pipeline without the decode, 8192 halved and cut",
               figures["image_pipeline_to_decode"], 0.15)
    for factor in (100, 200, 400, 800):
        table.time(f"Compile, detail {factor}", figures[f"compile/{factor}"], 1.05)
    for factor in (100, 200, 400, 800):
        table.time(f"Compile without the shells, detail {factor}",
                   figures[f"compile_without_shells/{factor}"], 1.10)
    table.time("Frame, 417 cities, 64 labels", figures["frame"], 1.03)
    table.value("its time outside GL", figures["frame_outside_gl/own"]["value"], 0.1, "ms")
    table.value("its heap allocations", figures["frame/allocations"]["value"], 0, "in 20 frames")
    for count in (1000, 10000, 50000, 140000):
        table.time(f"FindCitiesNear, {count} cities", figures[f"find_cities/{count}"], 1.0)
    for name, operation, most in (("first_picture", "First picture, 4096 x 2048 map, 1920 x 1080", 1.10),
                             ("world_clock", "World clock start, the same map and window", 1.30)):
        table.time(operation, figures[name], most)
        peak = figures[f"{name}/peak"]
        table.value(
            f"its peak ({peak['measured_mib']:.0f} MiB, bare program {peak['baseline_mib']:.0f} MiB)",
            peak["measured_mib"] / peak["baseline_mib"], 1.15, "x the bare program's")
    return table


def describe_machine():
    """What the figures depend on besides the code."""
    processor = next((line.split(":")[1].strip()
                      for line in Path("/proc/cpuinfo").read_text().splitlines()
                      if line.startswith("model name")), "unknown processor")
    wine = subprocess.check_output(["wine", "--version"], stderr=subprocess.DEVNULL,
                                   text=True).strip()
    return f"{processor}, {os.cpu_count()} processors, {wine}"


def record(text):
    """Puts the table into the report between its two marks."""
    before, rest = REPORT.read_text().split(TABLE_BEGIN)
    _, after = rest.split(TABLE_END)
    REPORT.write_text(before + TABLE_BEGIN + text + TABLE_END + after)


def main():
    if "HORIVO_WINE_ENV" not in os.environ:
        sys.exit("run bench/run.sh, which starts Wine for this script")
    start = time.time()
    figures = measure()
    (DATA.parent / "figures.json").write_text(json.dumps(figures, indent=1))
    table = make_table(figures)
    text = "\n".join([*table.lines, "", f"{table.missed} figures miss their target. Measured in "
                      f"{time.time() - start:.0f} s: {describe_machine()}.", ""])
    print(text)
    if "--record" in sys.argv:
        record(text)


main()
