#!/usr/bin/python3
"""Measures what the sample host takes while it is open and untouched: bench/rest.py [SECONDS].
Called by bench/rest.sh, which has built the program and started Wine. Prints for two levels of
detail the share of a core, thread by thread, and the messages that woke the program."""

import contextlib
import json
import os
import subprocess
import sys
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
PROGRAM = ROOT / "build/bench-mingw/bin/rest.exe"
COMPILE_BENCH = ROOT / "build/bench-mingw/bin/bench/compile_bench.exe"
SETTINGS = Path(os.environ["WINEPREFIX"]) / "drive_c/ProgramData/Zelmo/Horivo/horivo.ini"
BOUNDS = {100: 0.3, 800: 0.2}  # by detail factor: the most that a rest may take, % of a core
BARE_FACTOR = 1.25             # a slow machine may take so many times what the OpenGL calls take
LOOKS = 10000                  # looks at the clock, see compile_bench_win.cpp
GROWTH_NOISE_MIB = 4.0         # by which two runs of the same program differ
PERCENT_PER_STEP = 100         # lag_factor in horivo.ini is in hundreds of percent


def process_seconds(pid):
    """Processor time of all threads, also of those that have ended."""
    fields = Path(f"/proc/{pid}/stat").read_text().rsplit(")", 1)[1].split()
    return sum(map(int, fields[11:13])) / os.sysconf("SC_CLK_TCK")


def thread_times(pid):
    """By thread: name, seconds of processor time, waits."""
    times = {}
    for task in Path(f"/proc/{pid}/task").iterdir():
        with contextlib.suppress(FileNotFoundError, ProcessLookupError):  # the thread has just ended
            name = (task / "comm").read_text().strip()
            nanoseconds = int((task / "schedstat").read_text().split()[0])
            waits = next(int(line.split()[1])
                         for line in (task / "status").read_text().splitlines()
                         if line.startswith("voluntary_ctxt"))
            times[task.name] = (name, nanoseconds / 1e9, waits)
    return times


def rest(detail, seconds):
    """Lets the program rest. @return (processor time, thread times) before and after the rest, before
    and after the baseline; by "NAME" of a message how often it came, by "NAME/ms" how long its
    handling took"""
    SETTINGS.write_text(f"[map]\r\nlag_factor={detail // PERCENT_PER_STEP}\r\n")
    times = []
    messages = {}
    with subprocess.Popen(["wine", PROGRAM, str(seconds), "1280", "800"], text=True,
                          stdout=subprocess.PIPE, stderr=subprocess.DEVNULL) as program:
        try:
            for line in program.stdout:
                figure = json.loads(line)
                if figure["name"] == "rest/done":
                    break
                if figure["name"].endswith(("/begin", "/end")):
                    times.append((process_seconds(program.pid), thread_times(program.pid)))
                else:
                    messages[figure["name"]] = figure["value"]
        finally:
            program.kill()
    SETTINGS.unlink()
    return *times, messages


def report(detail, seconds):
    """Prints what a rest took. @return whether it is within its bound"""
    (begin, before), (end, after), (bare_begin, _), (bare_end, _), messages = rest(detail, seconds)
    print(f"\nDetail {detail}, {seconds} s\n\n| thread | waits | % of a core |\n|---|---|---|")
    for thread, (name, ran, waits) in sorted(after.items(), key=lambda item: -item[1][1]):
        _, ran_before, waits_before = before.get(thread, (name, 0.0, 0))
        if waits > waits_before:
            print(f"| {name} | {waits - waits_before} | {(ran - ran_before) * 100 / seconds:.3f} |")
    total = (end - begin) * 100 / seconds
    bare = (bare_end - bare_begin) * 100 / seconds
    bound = max(BOUNDS[detail], BARE_FACTOR * bare)
    holds = total <= bound
    print(f"| all |  | {total:.3f}, at most {bound:.3f}: {'holds' if holds else 'MISSED'} |")
    print(f"| a replay of the OpenGL calls |  | {bare:.3f} |")
    print("\n| message | times | ms |\n|---|---|---|")
    for message in sorted(messages):
        if f"{message}/ms" in messages:
            print(f"| {message} | {messages[message]:.0f} | {messages[f'{message}/ms']:.1f} |",
                  flush=True)
    return holds


def growth(mode, detail):
    """MiB that LOOKS looks at the clock (mode "growth") or replays of one (mode "bare") add."""
    return json.loads(subprocess.run(["wine", COMPILE_BENCH, mode, str(detail), str(LOOKS)],
                                     check=True, stdout=subprocess.PIPE,
                                     stderr=subprocess.DEVNULL, text=True).stdout)["value"]


def report_growth(detail):
    """Prints the growth. @return whether a process with the library grows no more than one that only
    replays the OpenGL calls, so that the driver alone causes the growth"""
    library, bare = growth("growth", detail), growth("bare", detail)
    holds = library <= bare + GROWTH_NOISE_MIB
    print(f"\n{LOOKS} looks at detail {detail}: the process grows by {library:.1f} MiB, a bare one by "
          f"{bare:.1f} MiB: {'holds' if holds else 'MISSED'}", flush=True)
    return holds


def main():
    seconds = int(sys.argv[1]) if len(sys.argv) > 1 else 120
    results = [report(detail, seconds) for detail in BOUNDS]
    results += [report_growth(detail) for detail in BOUNDS]
    return 0 if all(results) else 1


sys.exit(main())
