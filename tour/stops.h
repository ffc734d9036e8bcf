#pragma once
// The stops of a tour. Each stop acts on the map and then takes a picture of it.

#include <span>

#include "tour/map_driver.h"

/// Each stop begins with the view at the end of the stop before it. A stop that throws
/// std::runtime_error gives no picture.
struct Stop {
    const wchar_t* name;  ///< of the picture file, without size and extension
    void (*act)(const MapDriver& map);
    Picture (MapDriver::*look)() const = &MapDriver::LookWhenSettled;
};

/// Stops that show the globe; they work at any hour of the day.
std::span<const Stop> GlobeStops();
/// One stop, to be taken with the system clock set to the evening of a 21st of June.
std::span<const Stop> JuneStops();
/// Stops that show what the pointer brings up: buttons, labels, photos. The pictures are best when
/// it is day in Europe.
std::span<const Stop> PointerStops();
/// Stops that show all that must fit into a window of any size.
std::span<const Stop> SizeStops();
