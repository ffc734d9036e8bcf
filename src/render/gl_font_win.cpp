#include "render/gl_font.h"

#include <cmath>

#include "base/gl.h"
#include "render/list_name.h"
#include "render/pending_errors.h"

namespace {

constexpr unsigned kCodeCount = 256;
constexpr unsigned kSpace = ' ';
constexpr unsigned kFirstCodePageCode = 128;  // lower codes are ASCII in every code page
constexpr unsigned kDegreeSign = 0xB0;

bool IsSingleByte(UINT codePage) noexcept {
    CPINFO info;
    return GetCPInfo(codePage, &info) && info.MaxCharSize == 1;
}

/// Records one display list for each of `count` characters. The first character is `first`, and the
/// name of its list is `list`; further lists have the next names.
/// @param metrics  out: one record per character, in outline mode only
bool RecordGlyphs(HDC dc, bool outline, wchar_t first, unsigned count, GLuint list,
                  GLYPHMETRICSFLOAT* metrics) noexcept {
    const BOOL done = outline ? wglUseFontOutlinesW(dc, first, count, list, 0.0F, 0.0F,
                                                    WGL_FONT_POLYGONS, metrics)
                              : wglUseFontBitmapsW(dc, first, count, list);
    return done == TRUE;
}

/// Records new display lists for the codes whose character in the system's code page is not the
/// Unicode character of the same number. When the recording fails, the code keeps its earlier
/// display list.
void RecordCodePage(HDC dc, bool outline, GLuint base, GLYPHMETRICSFLOAT* metrics) noexcept {
    const UINT codePage = GetACP();
    for (unsigned code = 0; code < kGlyphCount; ++code) {
        const wchar_t character = CharacterOfCode(codePage, code);
        if (character == code) continue;
        RecordGlyphs(dc, outline, character, 1, base + code, metrics + code);
    }
}

/// Whether the display list moves the raster position by at least half of `width` pixels.
bool Advances(GLuint list, int width) noexcept {
    float before[4] = {};
    float after[4] = {};
    glRasterPos2f(0.0F, 0.0F);
    glGetFloatv(GL_CURRENT_RASTER_POSITION, before);
    glCallList(list);
    glGetFloatv(GL_CURRENT_RASTER_POSITION, after);
    return std::abs(after[0] - before[0]) * 2.0F >= static_cast<float>(width);
}

/// Whether the glyph of `character` has any pixels; the glyph of a space has none.
bool HasPixels(HDC dc, wchar_t character) noexcept {
    constexpr MAT2 kIdentity = {{0, 1}, {0, 0}, {0, 0}, {0, 1}};
    GLYPHMETRICS glyph;
    const DWORD size = GetGlyphOutlineW(dc, character, GGO_BITMAP, &glyph, 0, nullptr, &kIdentity);
    return size != GDI_ERROR && size != 0;
}

void RecordAdvance(GLuint list, int width) noexcept {
    // The bitmap has no pixels, so OpenGL does not read this byte. But the address must not be
    // null: Mesa would not record the command, and no space would separate the words.
    constexpr GLubyte kNoPixels = 0;
    glNewList(list, GL_COMPILE);
    glBitmap(0, 0, 0.0F, 0.0F, static_cast<float>(width), 0.0F, &kNoPixels);
    glEndList();
}

/// Replaces the display lists of glyphs without pixels by lists that only move the raster position,
/// unless the list of the space already moves the raster position. Reason: Mesa records nothing for
/// an empty bitmap and reports GL_OUT_OF_MEMORY, so that no space would separate the words.
void RepairSpaces(HDC dc, GLuint base, const std::int16_t (&widths)[kCodeCount]) noexcept {
    if (widths[kSpace] == 0 || Advances(base + kSpace, widths[kSpace])) return;
    const UINT codePage = GetACP();
    for (unsigned code = 0; code < kGlyphCount; ++code) {
        if (widths[code] == 0 || HasPixels(dc, CharacterOfCode(codePage, code))) continue;
        if (!Advances(base + code, widths[code])) RecordAdvance(base + code, widths[code]);
    }
}

/// Calls RepairSpaces with transforms that keep the raster position valid, then restores all state.
void CheckSpaces(HDC dc, GLuint base, const std::int16_t (&widths)[kCodeCount]) noexcept {
    glPushAttrib(GL_CURRENT_BIT | GL_TRANSFORM_BIT);
    glMatrixMode(GL_PROJECTION);
    glPushMatrix();
    glLoadIdentity();
    glMatrixMode(GL_MODELVIEW);
    glPushMatrix();
    glLoadIdentity();
    RepairSpaces(dc, base, widths);
    glPopMatrix();
    glMatrixMode(GL_PROJECTION);
    glPopMatrix();
    glPopAttrib();
}

}  // namespace

wchar_t CharacterOfCode(UINT codePage, unsigned code) noexcept {
    const auto sameNumber = static_cast<wchar_t>(code);
    if (code < kFirstCodePageCode || code >= kGlyphCount || code == kDegreeSign ||
        !IsSingleByte(codePage)) {
        return sameNumber;
    }
    const char byte = static_cast<char>(code);
    wchar_t character = 0;
    const int converted =
        MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, &byte, 1, &character, 1);
    return converted == 1 ? character : sameNumber;
}

bool CGLFont::Build(HDC dc, bool outlineMode) {
    Release();
    outline = outlineMode;
    const GLuint base = ListName(this);
    built = RecordGlyphs(dc, outline, 0, kGlyphCount, base, glyphMetrics);
    maxHeight = 0;
    for (unsigned code = 0; code < kCodeCount; ++code) {
        const char byte = static_cast<char>(code);
        SIZE size;
        if (!GetTextExtentPoint32A(dc, &byte, 1, &size)) continue;
        charWidth[code] = static_cast<std::int16_t>(size.cx);
        if (size.cy > maxHeight) maxHeight = size.cy;
    }
    if (built) {
        RecordCodePage(dc, outline, base, glyphMetrics);
        if (!outline) CheckSpaces(dc, base, charWidth);
    }
    DrainErrors();  // a later glGetError must not report errors of these lists
    return built;
}
