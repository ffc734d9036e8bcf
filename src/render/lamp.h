#pragma once

#include "base/gl.h"
#include "render/gl_object.h"

/// A positional spot light that points at the origin of its frame. A lamp at the origin itself
/// points along -Z.
class CLamp : public CGLObject {
public:
    /// @param light  GL_LIGHT0 + n
    explicit CLamp(GLenum light) noexcept : lightId(light) {}

    void Init() override;
    void Draw() override;

    GLenum lightId;
    GLint spotExponent = 16;  ///< how much darker the spot becomes towards its edge; 0: not at all
    GLint spotCutoff = 30;    ///< angle from the axis of the spot to its edge, degrees
    // Colours: red, green, blue, alpha. The default is turquoise.
    float ambient[4] = {0.0F, 0.0F, 0.0F, 1.0F};
    float diffuse[4] = {0.3F, 1.0F, 0.9F, 1.0F};
    float specular[4] = {0.3F, 1.0F, 0.9F, 1.0F};
    double lightPosition[4] =
        {};  ///< x, y, z in the frame of the lamp; the fourth value is not read
};
