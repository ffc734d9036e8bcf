#include "render/pixel_format.h"

#include <cstdint>

namespace {

// wingdi.h has these as macros; their numbers are repeated for builds without it.
constexpr std::uint32_t kDoubleBuffer = 0x1;
constexpr std::uint32_t kDrawToWindow = 0x4;
constexpr std::uint32_t kSupportOpenGl = 0x20;
constexpr std::uint32_t kGenericAccelerated = 0x1000;
constexpr std::uint8_t kTypeRgba = 0;
constexpr std::uint8_t kMainPlane = 0;
constexpr std::uint8_t kBits = 32;

}  // namespace

static_assert(sizeof(PIXELFORMATDESCRIPTOR) == 40, "the system checks the size it is told");

PIXELFORMATDESCRIPTOR MapPixelFormat() noexcept {
    PIXELFORMATDESCRIPTOR format{};
    format.nSize = sizeof format;
    format.nVersion = 1;
    format.dwFlags = kDoubleBuffer | kDrawToWindow | kSupportOpenGl | kGenericAccelerated;
    format.iPixelType = kTypeRgba;
    format.cColorBits = kBits;
    // Deliberate: nothing accumulates, yet the buffer is part of what is asked for; another request
    // may be answered with another format.
    format.cAccumBits = kBits;
    format.cDepthBits = kBits;
    format.iLayerType = kMainPlane;
    return format;
}
