#include "render/gl_font.h"

#include <algorithm>
#include <cstring>

#include "base/gl.h"
#include "base/narrow_text.h"
#include "render/list_name.h"

namespace {

constexpr GLsizei kListCount = 256;  // list names, one for each character code
// Deliberate: characters from this code on count as 0 pixels wide, so a text with such characters
// is wider than GetTextWidth returns.
constexpr unsigned kFirstUnmeasured = 128;
constexpr std::int32_t kTextCapacity =
    2048;  // bytes of a text in the ANSI code page, with terminator

/// Returns the smaller of a length in wide characters and the number of bytes that the text has
/// in the ANSI code page. A negative length means "to the terminator" and stays negative.
std::int32_t LengthWithin(std::int32_t wideLength, std::int32_t bytes) noexcept {
    return std::min(wideLength, bytes);
}

}  // namespace

static_assert(sizeof(CGLFont) > kListCount, "the list names are addresses of bytes of the object");

void CGLFont::Release() noexcept {
    if (!built) return;
    glDeleteLists(ListName(this), kListCount);
    built = false;
}

void CGLFont::DrawText(float x, float y, float z, const char* text, std::int32_t length) const {
    glPushMatrix();
    if (outline) {
        glTranslatef(x, y, z);
    } else {
        glRasterPos3f(x, y, z);
    }
    if (length < 0 && text != nullptr) length = static_cast<std::int32_t>(std::strlen(text));
    // Deliberate: without a text, the pushed matrix is not popped, and the caller must pop it.
    if (length == 0 || text == nullptr) return;
    glListBase(ListName(this));
    glCallLists(length, GL_UNSIGNED_BYTE, text);
    glPopMatrix();
}

void CGLFont::DrawTextW(float x, float y, float z, const HorivoWideChar* text,
                        std::int32_t length) const {
    // NarrowText would convert the terminator of an empty text when `length` is above 0.
    if (text == nullptr || text[0] == 0) return;
    char narrow[kTextCapacity];
    const std::int32_t bytes = NarrowText(text, length, narrow, kTextCapacity);
    if (bytes > 0) DrawText(x, y, z, narrow, LengthWithin(length, bytes));
}

std::int32_t CGLFont::GetTextWidth(const char* text, std::int32_t length) const noexcept {
    if (text == nullptr) return 0;
    std::int32_t width = 0;
    for (std::int32_t i = 0; i != length && text[i] != '\0'; ++i) {
        const auto code = static_cast<unsigned char>(text[i]);
        if (code < kFirstUnmeasured) width += charWidth[code];
    }
    return width;
}

std::int32_t CGLFont::GetTextWidthW(const HorivoWideChar* text,
                                    std::int32_t length) const noexcept {
    if (text == nullptr || text[0] == 0) return 0;
    char narrow[kTextCapacity];
    const std::int32_t bytes = NarrowText(text, length, narrow, kTextCapacity);
    return bytes > 0 ? GetTextWidth(narrow, LengthWithin(length, bytes)) : 0;
}
