#pragma once

/// Whether the current OpenGL implementation supports some optional features. All flags are false
/// before the first detection.
struct ExtensionFlags {
    bool hasSeparateSpecularColor = false;
    bool hasMultitexture = false;
    bool hasTextureCompression = false;
    bool hasTextureEdgeClamp = false;
};

/// Sets the flags from an extension string. A null string leaves the flags unchanged.
/// Deliberate: this is a plain substring search, so a longer extension name that contains one of
/// the four names counts as found.
void DetectExtensionFlags(const char* extensions, ExtensionFlags& flags) noexcept;

/// Whether the GL_RENDERER string `renderer` names Windows' generic software renderer.
bool IsGenericRenderer(const char* renderer) noexcept;

/// Copies `text` to `field`, cut at 255 characters and terminated. A null `text` leaves the field
/// unchanged.
void CopyGlString(const char* text, char (&field)[256]) noexcept;
