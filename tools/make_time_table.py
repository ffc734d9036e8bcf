#!/usr/bin/env python3
"""Writes tests/data/zones_2022.tsv: what the tz database says about the time zones of Windows.

A line has minutes ahead of UTC, and behind tabs the zones that have them at noon UTC of both 15 January
and 15 July 2022, in January alone with an hour more in July, and in July alone with an hour more in
January.

One city of assets/cities.tsv stands for each zone. Zones whose law has changed since 2022 are left
out: the table of Wine 8, under which the tests run, knows no later law.
"""
import collections
import datetime
import pathlib
import zoneinfo

ROOT = pathlib.Path(__file__).resolve().parent.parent
YEAR = 2022
NEWER_YEAR = 2025
SEASONS = 0, 60, -60  # minutes from January to July; one zone has 30 and is left out
WINDOWS_ZONE, TZ_ZONE = 4, 5  # columns of assets/cities.tsv


def offsets(tz_zone, year):
    """Minutes ahead of UTC on 15 January and 15 July."""
    zone = zoneinfo.ZoneInfo(tz_zone)
    instants = (datetime.datetime(year, month, 15, 12, tzinfo=datetime.timezone.utc)
                for month in (1, 7))
    return tuple(round(instant.astimezone(zone).utcoffset().total_seconds() / 60)
                 for instant in instants)


def main():
    tz_zones = {}
    for line in (ROOT / "assets/cities.tsv").read_text(encoding="utf-8").splitlines():
        if not line.startswith("#"):
            fields = line.split("\t")
            tz_zones.setdefault(fields[WINDOWS_ZONE], fields[TZ_ZONE])
    keys = collections.defaultdict(lambda: collections.defaultdict(list))
    for key, tz_zone in sorted(tz_zones.items()):
        january, july = offsets(tz_zone, YEAR)
        if (january, july) == offsets(tz_zone, NEWER_YEAR) and july - january in SEASONS:
            keys[min(january, july)][july - january].append(key)
    with open(ROOT / "tests/data/zones_2022.tsv", "w", encoding="utf-8", newline="\n") as table:
        for offset, names in sorted(keys.items()):
            lists = (";".join(names[season]) for season in SEASONS)
            table.write("\t".join((str(offset), *lists)).rstrip("\t") + "\n")


if __name__ == "__main__":
    main()
