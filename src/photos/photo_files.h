#pragma once
// The photo tree on disk, below "<common application data>\Zelmo\City Photos". Other software fills
// it; the library only reads.

#include <cstddef>
#include <cstdint>
#include <string>

#include "base/wide_text.h"
#include "cities/city_table.h"

/// The folder of a country (`city` empty) or of a city, with a backslash at its end.
/// @return false, with `path` empty, when there is no country or no photo tree, when a name makes
///         no folder, or when the path reaches 260 characters. Throws std::bad_alloc.
bool GetPhotoFolder(WideView country, WideView city, WideString& path);

/// The file of photo `number` of a city; otherwise as above.
bool GetPhotoPath(WideView country, WideView city, std::int32_t number, WideString& path);
/// The same for a city of the table; also false for an index outside of it.
bool GetPhotoPath(const CityTable& cities, std::int32_t cityIndex, std::int32_t number,
                  WideString& path);

// What follows asks the disk; implemented in photo_files_win.

/// The root of the photo tree with a backslash at its end; empty when the system names no folder
/// for common data. Throws std::bad_alloc.
WideString PhotoRoot();

/// Whether there is a file (no folder) at `path`.
bool PhotoFileExists(const WideString& path) noexcept;

/// An index longer than this is read up to here.
inline constexpr std::size_t kIndexByteLimit = 8U << 20U;

/// Reads a whole index file; false when it cannot be opened or read. Throws std::bad_alloc.
bool ReadPhotoIndex(const WideString& path, std::string& bytes);

/// Reads a photo's size from its header, without decoding it; false, with both unchanged, when
/// there is none.
bool ReadPhotoSize(const WideString& path, std::int32_t& width, std::int32_t& height) noexcept;
