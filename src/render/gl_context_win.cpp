#include "render/gl_context_win.h"

#include "base/gl.h"
#include "horivo_map.h"

namespace {

/// Bits per pixel that the map requests for the colour, the accumulation and the depth buffer each.
constexpr BYTE kBits = 32;

/// Returns the pixel format that the map requests: true colour, with a depth buffer and double
/// buffering, for drawing into a window. The driver may choose a format that offers less.
PIXELFORMATDESCRIPTOR MapPixelFormat() noexcept {
    PIXELFORMATDESCRIPTOR format{};
    format.nSize = sizeof format;
    format.nVersion = 1;
    format.dwFlags =
        PFD_DOUBLEBUFFER | PFD_DRAW_TO_WINDOW | PFD_SUPPORT_OPENGL | PFD_GENERIC_ACCELERATED;
    format.iPixelType = PFD_TYPE_RGBA;
    format.cColorBits = kBits;
    // Deliberate: the map requests an accumulation buffer but does not use it. Without this request
    // the driver may choose another format.
    format.cAccumBits = kBits;
    format.cDepthBits = kBits;
    format.iLayerType = PFD_MAIN_PLANE;
    return format;
}

/// Sets the pixel format that is nearest to `wanted` for the window of `dc`. A window keeps its
/// first format until the window is destroyed; setting the same format again succeeds.
/// @param lastSysError  out: GetLastError() after a failure, otherwise unchanged
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
    // The result is not checked here: without a context MakeCurrent fails, and GetLastError() then
    // returns the error of wglCreateContext.
    hglrc_ = wglCreateContext(dc);
    if (!MakeCurrent(dc)) {
        lastSysError_ = GetLastError();
        return HORIVO_CONTEXT_FAILED;
    }
    const char* renderer = GlString(GL_RENDERER);
    // Deliberate: the map uses the generic renderer like any other renderer, but does not store the
    // names of its renderer, version and vendor. The information lines that show these names then
    // stay empty.
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
