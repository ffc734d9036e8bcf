#pragma once
// A tour that the program takes by itself and leaves pictures of.

#include <string>
#include <vector>

#include "horivo_map.h"
#include "window/host_windows.h"

/// Which pictures a tour takes.
enum class TourPart {
    Whole,        ///< the globe, all that works at any hour
    JuneEvening,  ///< one view, for a clock that stands on a 21st of June in the evening
    Pointer,      ///< what the pointer shows: buttons, labels, photos; best with Europe by day
    Sizes,        ///< what must find room in a window of any size; the size is part of the names
    Clock,        ///< the whole program in several languages; the scaling is part of the names
    Start         ///< no picture: how long the first one takes
};

/// Drives `map` with real messages and writes a PNG file for each stop.
/// @param folder  exists; without a backslash at its end
/// @return an account of each picture that failed; empty when all were written
std::vector<std::wstring> TakeTour(HWND map, const std::vector<CityRecord>& cities, TourPart part,
                                   const std::wstring& folder);
