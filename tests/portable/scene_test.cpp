#include "render/scene.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "base/angles.h"
#include "render/sphere.h"

namespace {

class CSceneTest : public testing::Test {
protected:
    CSceneTest() {
        scene_.position = {0.5F, -0.25F, -12.0F};
        scene_.width = 800;
        scene_.height = 600;
    }
    CScene scene_;
    MeshDetail detail_;
    CSphere globe_{detail_};
};

TEST_F(CSceneTest, ProjectsToTheSamePixelsAsGluWhateverTheCamerasRotation) {
    std::array<double, 16> model;
    std::array<double, 16> projection;
    scene_.GetModelMatrix(model, false);
    scene_.GetProjectionMatrix(projection);
    const GLint viewport[4] = {0, 0, scene_.width, scene_.height};
    scene_.rotation = {40.0, 80.0, 0.0};
    for (const double x : {-2.0, 0.0, 1.5}) {
        for (const double z : {-3.0, 0.0, 2.5}) {
            double window[3];
            gluProject(x, 0.75, z, model.data(), projection.data(), viewport, &window[0],
                       &window[1], &window[2]);
            const CVector4 place = scene_.ProjectToWindow({x, 0.75, z, 5.0});
            EXPECT_NEAR(place.x, window[0], 1e-9);
            EXPECT_NEAR(place.y, window[1], 1e-9);
            EXPECT_NEAR(place.z, 1.0 + 29.0 * window[2], 1e-9) << "from near to far plane";
        }
    }
}

TEST_F(CSceneTest, MeasuresTheEdgeThatTheEyeSees) {
    globe_.radius = 3.0F;
    scene_.position = {};
    for (const float distance : {4.1F, 6.0F, 12.0F, 28.5F}) {
        scene_.position.z = -distance;
        const double d = static_cast<double>(distance);
        // The line of sight touches the globe where the radius stands upright on it.
        const double touchDeg = RadiansToDegrees(std::acos(3.0 / d));
        const double diameter = 1800.0 / std::tan(kPi / 12.0) / std::sqrt(d * d - 9.0);
        const GlobeMeasure measure = scene_.MeasureGlobe(globe_);
        EXPECT_NEAR(measure.longitudeSpan, 2.0 * touchDeg, 2.01) << d;
        EXPECT_NEAR(measure.diameter, diameter, 3.0 + diameter * 1e-3) << d;
        EXPECT_NEAR(measure.limbDepth, 9.0 / d - d, 3.0 * kPi / 180.0) << d;
    }
}

TEST_F(CSceneTest, MeasuringEndsForEveryInput) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float infinity = std::numeric_limits<float>::infinity();
    for (const float z : {nan, infinity, -infinity, 0.0F, 1e-30F, 5.0F, -12.0F}) {
        for (const float radius : {nan, infinity, 0.0F, -3.0F, 3.0F}) {
            for (const std::int32_t height : {0, 1, std::numeric_limits<std::int32_t>::max()}) {
                scene_.position.z = z;
                scene_.height = height;
                globe_.radius = radius;
                const GlobeMeasure measure = scene_.MeasureGlobe(globe_);
                EXPECT_TRUE(measure.longitudeSpan >= 0 && measure.longitudeSpan <= 180);
            }
        }
    }
    scene_.position.z = nan;
    EXPECT_EQ(scene_.MeasureGlobe(globe_).diameter, 0) << "no number is no size";
    EXPECT_EQ(scene_.MeasureGlobe(globe_).longitudeSpan, 180) << "nothing grew: stopped at once";
}

}  // namespace
