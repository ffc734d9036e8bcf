#pragma once
// A photo tree in memory: what the disk is to the library, this is to the portable tests.

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "base/wide_text.h"
#include "horivo_map.h"

struct PhotoTree {
    WideString root = u"C:\\Data\\Zelmo\\City Photos\\";
    struct Size {
        std::int32_t width, height;
    };
    std::map<WideString, Size> photos;          ///< by path; a size that is too large is allowed
    std::map<WideString, std::string> indexes;  ///< bytes by path
    std::vector<WideString> touched;            ///< every path that the library asked for

    /// Puts a picture of noise at `path` below the root ("France\\Paris\\12.jpg").
    void AddPhoto(WideView path, std::int32_t width, std::int32_t height);
    void AddIndex(WideView path, std::string_view bytes);
    void Reset();
};

/// The tree that the doors open on.
PhotoTree& Tree();

/// A record of the city table.
CityRecord MakeCity(WideView city, WideView country, double latitude = 10.0,
                    double longitude = 20.0);
