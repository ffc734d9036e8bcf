#pragma once

#include <cstdint>

#include "base/windows_types.h"
#include "horivo_map.h"

/// Text in OpenGL: one display list for each of the character codes 0 to 254 of the system's ANSI
/// code page; 255 shows nothing. Window thread, context current.
///
/// The object is far larger than 256 bytes: the list names that begin at the low half of its
/// address lie inside its own memory.
class CGLFont {
public:
    CGLFont() noexcept = default;
    CGLFont(const CGLFont&) = delete;
    CGLFont& operator=(const CGLFont&) = delete;
    ~CGLFont() { Release(); }

#ifdef _WIN32
    /// Makes the lists from the font selected into `dc` and measures all 256 codes; releases
    /// earlier lists first. @param outlineMode  filled 3D outlines instead of bitmaps
    /// @return whether the lists exist
    bool Build(HDC dc, bool outlineMode);
#endif
    /// Deletes the lists, if any.
    void Release() noexcept;

    /// Draws `text` with its origin at (x, y, z). @param length  bytes; below 0: to the terminator
    /// Deliberate: an empty or null text leaves the modelview stack one level deeper; who may pass
    /// one pops that level.
    void DrawText(float x, float y, float z, const char* text, std::int32_t length = -1) const;
    /// The same for wide text, which is converted to the ANSI code page and cut at 2047 bytes;
    /// draws nothing and pushes nothing for an empty or null text.
    void DrawTextW(float x, float y, float z, const HorivoWideChar* text,
                   std::int32_t length = -1) const;

    /// Width in pixels of the first `length` bytes (below 0: all) or up to a zero byte.
    /// Codes 128 to 255 count as 0.
    std::int32_t GetTextWidth(const char* text, std::int32_t length = -1) const noexcept;
    std::int32_t GetTextWidthW(const HorivoWideChar* text, std::int32_t length = -1) const noexcept;
    /// Height of the tallest character cell, pixels.
    std::int32_t GetHeight() const noexcept { return maxHeight; }

    bool built = false;
    bool outline = false;
    GLYPHMETRICSFLOAT glyphMetrics[256] = {};  ///< filled in outline mode only
    std::int16_t charWidth[256] = {};          ///< pixels
    std::int32_t maxHeight = 0;                ///< pixels
};

#ifdef _WIN32
/// Number of display lists that carry a glyph: codes 0 to 254.
/// Deliberate: 255 gets none, though 256 names are kept and 256 codes are measured.
inline constexpr unsigned kGlyphCount = 255;

/// The character that the list of `code` shows, so that a text in `codePage` reads right. It is
/// the Unicode character of the same number, except for the codes 128 to 254 of a single-byte code
/// page that mean another character there. 0xB0 stays the degree sign in every language, because
/// the coordinate readout writes it so. For a code page with characters of several bytes nothing is
/// changed: one list a byte cannot show them.
wchar_t CharacterOfCode(UINT codePage, unsigned code) noexcept;
#endif
