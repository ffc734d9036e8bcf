#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_text.h"

/// Whether an index lists the photos of one city or of all cities of a country.
enum class PhotoIndexKind { City, Country };

/// One photo of an index.
struct PhotoIndexEntry {
    std::int32_t photoNumber = 0;  ///< 0 or above
    WideString city;               ///< empty for PhotoIndexKind::City, whose lines name no city
    WideString caption;
    WideString pagePath;
};

/// Reads the photos of an "index.tsv". The file may come from anyone, so the reader accepts any
/// content.
///
/// A line has up to six fields, separated by tabs:
///   index of a city:     number, -, -, caption, page path
///   index of a country:  number, city, -, -, caption, page path
/// The fields marked "-" are not used. Missing fields are empty. Empty lines and lines that begin
/// with '#' or ';' are comments. A line is read as UTF-8 when it is valid UTF-8, otherwise in the
/// ANSI code page of the system. Bytes after the 4095th byte of a line are ignored. A NUL ends the
/// text of a line; Ctrl-Z ends the file. Lines without a photo number of 0 or above are skipped.
/// Only the first ten characters of the number field are read; a number above 2147483647 becomes
/// 2147483647.
class PhotoIndexReader {
public:
    /// @param bytes  content of the file; must outlive the reader
    PhotoIndexReader(std::string_view bytes, PhotoIndexKind kind) noexcept;
    /// Reads the next photo into `entry`. Returns false at the end of the file. Throws
    /// std::bad_alloc.
    bool Next(PhotoIndexEntry& entry);

private:
    std::string_view rest_;
    PhotoIndexKind kind_;
};
