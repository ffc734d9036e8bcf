#pragma once
// The sample host's command line.

#include <string>

#include "tour.h"

struct Options {
    std::wstring tourFolder;  ///< empty: no tour, an ordinary window
    TourPart tourPart = TourPart::Whole;
    int width = 1280;  ///< of the map, pixels
    int height = 800;
};

inline constexpr wchar_t kUsage[] =
    L"horivo_demo [--size WIDTHxHEIGHT] [--tour FOLDER [--part whole|june|pointer|sizes]]";

/// Reads the program's own command line. @return false when it is not as kUsage says
bool ReadOptions(Options& options);
