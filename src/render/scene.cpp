#include "render/scene.h"

#include <cmath>
#include <limits>

#include "base/gl.h"
#include "math/angles.h"
#include "math/geographic.h"
#include "render/sphere.h"

namespace {

// These two values of the Sun's light have no visible effect: the light is directional, and
// CPlanet::PlaceSunLight points the spot along the rays.
constexpr GLint kSunSpotExponent = 0;
constexpr GLint kSunSpotCutoffDeg = 60;
constexpr float kAmbientLight[4] = {0.25F, 0.25F, 0.3F, 1.0F};  // lights the night side; bluish

/// Longitude where the search for the limb starts. A viewer at any distance sees less than 90
/// degrees to each side.
constexpr std::int32_t kLimbSearchStartDeg = 90;

/// Clears the picture and makes the modelview matrix the identity, the frame of the camera.
void BeginPicture() {
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

double Aspect(std::int32_t width, std::int32_t height) noexcept {
    return static_cast<double>(width) / static_cast<double>(height);
}

/// Returns twice the distance of `edgeX` from the middle column in whole pixels, or 0 when the
/// result does not fit into 32 bits.
std::int32_t DiameterOnScreen(double edgeX, std::int32_t width) noexcept {
    const std::int32_t middle = width / 2;
    const double diameter = 2.0 * (std::trunc(edgeX) - middle);
    constexpr double kLargest = std::numeric_limits<std::int32_t>::max();
    return std::abs(diameter) <= kLargest ? static_cast<std::int32_t>(diameter) : 0;
}

}  // namespace

void CScene::Init() {
    glShadeModel(GL_SMOOTH);
    glEnable(GL_DEPTH_TEST);
    glEnable(GL_CULL_FACE);
    glLighti(GL_LIGHT0, GL_SPOT_EXPONENT, kSunSpotExponent);
    glLighti(GL_LIGHT0, GL_SPOT_CUTOFF, kSunSpotCutoffDeg);
    glLightModelfv(GL_LIGHT_MODEL_AMBIENT, kAmbientLight);
    glEnable(GL_LIGHTING);
    glEnable(GL_LIGHT0);
    glShadeModel(GL_SMOOTH);
    CGLObject::Init();
}

void CScene::Compile() {
    BeginPicture();
    CGLObject::Compile();
}

void CScene::Draw() {
    BeginPicture();
    CGLObject::Draw();
}

void CScene::Resize(std::int32_t newWidth, std::int32_t newHeight) {
    const double aspect = Aspect(newWidth, newHeight);
    width = newWidth;
    height = newHeight;
    glViewport(0, 0, width, height);
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(fovY, aspect, zNear, zFar);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
}

// Computes the same matrix as gluPerspective. `right` and `top` are half the width and half the
// height of the picture on the near plane.
void CScene::GetProjectionMatrix(std::array<double, 16>& out) const noexcept {
    const double top = std::tan(DegToRad(fovY / 2.0)) * zNear;
    const double right = Aspect(width, height) * top;
    out.fill(0.0);
    out[0] = zNear / right;
    out[5] = zNear / top;
    out[10] = -(zFar + zNear) / (zFar - zNear);
    out[11] = -1.0;
    out[14] = -2.0 * zFar * zNear / (zFar - zNear);
}

CVector4 CScene::ProjectToNormalized(const CVector4& point) const noexcept {
    CVector4 moved;
    moved.FromPoint(point);
    TransformPoint(moved, 1, 0);
    std::array<double, 16> projection;
    GetProjectionMatrix(projection);
    CVector4 clip;
    for (int row = 0; row < 4; ++row) {
        const double* column = projection.data() + row;
        clip[row] = column[0] * moved.x + column[4] * moved.y + column[8] * moved.z + column[12];
    }
    return {clip.x / clip.w, clip.y / clip.w, clip.z / clip.w, 1.0};
}

CVector4 CScene::ProjectToWindow(const CVector4& point) const noexcept {
    const CVector4 n = ProjectToNormalized(point);
    const double halfWidth = width / 2.0;
    const double halfHeight = height / 2.0;
    return {halfWidth * n.x + halfWidth, halfHeight * n.y + halfHeight,
            (zFar - zNear) / 2.0 * n.z + (zNear + zFar) / 2.0, 1.0};
}

GlobeMeasure CScene::MeasureGlobe(const CSphere& sphere) const noexcept {
    // Walk along the equator from longitude 90 towards the viewer: x on the screen grows up to the
    // limb and decreases after the limb.
    const auto radius = static_cast<double>(sphere.radius);
    std::int32_t longitude = kLimbSearchStartDeg;
    double previousX = 0.0;
    double edgeX = 0.0;
    CVector4 edge;
    while (longitude >= 1) {
        edge = LatLonToPoint(0.0, longitude, radius);
        edgeX = ProjectToWindow(edge).x;
        if (!(edgeX > previousX)) break;  // also stops at a NaN
        previousX = edgeX;
        --longitude;
    }
    TransformPoint(edge, 1, 0);
    return {DiameterOnScreen(edgeX, width), 2 * longitude, edge.z};
}
