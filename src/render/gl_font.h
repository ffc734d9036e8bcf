#pragma once

#include <cstdint>

#include "base/windows_types.h"
#include "horivo_map.h"

/// Text in OpenGL, with one display list for each of the character codes 0 to 254 of the system's
/// ANSI code page. Code 255 shows nothing. Window thread; the context must be current.
///
/// The list names are the low halves of the addresses of the object's first 256 bytes (see
/// ListName), so that no other object uses the same names.
class CGLFont {
public:
    CGLFont() noexcept = default;
    CGLFont(const CGLFont&) = delete;
    CGLFont& operator=(const CGLFont&) = delete;
    ~CGLFont() { Release(); }

#ifdef _WIN32
    /// Deletes earlier display lists, makes new display lists from the font that is selected into
    /// `dc`, and measures the characters of all 256 codes.
    /// @param outlineMode  true: filled 3D outlines; false: bitmaps
    /// @return whether the display lists could be made
    bool Build(HDC dc, bool outlineMode);
#endif
    /// Deletes the display lists, if they exist.
    void Release() noexcept;

    /// Draws `text` with its origin at (x, y, z), which the current matrices transform.
    /// @param length  bytes; below 0: to the terminator
    /// Deliberate: an empty or null text leaves one matrix more on the modelview stack. A caller
    /// whose text may be empty must pop this matrix.
    void DrawText(float x, float y, float z, const char* text, std::int32_t length = -1) const;
    /// Converts a wide text to the ANSI code page, cuts the converted text at 2047 bytes and draws
    /// it like DrawText. For an empty or null text, does nothing and leaves the matrix stack as it
    /// is.
    void DrawTextW(float x, float y, float z, const HorivoWideChar* text,
                   std::int32_t length = -1) const;

    /// Returns the width in pixels of the first `length` bytes, or of all bytes for a length below
    /// 0; a zero byte ends the text. Codes 128 to 255 count as 0 pixels wide.
    std::int32_t GetTextWidth(const char* text, std::int32_t length = -1) const noexcept;
    /// Returns the width in pixels of wide text, as DrawTextW draws it.
    std::int32_t GetTextWidthW(const HorivoWideChar* text, std::int32_t length = -1) const noexcept;
    /// Returns the height of the tallest character cell, pixels.
    std::int32_t GetHeight() const noexcept { return maxHeight; }

    bool built = false;
    bool outline = false;
    GLYPHMETRICSFLOAT glyphMetrics[256] = {};  ///< filled in outline mode only
    std::int16_t charWidth[256] = {};          ///< pixels
    std::int32_t maxHeight = 0;                ///< pixels
};

#ifdef _WIN32
/// Number of display lists with a glyph: codes 0 to 254.
/// Deliberate: code 255 gets no glyph, although 256 list names are used and 256 codes are measured.
inline constexpr unsigned kGlyphCount = 255;

/// Returns the character that the display list of `code` shows. For the codes 128 to 254 of a code
/// page with one byte per character, returns the character of the code page. In all other cases,
/// returns the Unicode character of the same number. (One display list per byte cannot show a
/// character of several bytes.) Code 0xB0 shows the degree sign with every code page, because the
/// coordinate text uses it.
wchar_t CharacterOfCode(UINT codePage, unsigned code) noexcept;
#endif
