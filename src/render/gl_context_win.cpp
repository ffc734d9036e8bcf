#include "render/gl_context_win.h"

#include "base/gl.h"
#include "horivo_map.h"

namespace {

constexpr BYTE kBits = 32;  // of a pixel's colour, of its accumulated colour and of its depth

/// What the map window asks of OpenGL: true colour with depth, double-buffered, in a window; the
/// driver may answer with less.
PIXELFORMATDESCRIPTOR MapPixelFormat() noexcept {
    PIXELFORMATDESCRIPTOR format{};
    format.nSize = sizeof format;
    format.nVersion = 1;
    format.dwFlags =
        PFD_DOUBLEBUFFER | PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_GENERIC_ACCELERATED;
    format.iPixelType = PFD_TYPE_RGBA;
    format.cColorBits = kBits;
    // Deliberate: nothing accumulates, yet the buffer is part of what is asked for; another request
    // may be answered with another format.
    format.cAccumBits = kBits;
    format.cDepthBits = kBits;
    format.iLayerType = PFD_MAIN_PLANE;
    return format;
}

/// Gives the window behind `dc` the pixel format that comes nearest to `wanted`. A window keeps its
/// first format for life; asking again for the same one succeeds.
/// @param lastSysError  gets GetLastError() of a failure, else untouched
/// @return HORIVO_OK, HORIVO_NO_PIXEL_FORMAT or HORIVO_PIXEL_FORMAT_REFUSED
std::uint32_t SetMapPixelFormat(HDC dc, const PIXELFORMATDESCRIPTOR& wanted,
                                std::uint32_t& lastSysError) noexcept {
    const int format = ChoosePixelFormat(dc, &wanted);
    if (format == 0) {
        lastSysError = GetLastError();
        return HORIVO_NO_PIXEL_FORMAT;
    }
    if (!SetPixelFormat(dc, format, &wanted)) {
        lastSysError = GetLastError();
        return HORIVO_PIXEL_FORMAT_REFUSED;
    }
    return HORIVO_OK;
}

const char* GlString(GLenum name) noexcept {
    return reinterpret_cast<const char*>(glGetString(name));
}

}  // namespace

std::uint32_t CGLContext::Create(HDC dc) {
    Destroy();
    if (dc == nullptr) return HORIVO_OK;
    pfd_ = MapPixelFormat();
    const std::uint32_t status = SetMapPixelFormat(dc, pfd_, lastSysError_);
    if (status != HORIVO_OK) return status;
    // No test of the result: without a context the next step fails, and the error is still there.
    hglrc_ = wglCreateContext(dc);
    if (!MakeCurrent(dc)) {
        lastSysError_ = GetLastError();
        return HORIVO_CONTEXT_FAILED;
    }
    const char* renderer = GlString(GL_RENDERER);
    // Deliberate: the generic renderer is used like any other, but the three texts stay as they
    // were, so the information lines have nothing to show for it.
    if (renderer == nullptr || IsGenericRenderer(renderer)) return HORIVO_OK;
    CopyGlString(renderer, renderer_);
    CopyGlString(GlString(GL_VERSION), version_);
    CopyGlString(GlString(GL_VENDOR), vendor_);
    DetectExtensions();
    return HORIVO_OK;
}

bool CGLContext::MakeCurrent(HDC dc) {
    if (hglrc_ == nullptr || !wglMakeCurrent(dc, hglrc_)) return false;
    DetectExtensions();
    return true;
}

void CGLContext::Destroy() noexcept {
    if (hglrc_ == nullptr) return;
    wglMakeCurrent(nullptr, nullptr);
    wglDeleteContext(hglrc_);
    hglrc_ = nullptr;
}

void CGLContext::DetectExtensions() noexcept {
    entryPoints_.wglGetExtensionsStringARB = wglGetProcAddress("wglGetExtensionsStringARB");
    const char* extensions = GlString(GL_EXTENSIONS);
    if (extensions == nullptr) return;
    DetectExtensionFlags(extensions, extensions_);
    if (!extensions_.hasMultitexture) return;
    entryPoints_.glActiveTextureARB = wglGetProcAddress("glActiveTextureARB");
    entryPoints_.glMultiTexCoord2fARB = wglGetProcAddress("glMultiTexCoord2fARB");
}
