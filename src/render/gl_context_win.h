#pragma once

#include <cstdint>

#include "base/windows_types.h"
#include "render/extension_flags.h"

/// Addresses of OpenGL functions that OpenGL 1.1 does not contain. An address is null until a
/// detection finds the function.
/// Deliberate: no code calls these functions, but the detection looks up their addresses.
struct ExtensionEntryPoints {
    PROC wglGetExtensionsStringARB = nullptr;
    PROC glActiveTextureARB = nullptr;    ///< looked up only with multitexture
    PROC glMultiTexCoord2fARB = nullptr;  ///< looked up only with multitexture
};

/// The rendering context that all map windows share. Window thread.
class CGLContext {
public:
    /// @param extensions    out: set by every detection; must outlive the context
    /// @param lastSysError  out: GetLastError() after a failed creation; must outlive the context
    CGLContext(ExtensionFlags& extensions, std::uint32_t& lastSysError) noexcept
        : extensions_(extensions), lastSysError_(lastSysError) {}
    CGLContext(const CGLContext&) = delete;
    CGLContext& operator=(const CGLContext&) = delete;
    ~CGLContext() { Destroy(); }

    /// Deletes the context, creates a new context for `dc` and makes the new context current. With
    /// a null `dc`, only deletes the context.
    /// @return HORIVO_OK or one of the three OpenGL set-up codes. After HORIVO_CONTEXT_FAILED a
    ///         context that was created but could not be made current exists until Destroy
    std::uint32_t Create(HDC dc);
    /// Makes the context current on `dc` and detects the extensions again. Create must have run for
    /// the window of `dc`, because Create sets the pixel format of the window.
    /// @return false when there is no context or when wglMakeCurrent fails
    bool MakeCurrent(HDC dc);
    /// Deletes the context, if it exists. The thread then has no current context, even when the
    /// context of another part of the program was current before (see ForeignContextGuard).
    void Destroy() noexcept;

    HGLRC GetHandle() const noexcept { return hglrc_; }
    /// Strings of the OpenGL implementation, at most 255 characters. Empty until Create has found a
    /// renderer other than Windows' generic renderer.
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
