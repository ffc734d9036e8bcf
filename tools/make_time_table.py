#!/usr/bin/env python3
"""Writes tests/data/zone_offsets.tsv: the times of the sample cities' zones by the tz database.

Zones with the same times share a line. It has the offset from UTC in minutes at the start of
2014-12-31, "instant=offset" for every change up to the end of 2030 (instants in UTC), a tab, and the
names of the zones. Run this script again after an update of the system's tz database.
"""
import datetime
import pathlib
import zoneinfo

ROOT = pathlib.Path(__file__).resolve().parent.parent
UTC = datetime.timezone.utc
START = datetime.datetime(2014, 12, 31, tzinfo=UTC)
END = datetime.datetime(2031, 1, 1, tzinfo=UTC)
MINUTE = datetime.timedelta(minutes=1)
STEP = datetime.timedelta(hours=12)


def offset(zone, instant):
    """Minutes that `zone` is ahead of UTC."""
    return round(instant.astimezone(zone).utcoffset() / MINUTE)


def change_between(zone, low, high):
    """The first minute after `low` with the offset of `high`. There is one change between them."""
    after = offset(zone, high)
    while high - low > MINUTE:
        middle = low + (high - low) // 2
        middle = middle.replace(second=0, microsecond=0)
        if offset(zone, middle) == after:
            high = middle
        else:
            low = middle
    return high


def course(zone):
    """The zone's offset at START and all changes, as text."""
    parts = [str(offset(zone, START))]
    low = START
    while low < END:
        high = low + STEP
        if offset(zone, low) != offset(zone, high):
            instant = change_between(zone, low, high)
            parts.append(f"{instant:%Y-%m-%dT%H:%M}={offset(zone, high)}")
        low = high
    return " ".join(parts)


def main():
    zones = set()
    for line in (ROOT / "assets/cities.tsv").read_text(encoding="utf-8").splitlines():
        if line and not line.startswith("#"):
            zones.add(line.split("\t")[5])
    courses = {}
    for name in sorted(zones):
        courses.setdefault(course(zoneinfo.ZoneInfo(name)), []).append(name)
    lines = ["# offset at 2014-12-31T00:00 UTC, changes (UTC instant=offset), zones; minutes"]
    lines += [f"{text}\t{' '.join(names)}" for text, names in courses.items()]
    target = ROOT / "tests/data/zone_offsets.tsv"
    target.parent.mkdir(exist_ok=True)
    target.write_text("\n".join(lines) + "\n", encoding="utf-8")


if __name__ == "__main__":
    main()
