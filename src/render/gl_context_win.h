#pragma once

#include <cstdint>

#include "base/windows_types.h"
#include "render/extension_flags.h"

/// Addresses of OpenGL functions beyond 1.1; null until a detection finds them.
/// Deliberate: they are stored and never called; looking them up is part of the detection.
struct ExtensionEntryPoints {
    PROC wglGetExtensionsStringARB = nullptr;
    PROC glActiveTextureARB = nullptr;    ///< asked for only with multitexture
    PROC glMultiTexCoord2fARB = nullptr;  ///< asked for only with multitexture
};

/// The one rendering context of the map, which serves all map windows in turn. Window thread.
class CGLContext {
public:
    /// @param extensions    flags written by every detection; must outlive the context
    /// @param lastSysError  gets GetLastError() of a failed creation; must outlive the context
    CGLContext(ExtensionFlags& extensions, std::uint32_t& lastSysError) noexcept
        : extensions_(extensions), lastSysError_(lastSysError) {}
    CGLContext(const CGLContext&) = delete;
    CGLContext& operator=(const CGLContext&) = delete;
    ~CGLContext() { Destroy(); }

    /// Replaces the context by one for `dc`, current afterwards. @return HORIVO_OK or one of the
    /// three OpenGL set-up codes. A null `dc` only destroys. After HORIVO_CONTEXT_FAILED a handle
    /// that was made stays until Destroy.
    std::uint32_t Create(HDC dc);
    /// Makes the context current on `dc` and detects the extensions again. `dc` must belong to a
    /// window for which Create has run, because only that gives it the context's pixel format.
    /// @return false without a context or when GL refuses
    bool MakeCurrent(HDC dc);
    /// Deletes the context, if any; the thread then has no current context, not even another
    /// program part's (see ForeignContextGuard).
    void Destroy() noexcept;

    HGLRC GetHandle() const noexcept { return hglrc_; }
    /// Text of the GL in use, at most 255 characters; empty for the system's generic renderer.
    const char* GetVendor() const noexcept { return vendor_; }
    const char* GetRenderer() const noexcept { return renderer_; }
    const char* GetVersion() const noexcept { return version_; }

private:
    void DetectExtensions() noexcept;

    ExtensionFlags& extensions_;
    std::uint32_t& lastSysError_;
    PIXELFORMATDESCRIPTOR pfd_ = {};
    HGLRC hglrc_ = nullptr;
    char vendor_[256] = {};
    char renderer_[256] = {};
    char version_[256] = {};
    ExtensionEntryPoints entryPoints_;
};
