#pragma once

#include <cstdint>

#include "base/windows_types.h"
#include "horivo_map.h"

/// Text in OpenGL, with one display list for each of the character codes 0 to 254 of the system's
/// ANSI code page. Code 255 shows nothing. Window thread; the context must be current.
///
/// The list names are the low halves of the addresses of the object's first 256 bytes (see
/// ListName), so that no other object uses them.
class CGLFont {
public:
    CGLFont() noexcept = default;
    CGLFont(const CGLFont&) = delete;
    CGLFont& operator=(const CGLFont&) = delete;
    ~CGLFont() { Release(); }

#ifdef _WIN32
    /// Releases earlier lists, makes the lists from the font that is selected into `dc` and
    /// measures all 256 codes. @param outlineMode  true: filled 3D outlines; false: bitmaps
    /// @return whether the lists could be made
    bool Build(HDC dc, bool outlineMode);
#endif
    /// Deletes the lists, if there are any.
    void Release() noexcept;

    /// Draws `text` with its origin at (x, y, z). @param length  bytes; below 0: to the terminator
    /// Deliberate: an empty or null text leaves one matrix more on the modelview stack. A caller
    /// whose text may be empty must pop it.
    void DrawText(float x, float y, float z, const char* text, std::int32_t length = -1) const;
    /// Draws wide text like DrawText, after conversion to the ANSI code page; longer texts are cut
    /// at 2047 bytes. For an empty or null text, does nothing and leaves the matrix stack as it is.
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

/// Returns the character that the list of `code` shows. For the codes 128 to 254 of a code page
/// with one byte per character it is the character of the code page; for all others it is the
/// Unicode character of the same number. (One list per byte cannot show characters of several
/// bytes.) 0xB0 is the degree sign in every code page, because the coordinate text uses it.
wchar_t CharacterOfCode(UINT codePage, unsigned code) noexcept;
#endif
