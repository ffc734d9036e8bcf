#!/usr/bin/env python3
"""Makes a sample tree of city photos from crops of the map picture.

    tools/make_sample_photos.py OUTPUT [MAP]

OUTPUT becomes the library's folder "City Photos": one folder per country and, below it, one per city,
each with its index.tsv and with photos named by their numbers. MAP is the world map to crop,
assets/map.jpg by default. Needs ImageMagick's convert. The same map gives the same tree.
"""
import math
import pathlib
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
KM_PER_DEGREE = 111.2
MAP_WIDTH, MAP_HEIGHT = 4096, 2048  # pixels; the map is scaled to this size before it is cropped
SMALL_WIDTH, SMALL_HEIGHT = 512, 256  # pixels; size of the copy from which colours are read
FIRST_NUMBER = 101
# Sizes of photos, pixels. The panel is 108 wide, so there is a margin on both sides.
SHAPES = [(100, 75), (100, 75), (100, 100), (100, 75), (100, 133)]

# Countries with their cities, as in assets/cities.tsv.
PLACES = {
    "Argentina": ["Buenos Aires", "Mendoza", "Ushuaia"],
    "Australia": ["Sydney", "Melbourne", "Brisbane", "Perth", "Adelaide", "Darwin", "Hobart"],
    "Brazil": ["Sao Paulo", "Manaus", "Recife", "Belem"],
    "Canada": ["Vancouver", "Toronto", "Halifax", "St. John's"],
    "Egypt": ["Cairo"],
    "France": ["Paris"],
    "Germany": ["Berlin"],
    "Greece": ["Athens"],
    "Italy": ["Rome"],
    "Japan": ["Tokyo"],
    "Portugal": ["Lisbon", "Madeira", "Azores"],
    "Spain": ["Madrid", "Canary"],
    "United Kingdom": ["London"],
}
# This city gets every view, so that there are pages to turn.
LARGEST = "Paris"

DIRECTIONS = ["north", "north-east", "east", "south-east", "south", "south-west", "west",
              "north-west"]
DISTANCES_KM = [200, 350, 500, 700, 900]
# Views with the city in the middle: caption, and width in degrees of longitude.
VIEWS = [
    ("{city} and its surroundings", 6),
    ("The country around {city}", 11),
    ("{city} in its part of the world", 22),
    ("{city} from far away", 40),
]


def read_cities():
    """Latitude and longitude by (city, country)."""
    cities = {}
    for line in (ROOT / "assets" / "cities.tsv").read_text(encoding="utf-8").splitlines():
        if line and not line.startswith("#"):
            city, country, latitude, longitude = line.split("\t")[:4]
            cities[city, country] = float(latitude), float(longitude)
    return cities


def read_colours(map_path):
    """Returns a function that gives the map's colour at a latitude and longitude."""
    size = f"{SMALL_WIDTH}x{SMALL_HEIGHT}!"
    done = subprocess.run(["convert", map_path, "-resize", size, "-depth", "8", "rgb:-"],
                          check=True, stdout=subprocess.PIPE)

    def colour(latitude, longitude):
        x = min(int((longitude + 180) / 360 * SMALL_WIDTH), SMALL_WIDTH - 1)
        y = min(int((90 - latitude) / 180 * SMALL_HEIGHT), SMALL_HEIGHT - 1)
        at = (y * SMALL_WIDTH + x) * 3
        return done.stdout[at:at + 3]

    return colour


def land_word(colour):
    """A caption for a place with this colour on the map."""
    red, green, blue = colour
    if min(colour) > 150:
        return "Snow and ice"
    if blue > 1.25 * red:
        return "The sea"
    if red > 1.35 * blue and red > 95:
        return "Dry land"
    return "Green land" if green >= red and red < 80 else "The land"


def move(latitude, longitude, km, direction):
    """The place that lies `km` away in a compass direction (0 north, 1 north-east, ...)."""
    angle = math.radians(45 * direction)
    degrees = km / KM_PER_DEGREE
    stretched = degrees / max(math.cos(math.radians(latitude)), 0.2)
    return latitude + degrees * math.cos(angle), longitude + stretched * math.sin(angle)


def views_of(city, place, colour, most):
    """The views of a city, the best first, as (caption, latitude, longitude, degrees of width)."""
    views = [(text.format(city=city), *place, degrees) for text, degrees in VIEWS]
    for km in DISTANCES_KM:
        for direction, name in enumerate(DIRECTIONS):
            there = move(*place, km, direction)
            if abs(there[0]) > 80 or abs(there[1]) > 175:
                continue
            views.append((f"{land_word(colour(*there))} {km} km {name} of {city}", *there, 9))
    return views[:most]


def crop_commands(views, first_number, folder):
    """Returns the photos' numbers and captions, and the arguments of convert that make the photos."""
    photos, arguments = [], []
    # The library shows the highest number first, so the best view gets the highest number.
    for offset, (caption, latitude, longitude, degrees) in enumerate(reversed(views)):
        number = first_number + offset
        width, height = SHAPES[number % len(SHAPES)]
        crop_width = round(degrees / 360 * MAP_WIDTH)
        crop_height = round(crop_width * height / width)
        left = round((longitude + 180) / 360 * MAP_WIDTH - crop_width / 2)
        top = round((90 - latitude) / 180 * MAP_HEIGHT - crop_height / 2)
        left = min(max(left, 0), MAP_WIDTH - crop_width)
        top = min(max(top, 0), MAP_HEIGHT - crop_height)
        arguments += ["(", "mpr:map", "-crop", f"{crop_width}x{crop_height}+{left}+{top}", "+repage",
                      "-filter", "Mitchell", "-resize", f"{width}x{height}!", "-brightness-contrast",
                      "12x12", "-quality", "88", "-write", str(folder / f"{number}.jpg"), "+delete",
                      ")"]
        photos.append((number, caption))
    return photos, arguments


def write_index(folder, header, lines):
    text = "# " + header + "\n" + "".join("\t".join(line) + "\n" for line in lines)
    (folder / "index.tsv").write_text(text, encoding="utf-8", newline="\n")


def folder_name(name):
    """The folder name that the library uses for a city or country."""
    return "".join(c for c in name if ord(c) >= 32 and c not in '*/:;?\\\x7f')


def make_tree(output, map_path):
    cities, colour = read_cities(), read_colours(map_path)
    # One call of convert makes all crops, so that the map is decoded once. convert needs an output
    # picture at the end, which is discarded ("null:").
    command = ["convert", str(map_path), "-resize", f"{MAP_WIDTH}x{MAP_HEIGHT}!", "-strip", "-write",
               "mpr:map", "+delete"]
    number = FIRST_NUMBER
    for country, names in PLACES.items():
        country_folder = output / folder_name(country)
        of_country = []
        for position, city in enumerate(names):
            folder = country_folder / folder_name(city)
            folder.mkdir(parents=True, exist_ok=True)
            most = 44 if city == LARGEST else 4 + (number + position) % 5
            views = views_of(city, cities[city, country], colour, most)
            photos, arguments = crop_commands(views, number, folder)
            command += arguments
            number += len(views)
            page = "/photo/{}.htm"
            write_index(folder, "number\t\t\tcaption\tpage",
                        [(str(n), "", "", text, page.format(n)) for n, text in photos])
            of_country += [(str(n), city, "", "", text, page.format(n)) for n, text in photos]
        write_index(country_folder, "number\tcity\t\t\tcaption\tpage", of_country)
    subprocess.run(command + ["-size", "2x2", "xc:black", "null:"], check=True)
    return number - FIRST_NUMBER


def main():
    if len(sys.argv) not in (2, 3):
        sys.exit(__doc__)
    map_path = pathlib.Path(sys.argv[2]) if len(sys.argv) == 3 else ROOT / "assets" / "map.jpg"
    output = pathlib.Path(sys.argv[1])
    photos = make_tree(output, map_path)
    cities = sum(len(names) for names in PLACES.values())
    print(f"{photos} photos of {cities} cities in {len(PLACES)} countries: {output}")


if __name__ == "__main__":
    main()
