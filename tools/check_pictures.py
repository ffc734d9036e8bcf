#!/usr/bin/env python3
"""Checks the tour's pictures for a lit globe: tools/check_pictures.py FOLDER.

Prints a line for each check and exits non-zero when a picture does not show what it must. All pictures
must show a round globe in the middle of black space. By day the globe shows sea and land, by night
it is dark. On a June evening over Europe it shows lit ice in the north, day on the left, and night on
the right and below. Where the pointer shows something, the picture must have the labels, photos,
captions and buttons in their colours and places.
"""

import sys
from pathlib import Path

from png_reader import read_png

GLOBE_STOPS = ["01-start", "02-drag", "03-near", "04-far", "05-fly-to", "06-information",
               "07-loading", "08-day-side", "09-night-side", "10-june-evening"]
SPACE = 12      # largest channel value of black space; the faintest part of the air is brighter
STEP = 2        # pixels; measuring every second pixel of every second row is enough
INNER = 0.95    # share of the radius that is measured, without the air around the globe
CORNER = 60, 30  # pixels, width and height of the upper corners; the lower ones have text and buttons
PANEL = 108     # pixels; width of the column on the right with photos and buttons
SIZES = ["800x600", "2560x1440"]  # of the map, pixels, in the part "sizes" of the tour

WHITE = (255, 255, 255)
NEAREST_LABEL = (255, 230, 51)
OTHER_LABEL = (191, 209, 0)
NEAREST_DOT = (0, 252, 0)


class Fault(Exception):
    """What is wrong with a picture."""


def demand(condition, text):
    if not condition:
        raise Fault(text)


def disc(picture):
    """Centre, half width and half height of the globe, measured on the two middle lines."""
    middle_x, middle_y = picture.width // 2, picture.height // 2
    # The photo panel is not part of the globe.
    row = [x for x in range(picture.width - PANEL) if max(picture.pixel(x, middle_y)) > SPACE]
    column = [y for y in range(picture.height) if max(picture.pixel(middle_x, y)) > SPACE]
    demand(row and column, "nothing but space")
    return ((row[0] + row[-1]) / 2, (column[0] + column[-1]) / 2,
            (row[-1] - row[0]) / 2, (column[-1] - column[0]) / 2)


def check_globe(picture):
    x, y, half_width, half_height = disc(picture)
    near = 0.02 * picture.width
    demand(abs(x - picture.width / 2) < near and abs(y - picture.height / 2) < near,
           f"the globe's middle is at {x}, {y}")
    demand(abs(half_width - half_height) < 0.03 * half_width,
           f"not round: {half_width} to {half_height}")
    demand(half_width > 0.15 * picture.width, f"too small: radius {half_width}")
    width, height = CORNER
    for left in (0, picture.width - PANEL - width):
        brightest = max(max(picture.pixel(left + i, j))
                        for i in range(width) for j in range(height))
        demand(brightest <= SPACE, "space is not black in the corner")


def count(picture, colour, left, top, right, bottom):
    """Number of pixels of a colour; left and right below 0 are counted from the right edge."""
    columns = range(left % picture.width, right % picture.width or picture.width)
    return sum(1 for y in range(top, bottom) for x in columns
               if all(abs(a - b) < 4 for a, b in zip(picture.pixel(x, y), colour)))


def check_labels(others):
    """Checks the name and the dot of the nearest city, and names of other cities if `others` is set."""
    def check(picture):
        def on_globe(colour):
            return count(picture, colour, picture.width // 4, 0, -PANEL, picture.height)
        demand(on_globe(NEAREST_LABEL) > 60, "no name of the nearest city")
        demand(on_globe(NEAREST_DOT) >= 4, "no dot on the nearest city")
        if others:
            demand(on_globe(OTHER_LABEL) > 60, "no name of another city")
    return check


def check_photos(previous, following):
    """Checks the title, a photo, and the arrows to the previous and the next page."""
    def check(picture):
        demand(count(picture, WHITE, -PANEL, 0, picture.width, 34) > 60, "no title")
        first = [picture.pixel(picture.width - PANEL // 2 + dx, y)
                 for dx in range(-30, 31) for y in range(100, 150)]
        demand(sum(map(max, first)) / len(first) > 25, "no photo under the title")
        for name, left, wanted in (("previous", 40, previous), ("next", 59, following)):
            lit = sum(1 for dx in range(9) for y in range(64, 82)
                      if min(picture.pixel(picture.width - PANEL + left + dx, y)) > 200)
            demand((lit > 5) == wanted, f"the arrow to {name} photos: {lit} pixels")
    return check


def check_text_beside_panel(top, bottom):
    def check(picture):
        demand(count(picture, WHITE, -PANEL - 200, top, -PANEL, bottom) > 60, "no text")
    return check


def check_plus(lit):
    """Checks the plus button: the plus is light; its ground is blue under the pointer (`lit`), else
    dark."""
    def check(picture):
        left, top = picture.width - PANEL + 6, picture.height - 102
        blue = picture.pixel(left + 6, top + 8)[2]
        demand((blue > 120) == lit, f"blue of the ground: {blue}")
        demand(min(picture.pixel(left + 16, top + 16)) > 200, "no plus")
    return check


class Surface:
    """Shares of sea, land and ice on the globe, and the brightness of its four quarters."""

    def __init__(self, picture):
        x0, y0, radius, _ = disc(picture)
        inner = (INNER * radius) ** 2
        count = sea = land = ice = 0
        ice_height = 0.0
        light = {(below, right): [0.0, 0] for below in (0, 1) for right in (0, 1)}
        for y in range(0, picture.height, STEP):
            for x in range(0, picture.width, STEP):
                dx, dy = x - x0, y - y0
                if dx * dx + dy * dy > inner:
                    continue
                red, green, blue = picture.pixel(x, y)
                count += 1
                sea += blue > red + 20
                land += red > blue + 15
                if min(red, green, blue) > 200:
                    ice += 1
                    ice_height -= dy / radius
                quarter = light[dy > 0, dx > 0]
                quarter[0] += (red + green + blue) / 3
                quarter[1] += 1
        self.sea, self.land, self.ice = sea / count, land / count, ice / count
        self.ice_height = ice_height / max(ice, 1)
        self.light = {key: total / number for key, (total, number) in light.items()}
        self.mean_light = sum(total for total, _ in light.values()) / count


def check_day_and_night(day, night):
    # The Sun may be over an ocean at the hour of the run, so land is checked in another picture.
    demand(day.sea > 0.05 and day.sea + day.land > 0.4,
           f"by day the surface shows {day.sea:.0%} sea and {day.land:.0%} land")
    demand(day.mean_light > 2.5 * night.mean_light,
           f"the day ({day.mean_light:.0f}) is hardly lighter than the night "
           f"({night.mean_light:.0f})")


def check_land(picture):
    """Checks a picture of Africa and Europe at noon for land."""
    land = Surface(picture).land
    demand(land > 0.2, f"the surface shows {land:.0%} land")


def check_june(june):
    north_west, north_east = june.light[0, 0], june.light[0, 1]
    south = max(june.light[1, 0], june.light[1, 1])
    demand(june.ice > 0.02 and june.ice_height > 0.4,
           f"the north's ice: {june.ice:.1%} of the globe at height {june.ice_height:.2f}")
    demand(north_west > 1.3 * north_east and north_east > 1.3 * south,
           f"light: north-west {north_west:.0f}, north-east {north_east:.0f}, south {south:.0f}")


def check_loading(picture):
    reds = sum(1 for y in range(picture.height // 2, picture.height)
               for x in range(picture.width // 4)
               if picture.pixel(x, y)[0] > 192 and max(picture.pixel(x, y)[1:]) < 48)
    demand(reds > 50, "no line about loading")


FIRST_PAGE = check_photos(previous=False, following=True)
MIDDLE_PAGE = check_photos(previous=True, following=True)
CAPTION = check_text_beside_panel(90, 160)
HINT = check_text_beside_panel(34, 64)

# Pictures in which the pointer shows something: whether the whole globe is in the picture, and the
# checks of labels, photos and buttons.
POINTER_STOPS = {
    "11-buttons": (True, check_plus(lit=False), check_land),
    "12-button-plus": (True, check_plus(lit=True)),
    "13-buttons-on-sea": (False, check_plus(lit=True)),
    "14-labels-europe": (False, check_labels(others=True)),
    "15-labels-islands": (False, check_labels(others=True)),
    "16-city-by-hover": (True, check_labels(others=False), check_photos(False, False)),
    "17-city-by-click": (True, check_labels(others=True), FIRST_PAGE),
    "18-country-by-click": (True, FIRST_PAGE),
    "19-country-caption": (True, FIRST_PAGE, CAPTION),
    "20-first-page": (True, check_labels(others=False), FIRST_PAGE),
    "21-city-caption": (True, FIRST_PAGE, CAPTION),
    "22-next-page": (True, MIDDLE_PAGE, check_text_beside_panel(180, 230)),
    "23-last-page": (True, check_photos(previous=True, following=False)),
    "24-page-before": (True, MIDDLE_PAGE),
    "25-add-photo": (True, MIDDLE_PAGE, HINT),
}
SIZE_STOPS = {
    "26-start": (True, check_plus(lit=False)),
    "27-labels": (False, check_labels(others=True)),
    "28-city": (False, FIRST_PAGE, CAPTION),
    "29-country": (True, FIRST_PAGE, CAPTION),
    "30-all-text": (True, FIRST_PAGE, HINT),
}


LANGUAGES = ["english", "german", "spanish", "french", "russian", "japanese"]
SCALINGS = {100: 1.0, 150: 1.5}
CLOCK_VIEWS = ["", "-menu-1", "-menu-2", "-menu-3", "-menu-4", "-keys", "-about", "-search-1",
               "-search-2", "-search-enter", "-search-none"]


def dark_in_list(picture, factor):
    """Pixels of text in the list, below its headings."""
    return sum(1 for y in range(int(110 * factor), picture.height - int(40 * factor))
               for x in range(int(10 * factor), int(500 * factor)) if max(picture.pixel(x, y)) < 100)


def check_clock(pictures, scaling):
    """Checks the whole program: a list on the left, a globe on the right, menus in the language."""
    factor = SCALINGS[scaling]
    titles = set()
    for language in LANGUAGES:
        picture = pictures[language, ""]
        all_cities = dark_in_list(picture, factor)
        demand(all_cities > 5000, f"{language}: the list shows no text ({all_cities} dark pixels)")
        nothing = dark_in_list(pictures[language, "-search-none"], factor)
        demand(50 < nothing < 600 * factor**2,
               f"{language}: the list does not say that nothing was found ({nothing} dark pixels)")
        lit = sum(1 for y in range(picture.height // 4, picture.height * 3 // 4, 4)
                  for x in range(picture.width // 2, picture.width - PANEL, 4)
                  if max(picture.pixel(x, y)) > SPACE)
        seen = (picture.height // 8) * ((picture.width - PANEL - picture.width // 2) // 4)
        demand(lit > 0.3 * seen, f"{language}: no globe beside the list")
        titles.add(bytes(channel for y in range(int(26 * factor), int(40 * factor))
                         for x in range(int(200 * factor)) for channel in picture.pixel(x, y)))
        for view in CLOCK_VIEWS[1:]:
            demand(any(pictures[language, view].pixel(x, y) != picture.pixel(x, y)
                       for y in range(0, picture.height, 2) for x in range(0, picture.width, 2)),
                   f"{language}{view}: nothing has opened")
    demand(len(titles) == len(LANGUAGES), "the menus of two languages look alike")


def flat_stops():
    stops = dict(POINTER_STOPS)
    for name, checks in SIZE_STOPS.items():
        stops.update({f"{name}-{size}": checks for size in SIZES})
    return stops


def check_all(picture, whole_globe, checks):
    if whole_globe:
        check_globe(picture)
    for check in checks:
        check(picture)


def main():
    folder = Path(sys.argv[1])
    faults = 0

    def run(name, check):
        nonlocal faults
        try:
            check()
            print(f"ok      {name}")
        except (Fault, OSError, ValueError) as fault:
            faults += 1
            print(f"FAULTY  {name}: {fault}")

    pictures = {}

    def read(name):
        pictures[name] = read_png(folder / f"{name}.png")

    for name in GLOBE_STOPS:
        run(f"{name}: readable", lambda name=name: read(name))
    if faults:
        return 1
    for name in GLOBE_STOPS:
        if name != "03-near":  # in that picture the globe is larger than the window
            run(f"{name}: a round globe in black space", lambda name=name: check_globe(pictures[name]))
    run("07-loading: the line about loading", lambda: check_loading(pictures["07-loading"]))
    run("day and night side", lambda: check_day_and_night(
        Surface(pictures["08-day-side"]), Surface(pictures["09-night-side"])))
    run("10-june-evening: Sun and map", lambda: check_june(Surface(pictures["10-june-evening"])))
    for name, (whole_globe, *checks) in flat_stops().items():
        run(f"{name}: labels, photos and buttons", lambda name=name, whole=whole_globe, checks=checks:
            check_all(read_png(folder / f"{name}.png"), whole, checks))
    for scaling in SCALINGS:
        run(f"the world clock at {scaling} %", lambda scaling=scaling: check_clock(
            {(language, view): read_png(folder / f"clock-{language}{view}-{scaling}.png")
             for language in LANGUAGES for view in CLOCK_VIEWS}, scaling))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
