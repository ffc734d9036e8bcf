#pragma once
// The stops of a tour: what each does to the map, and the picture that it leaves.

#include <span>

#include "tour/map_driver.h"

/// Each stop begins with the view that the stop before it has left. A stop that throws
/// std::runtime_error leaves no picture.
struct Stop {
    const wchar_t* name;  ///< of the picture
    void (*act)(const MapDriver& map);
    Picture (MapDriver::*look)() const = &MapDriver::LookWhenSettled;
};

/// The globe: what works at any hour.
std::span<const Stop> GlobeStops();
/// One view, for a clock that shows a 21st of June in the evening.
std::span<const Stop> JuneStops();
/// What the pointer shows: buttons, labels, photos. Best when it is day in Europe.
std::span<const Stop> PointerStops();
/// What must find room in a window of any size.
std::span<const Stop> SizeStops();
