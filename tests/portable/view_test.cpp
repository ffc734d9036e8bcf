// The camera: what it shows where, what the pointer hits, how drags, zooms and flights move it, and
// how finely it is drawn.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "globe/city_labels.h"
#include "math/angles.h"
#include "render/sphere.h"
#include "support/table.h"
#include "window/flight_path.h"
#include "window/globe_pick.h"
#include "window/level_of_detail.h"
#include "window/map_settings.h"
#include "window/view_control.h"

namespace {

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

class ViewTest : public testing::Test {
protected:
    ViewTest() {
        globe_.radius = kPlanetRadius;
        scene_.width = 800;
        scene_.height = 600;
        ApplyView(view_, scene_);
    }

    MeshDetail detail_;
    CSphere globe_{detail_};
    CScene scene_;
    ViewState view_;
};

TEST_F(ViewTest, ProjectsToTheSamePixelsAsGluWhateverTheCamerasRotation) {
    scene_.position = {0.5F, -0.25F, -12.0F};
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

TEST_F(ViewTest, MeasuresTheEdgeThatTheEyeSeesAndEndsForEveryInput) {
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
    for (const float z : {float(kNan), float(kInfinity), -float(kInfinity), 0.0F, 5.0F, -12.0F}) {
        for (const std::int32_t height : {0, 1, std::numeric_limits<std::int32_t>::max()}) {
            scene_.position.z = z;
            scene_.height = height;
            const GlobeMeasure measure = scene_.MeasureGlobe(globe_);
            EXPECT_TRUE(measure.longitudeSpan >= 0 && measure.longitudeSpan <= 180);
        }
    }
    scene_.position.z = static_cast<float>(kNan);
    EXPECT_EQ(scene_.MeasureGlobe(globe_).diameter, 0) << "no number is no size";
    EXPECT_EQ(scene_.MeasureGlobe(globe_).longitudeSpan, 180) << "nothing grew: stopped at once";
}

TEST_F(ViewTest, PickingAndProjectingMeetAtEverySizeZoomAndAngle) {
    // Width, height, tilt, spin, distance.
    const double views[][5] = {{1920, 1080, 95, 200, -4.1},    {300, 900, 271, 359, -28.5},
                               {1, 1, 10, 10, -12.2},          {8192, 4096, 0, 0, -4.1},
                               {65535, 65535, 90, 270, -12.2}, {1, 65535, 180, 1, -6.0}};
    for (const auto& [width, height, tilt, spin, distance] : views) {
        scene_.width = static_cast<std::int32_t>(width);
        scene_.height = static_cast<std::int32_t>(height);
        scene_.position.z = static_cast<float>(distance);
        scene_.rotation = {tilt, spin, 0.0};
        for (const double across : {0.45, 0.5, 0.55}) {
            const auto hit = PickGlobe(scene_, globe_, width * across, height * 0.5, true);
            ASSERT_TRUE(hit.has_value()) << width << "x" << height;
            CVector4 turned = *hit;
            scene_.TransformPoint(turned, 0, 1);
            const CVector4 window = scene_.ProjectToWindow(turned);
            EXPECT_NEAR(window.x, width * across, 1e-6 * width);
            EXPECT_NEAR(window.y, height * 0.5, 1e-6 * height);
            EXPECT_LT(window.z, scene_.ProjectToWindow({}).z) << "the far side was hit";
            scene_.TransformPoint(turned, 0, -1);
            EXPECT_LT(std::hypot(turned.x - hit->x, turned.y - hit->y, turned.z - hit->z), 1e-12);
        }
    }
}

TEST_F(ViewTest, APixelComesBackFromTheGlobeAsThatPixel) {
    CGeoPoint pointed;
    for (const double tilt : {0.0, 40.0, 200.0}) {
        scene_.rotation = {tilt, 123.4, 0.0};
        for (std::int32_t x = 250; x <= 550; ++x) {
            const std::int32_t y = x * 7 % 101 + 250;
            ASSERT_TRUE(RepickAt(pointed, scene_, globe_, x, y));
            ASSERT_EQ(SnapToPixel(pointed.windowPoint.x), x) << tilt;
            ASSERT_EQ(SnapToPixel(pointed.windowPoint.y), y) << tilt;
        }
    }
    EXPECT_EQ(SnapToPixel(2.999998), 2.999998) << "between two pixels";
    EXPECT_EQ(SnapToPixel(-3.0000005), -3.0);
}

TEST_F(ViewTest, ThereIsNothingToPickFarOutsideOrWithoutAHeight) {
    for (const double far : {1e308, -1e308, kInfinity, kNan}) {
        EXPECT_FALSE(PickGlobe(scene_, globe_, far, far, true)) << far;
    }
    for (const auto& [width, height] : {std::pair{0, 0}, {800, 0}, {0, 600}, {65535, 0}}) {
        scene_.width = width;
        scene_.height = height;
        EXPECT_FALSE(PickGlobe(scene_, globe_, 0.0, 0.0, true)) << width << "x" << height;
    }
}

TEST(DragView, KeepsTheGrabbedPointUnderThePointer) {
    for (const Row& row : Table("drag_view")) {
        const DragAnchor press{{row.Real(0), row.Real(1)}, row.Real(2), row.Real(3)};
        const ViewAngles view = DragView(press, row.Real(4), row.Real(5));
        EXPECT_NEAR(view.tilt, row.Real(6), 1e-9) << row.why;
        EXPECT_NEAR(view.spin, row.Real(7), 1e-9) << row.why;
    }
    EXPECT_EQ(WrapDegrees(725.0) + WrapDegrees(360.0), 365.0) << "corrected only once";
}

TEST(Zoom, StopsAtItsLimitsWhateverTheWayThere) {
    EXPECT_EQ(ZoomByWheel(-12.2F, 1000), kNearestDistance);
    EXPECT_EQ(ZoomByWheel(-12.2F, -1000), kFarthestDistance);
    EXPECT_FLOAT_EQ(ZoomByWheel(-12.2F, 3), -11.9F);
    // Steps of a tenth drift in float: out and back in must not end beyond the limit.
    float distance = kNearestDistance;
    for (int i = 0; i < 260; ++i) distance = ZoomByKey(distance, false);
    EXPECT_EQ(distance, kFarthestDistance);
    for (int i = 0; i < 260; ++i) distance = ZoomByKey(distance, true);
    EXPECT_EQ(distance, kNearestDistance);
    const std::int32_t notches[][2] = {
        {-120, 1}, {119, 0}, {-360, 3}, {32767, -273}, {-32768, 273}};
    for (const auto& [delta, whole] : notches) EXPECT_EQ(WheelNotches(delta), whole) << delta;
}

TEST(FlightPath, TakesTheShortWayInEvenStepsToPlacesOnly) {
    FlightPath flight;
    for (const Row& row : Table("fly_to")) {
        ViewAngles before{row.Real(0), row.Real(1)};
        ASSERT_TRUE(flight.Start(before, {row.Real(2), row.Real(3)})) << row.why;
        int taken = 0;
        for (bool goesOn = true; goesOn; ++taken) {
            goesOn = flight.Step();
            const ViewAngles now = flight.Current();
            EXPECT_TRUE(now.spin >= 0.0 && now.spin < 360.0) << row.why;
            EXPECT_LT(std::hypot(std::remainder(now.tilt - before.tilt, 360.0),
                                 std::remainder(now.spin - before.spin, 360.0)),
                      1.35)
                << row.why;
            before = now;
        }
        EXPECT_EQ(taken, row.Int(4)) << row.why;
        EXPECT_NEAR(before.tilt, row.Real(5), 1e-9) << row.why;
        EXPECT_NEAR(before.spin, row.Real(6), 1e-9) << row.why;
    }
    for (const double none : {kNan, kInfinity, -kInfinity}) {
        EXPECT_FALSE(flight.Start({40.0, 0.0}, {none, 1.0})) << none;
        EXPECT_FALSE(flight.Start({40.0, 0.0}, {1.0, none})) << none;
    }
    EXPECT_TRUE(flight.Start({40.0, 0.0}, {1e308, -1e308})) << "many turns, but a place";
    while (flight.Step()) continue;
    EXPECT_TRUE(flight.Current().spin >= 0.0 && flight.Current().spin < 360.0);
}

TEST(LevelOfDetail, FactorIsKeptInItsRangeAndDecidesTheMeshButNoTextures) {
    LevelOfDetail detail;
    TextureLimits limits;
    limits.maxTextureSize = 4096;
    // Factor, as it is kept, slices, stacks, shells.
    const std::int32_t cases[][5] = {{-5, 50, 180, 120, 20},
                                     {200, 200, 180, 90, 5},
                                     {201, 201, 180, 90, 1},
                                     {9999, 800, 36, 30, 1}};
    for (const auto& [factor, kept, slices, stacks, shells] : cases) {
        detail.Apply(factor, limits);
        EXPECT_EQ(detail.Factor(), kept);
        EXPECT_EQ(detail.Mesh().sphereSlices, slices) << factor;
        EXPECT_EQ(detail.Mesh().sphereStacks, stacks) << factor;
        EXPECT_EQ(detail.Mesh().atmosphereLayers, shells) << factor;
        EXPECT_EQ(limits.textureLimit, 4096) << "textures keep their size at every detail";
    }
    EXPECT_TRUE(StepFactor(300, true) == 600 && StepFactor(800, true) == 800);
    EXPECT_TRUE(StepFactor(300, false) == 150 && StepFactor(50, false) == 50);
}

TEST(MapSettings, AreBroughtIntoTheirRangesAndWrittenBackAsRead) {
    MapSettings settings;
    const RawSettings cases[][2] = {{{9, 9, -5, 9}, {2, 1, 1, 8}},
                                    {{-9, -9, 0, -1}, {-3, -3, 0, 0}}};
    for (const auto& [read, kept] : cases) {
        const std::int32_t factor = StoreSettings(read, settings);
        EXPECT_EQ(factor, kept.lagFactor * 100);
        const RawSettings again = CurrentSettings(settings, factor + 99);
        EXPECT_TRUE(again.texScalerX == kept.texScalerX && again.texScalerY == kept.texScalerY);
        EXPECT_EQ(again.texCompression, kept.texCompression);
        EXPECT_EQ(again.lagFactor, kept.lagFactor) << "whole hundreds";
    }
}

TEST(LevelOfDetail, MeasuresThreeFramesAfterAWarmUp) {
    LevelOfDetail detail;
    const auto expect = [&detail](TuneOutcome outcome, std::uint32_t ms, const char* why,
                                  bool busy = false) {
        EXPECT_EQ(detail.AddFrame(busy, ms), outcome) << why;
    };
    expect(TuneOutcome::Idle, 500, "nothing is measured before it was asked for");
    detail.StartMeasuring();
    expect(TuneOutcome::AnotherFrame, 5000, "the warm-up frame does not count");
    expect(TuneOutcome::AnotherFrame, 100, "first");
    expect(TuneOutcome::AnotherFrame, 0, "too short to measure: not counted");
    expect(TuneOutcome::AnotherFrame, 100, "second");
    expect(TuneOutcome::Idle, 100, "third: 10 frames a second are enough");
    EXPECT_EQ(detail.Factor(), 100);
    expect(TuneOutcome::Idle, 5000, "finished");
    detail.StartMeasuring();
    for (int frame = 0; frame < 3; ++frame) expect(TuneOutcome::AnotherFrame, 101, "slow");
    expect(TuneOutcome::Coarser, 101, "9 frames a second are too few");
    EXPECT_EQ(detail.Factor(), 200);
    detail.StartMeasuring();
    expect(TuneOutcome::AnotherFrame, 50, "warm-up");
    expect(TuneOutcome::Idle, 50, "a load under way gives it up", true);
    expect(TuneOutcome::Idle, 50, "it must not go on after the load");
}

}  // namespace
