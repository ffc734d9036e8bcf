#pragma once

/// Which optional features the current OpenGL has; all false until the first detection.
struct ExtensionFlags {
    bool hasSeparateSpecularColor = false;
    bool hasMultitexture = false;
    bool hasTextureCompression = false;
    bool hasTextureEdgeClamp = false;
};

/// Sets the flags from an extension string; null leaves them as they are.
/// Deliberate: a plain substring search, so a longer extension name that begins with one of the
/// four counts as found.
void DetectExtensionFlags(const char* extensions, ExtensionFlags& flags) noexcept;

/// Whether `renderer` is the operating system's generic software renderer.
bool IsGenericRenderer(const char* renderer) noexcept;

/// Copies `text` into a 256-character field, cut at 255 and terminated; null leaves it unchanged.
void CopyGlString(const char* text, char (&field)[256]) noexcept;
