#include "render/extension_flags.h"

#include <cstring>

namespace {

constexpr char kGenericRendererPrefix[] = "GDI ";  // ends with a space: "GDIxyz" must not match

}  // namespace

void DetectExtensionFlags(const char* extensions, ExtensionFlags& flags) noexcept {
    if (extensions == nullptr) return;
    const auto contains = [extensions](const char* name) {
        return std::strstr(extensions, name) != nullptr;
    };
    flags.hasSeparateSpecularColor = contains("GL_EXT_separate_specular_color");
    flags.hasMultitexture = contains("GL_ARB_multitexture");
    flags.hasTextureCompression = contains("GL_ARB_texture_compression");
    flags.hasTextureEdgeClamp = contains("GL_EXT_texture_edge_clamp");
}

bool IsGenericRenderer(const char* renderer) noexcept {
    return renderer != nullptr &&
           std::strncmp(renderer, kGenericRendererPrefix, sizeof kGenericRendererPrefix - 1) == 0;
}

void CopyGlString(const char* text, char (&field)[256]) noexcept {
    if (text == nullptr) return;
    std::strncpy(field, text, sizeof field - 1);
    field[sizeof field - 1] = '\0';
}
