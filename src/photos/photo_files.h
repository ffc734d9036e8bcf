#pragma once
// The photo tree on disk, below "<common application data>\Zelmo\City Photos". Other software fills
// the tree; the library only reads it.

#include <cstddef>
#include <cstdint>
#include <string>

#include "base/wide_text.h"
#include "cities/city_table.h"

/// Forms the path of the folder of a country (`city` empty) or of a city, with a backslash at its
/// end. Throws std::bad_alloc.
/// @return false and an empty `path` when `country` is empty, when there is no photo tree, when a
///         name cannot be a folder name, or when the path has 260 characters or more
bool GetPhotoFolder(WideView country, WideView city, WideString& path);

/// Forms the path of photo `number` of a city; otherwise like GetPhotoFolder.
bool GetPhotoPath(WideView country, WideView city, std::int32_t number, WideString& path);
/// Forms the path of photo `number` of the city at `cityIndex` in the table. Also returns false for
/// an index outside the table.
bool GetPhotoPath(const CityTable& cities, std::int32_t cityIndex, std::int32_t number,
                  WideString& path);

// The functions below access the disk. They are implemented in photo_files_win.cpp.

/// Returns the root of the photo tree with a backslash at its end, or an empty text when the system
/// has no folder for common data. Throws std::bad_alloc.
WideString PhotoRoot();

/// Whether `path` is a file that exists; false for a folder.
bool PhotoFileExists(const WideString& path) noexcept;

/// Maximum number of bytes that are read from an index, so that a huge file does not fill the
/// memory.
inline constexpr std::size_t kIndexByteLimit = 8U << 20U;

/// Reads an index file into `bytes`, at most kIndexByteLimit bytes. Returns false when the file
/// cannot be opened or read. Throws std::bad_alloc.
bool ReadPhotoIndex(const WideString& path, std::string& bytes);

/// Reads the size of a photo in pixels from the header of its file, without decoding the photo.
/// Returns false and leaves both sizes unchanged when the file has no readable header.
bool ReadPhotoSize(const WideString& path, std::int32_t& width, std::int32_t& height) noexcept;
