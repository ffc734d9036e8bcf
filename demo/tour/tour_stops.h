#pragma once
// The stops of the tours: what each does to the map and which picture it leaves.

#include <span>
#include <string_view>
#include <vector>

#include "horivo_map.h"
#include "tour/map_driver.h"

using Cities = std::vector<CityRecord>;

/// One stop of a tour; each takes over the view that the one before it left.
struct Stop {
    const wchar_t* name;  ///< of the picture
    /// @return the picture; empty when the map did not show what it should
    Picture (*visit)(const MapDriver& map, const Cities& cities);
};

std::span<const Stop> GlobeStops();
std::span<const Stop> JuneStops();
std::span<const Stop> PointerStops();
std::span<const Stop> SizeStops();

/// Flies to a city by the host's message. @return false when it did not arrive in time
bool FlyTo(const MapDriver& map, const CityRecord& city);

/// The first city of this name; null when there is none.
const CityRecord* FindCity(const Cities& cities, std::wstring_view name);
