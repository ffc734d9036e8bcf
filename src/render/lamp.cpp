#include "render/lamp.h"

#include <cmath>

namespace {

/// Direction of a lamp that is at the origin itself. From the origin, no direction points to the
/// origin, so a direction must be chosen. Any finite direction is suitable: all normals of the
/// globe point away from the origin, so such a lamp adds no light. A NaN would make the picture
/// black or white with some drivers.
constexpr float kDirectionFromOrigin[4] = {0.0F, 0.0F, -1.0F, 1.0F};

}  // namespace

void CLamp::Init() {
    CGLObject::Init();
    glLightfv(lightId, GL_AMBIENT, ambient);
    glLightfv(lightId, GL_DIFFUSE, diffuse);
    glLightfv(lightId, GL_SPECULAR, specular);
    glLighti(lightId, GL_SPOT_EXPONENT, spotExponent);
    glLighti(lightId, GL_SPOT_CUTOFF, spotCutoff);
    glEnable(lightId);
}

void CLamp::Draw() {
    const auto x = static_cast<float>(lightPosition[0]);
    const auto y = static_cast<float>(lightPosition[1]);
    const auto z = static_cast<float>(lightPosition[2]);
    const float place[4] = {x, y, z, 1.0F};
    const float distance = std::sqrt(x * x + y * y + z * z);
    const float k = 1.0F / distance;
    const float inward[4] = {-x * k, -y * k, -z * k, 1.0F};

    CGLObject::Draw();
    glLightfv(lightId, GL_POSITION, place);
    glLightfv(lightId, GL_SPOT_DIRECTION, distance == 0.0F ? kDirectionFromOrigin : inward);
}
