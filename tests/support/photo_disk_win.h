#pragma once
// The photo tree on disk as other software would leave it there.

#include <filesystem>
#include <string>
#include <string_view>

/// Empties the tree when it starts and when it ends.
class PhotoDisk {
public:
    PhotoDisk() { Empty(); }
    PhotoDisk(const PhotoDisk&) = delete;
    PhotoDisk& operator=(const PhotoDisk&) = delete;
    ~PhotoDisk() { Empty(); }

    static std::filesystem::path Root();
    static void Empty();
    /// Writes a JPEG "number.jpg" into the folder of a place ("France\\Paris").
    static void PutPhoto(const std::wstring& place, int number, int width = 96, int height = 64);
    /// Writes the bytes of a place's "index.tsv".
    static void PutIndex(const std::wstring& place, std::string_view bytes);
    /// Photos 1 to `count` of a city and its index, captions "photo 1" and so on, pages "/1.htm".
    static void PutCity(const std::wstring& place, int count, int width = 96, int height = 64);
};
