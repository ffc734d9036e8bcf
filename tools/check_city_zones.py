#!/usr/bin/env python3
"""Checks the time zones of the sample cities: tools/check_city_zones.py [FILE]

All cities with the same Windows time zone have the same time. So in each of six months of one year,
the cities with the same Windows zone in FILE (default: assets/cities.tsv) must have the same offset
from UTC in the system's tz database. Prints every zone whose cities differ; then exits non-zero.
"""
import collections
import datetime
import pathlib
import sys
import zoneinfo

# A year whose time zone laws are in all tz databases in use. It is raised by hand: with the current
# year, a new law anywhere would make this check fail for a change that has nothing to do with it.
CHECKED_YEAR = 2025
# Every second month, so that daylight saving time of both hemispheres is covered.
MONTHS = (1, 3, 5, 7, 9, 11)
WINDOWS_ZONE, TZ_ZONE = 4, 5  # columns; the city's name is the first


def offsets(tz_zone):
    """Minutes ahead of UTC in the middle of each checked month."""
    zone = zoneinfo.ZoneInfo(tz_zone)
    instants = (datetime.datetime(CHECKED_YEAR, month, 15, 12, tzinfo=datetime.timezone.utc)
                for month in MONTHS)
    return tuple(round(instant.astimezone(zone).utcoffset().total_seconds() / 60)
                 for instant in instants)


def main():
    default = pathlib.Path(__file__).resolve().parent.parent / "assets/cities.tsv"
    path = pathlib.Path(sys.argv[1]) if len(sys.argv) > 1 else default
    zones = collections.defaultdict(lambda: collections.defaultdict(list))
    for line in path.read_text(encoding="utf-8").splitlines():
        if line and not line.startswith("#"):
            fields = line.split("\t")
            zones[fields[WINDOWS_ZONE]][offsets(fields[TZ_ZONE])].append(fields[0])
    if not zones:
        sys.exit(f"{path}: no cities")
    differing = {name: courses for name, courses in zones.items() if len(courses) > 1}
    for name, courses in differing.items():
        print(f"{path}: {name}: its cities differ in {CHECKED_YEAR} (minutes, months {MONTHS})")
        for course, cities in courses.items():
            print(f"  {course}: {', '.join(cities)}")
    return 1 if differing else 0


if __name__ == "__main__":
    sys.exit(main())
