#pragma once

#include <cstdint>
#include <string_view>

#include "base/wide_text.h"

/// Whose index it is: a city's, or that of all cities of a country.
enum class PhotoIndexKind { City, Country };

/// One photo of an index.
struct PhotoIndexEntry {
    std::int32_t photoNumber = 0;  ///< 0 or above
    WideString city;               ///< in a country's index only
    WideString caption;
    WideString pagePath;
};

/// Reads an "index.tsv" that may come from anyone.
///
/// A line holds up to six fields with tabs between:
///   city's index:     number, -, -, caption, page path
///   country's index:  number, city, -, -, caption, page path
/// and is a comment when it is empty or begins with '#' or ';'. Missing fields are empty. A line
/// that is valid UTF-8 is UTF-8, any other is in the system's ANSI code page. What follows the
/// 4095th byte of a line is thrown away, a NUL ends a line's text and Ctrl-Z the file. Lines
/// without a photo number of 0 or above are skipped; numbers stop at the largest of 32 bits.
class PhotoIndexReader {
public:
    /// @param bytes  the whole file; must outlive the reader
    PhotoIndexReader(std::string_view bytes, PhotoIndexKind kind) noexcept;
    /// Gives the next photo; false at the end. Throws std::bad_alloc.
    bool Next(PhotoIndexEntry& entry);

private:
    std::string_view rest_;
    PhotoIndexKind kind_;
};
