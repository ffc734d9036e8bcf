#include "window/view_control.h"

#include <gtest/gtest.h>

#include <limits>

#include "globe/geographic.h"
#include "render/sphere.h"
#include "support/table.h"

namespace {

class ViewControl : public testing::Test {
protected:
    ViewControl() {
        sphere_.radius = kPlanetRadius;
        scene_.width = 800;
        scene_.height = 600;
        ApplyView(view_, scene_);
    }

    MeshDetail detail_;
    CSphere sphere_{detail_};
    CScene scene_;
    ViewState view_;
};

TEST_F(ViewControl, PickingAndProjectingMeetAtEverySizeZoomAndAngle) {
    const struct {
        int width, height;
        double tilt, spin;
        float distance;
    } views[] = {
        {1920, 1080, 95, 200, -4.1F}, {300, 900, 271, 359, -28.5F}, {1, 1, 10, 10, -12.2F}};
    for (const auto& v : views) {
        scene_.width = v.width;
        scene_.height = v.height;
        view_.viewTilt = v.tilt;
        view_.viewSpin = v.spin;
        view_.cameraDistance = v.distance;
        ApplyView(view_, scene_);
        for (const double across : {0.45, 0.5, 0.55}) {
            const auto hit = PickGlobe(scene_, sphere_, v.width * across, v.height * 0.5, true);
            ASSERT_TRUE(hit.has_value()) << v.width << "x" << v.height;
            CVector4 turned = *hit;
            scene_.TransformPoint(turned, 0, 1);
            const CVector4 window = scene_.ProjectToWindow(turned);
            EXPECT_NEAR(window.x, v.width * across, 1e-6 * v.width);
            EXPECT_NEAR(window.y, v.height * 0.5, 1e-6 * v.height);
        }
    }
}

TEST(DragView, KeepsTheGrabbedPointUnderThePointer) {
    for (const Row& row : Table("drag_view")) {
        const DragAnchor press{{row.Real(0), row.Real(1)}, row.Real(2), row.Real(3)};
        const ViewAngles view = DragView(press, row.Real(4), row.Real(5));
        EXPECT_NEAR(view.tilt, row.Real(6), 1e-9) << row.why;
        EXPECT_NEAR(view.spin, row.Real(7), 1e-9) << row.why;
    }
}

TEST(Zoom, StopsAtItsLimitsWhateverTheWayThere) {
    EXPECT_EQ(ZoomByWheel(-12.2F, 1000), kNearestDistance);
    EXPECT_EQ(ZoomByWheel(-12.2F, -1000), kFarthestDistance);
    EXPECT_FLOAT_EQ(ZoomByWheel(-12.2F, 3), -11.9F);
    // Steps of a tenth drift in float: out and back in must not end beyond the limit.
    for (int steps = 1; steps <= 260; ++steps) {
        float distance = kNearestDistance;
        for (int i = 0; i < steps; ++i) distance = ZoomByKey(distance, false);
        EXPECT_GE(distance, kFarthestDistance) << steps;
        for (int i = 0; i < steps + 2; ++i) distance = ZoomByKey(distance, true);
        EXPECT_EQ(distance, kNearestDistance) << steps;
    }
    for (const Row& row : Table("wheel"))
        EXPECT_EQ(WheelNotches(row.Int(0)), row.Int(1)) << row.why;
}

}  // namespace
