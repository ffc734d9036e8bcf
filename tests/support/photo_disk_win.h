#pragma once
// The photo tree on disk as other software would leave it there.

#include <string_view>

#include "support/map_host_win.h"

/// Empties the tree when it starts and when it ends.
class PhotoDisk {
public:
    PhotoDisk() { Empty(); }
    ~PhotoDisk() { Empty(); }

    static std::filesystem::path Root() {
        return MapHostTest::DataFolder().parent_path() / L"City Photos";
    }
    static void Empty() {
        std::error_code ignored;
        std::filesystem::remove_all(Root(), ignored);
    }
    /// Writes a JPEG "number.jpg" into the folder of a place ("France\\Paris").
    static void PutPhoto(const std::wstring& place, int number, int width = 96, int height = 64) {
        std::filesystem::create_directories(Root() / place);
        SavePatternJpeg(Root() / place / (std::to_wstring(number) + L".jpg"), width, height, 80);
    }
    /// Writes the bytes of a place's "index.tsv".
    static void PutIndex(const std::wstring& place, std::string_view bytes) {
        std::filesystem::create_directories(Root() / place);
        std::ofstream(Root() / place / L"index.tsv", std::ios::binary) << bytes;
    }
    /// Photos 1 to `count` of a city and its index, captions "photo 1" and so on, pages "/1.htm".
    static void PutCity(const std::wstring& place, int count, int width = 96, int height = 64) {
        std::string lines;
        for (int i = 1; i <= count; ++i) {
            PutPhoto(place, i, width, height);
            const std::string number = std::to_string(i);
            lines += number + "\tx\ty\tphoto " + number + "\t/" + number + ".htm\r\n";
        }
        PutIndex(place, lines);
    }
};
