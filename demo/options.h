#pragma once
// The sample host's command line.

#include <string>

#include "tour/tour.h"

struct Options {
    std::wstring tourFolder;  ///< empty: no tour, an ordinary window
    TourPart tourPart = TourPart::Whole;
    int width = 0;  ///< of the map, pixels; both 0: as the user left the window
    int height = 0;
};

inline constexpr wchar_t kUsage[] =
    L"horivo_demo [--size WIDTHxHEIGHT] [--tour FOLDER [--part "
    L"whole|june|pointer|sizes|clock|start]]";

/// Whether the map is to fill the window, without the list.
bool ShowsMapAlone(const Options& options);

/// Reads the program's own command line. @return false when it is not as kUsage says
bool ReadOptions(Options& options);
