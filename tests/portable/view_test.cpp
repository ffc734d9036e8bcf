// The camera: what it shows where, what the pointer hits, how drags, zooms and flights move it, and
// how finely it is drawn.
#include <gmock/gmock.h>

#include <cmath>
#include <limits>

#include "globe/city_labels.h"
#include "math/angles.h"
#include "render/sphere.h"
#include "window/flight_path.h"
#include "window/globe_pick.h"
#include "window/level_of_detail.h"
#include "window/map_settings.h"
#include "window/pointer_state.h"
#include "window/view_control.h"

namespace {

using testing::FieldsAre;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
constexpr double kInfinity = std::numeric_limits<double>::infinity();

struct ViewTest : testing::Test {
    ViewTest() {
        globe.radius = kPlanetRadius;
        ApplyView({}, scene);
        Resize(800, 600);
    }
    void Resize(double width, double height) {
        scene.width = static_cast<std::int32_t>(width);
        scene.height = static_cast<std::int32_t>(height);
    }

    MeshDetail detail;
    CSphere globe{detail};
    CScene scene;
};

TEST_F(ViewTest, ProjectsToTheSamePixelsAsGluWhateverTheCamerasRotation) {
    scene.position = {0.5F, -0.25F, -12.0F};
    std::array<double, 16> model;
    std::array<double, 16> projection;
    scene.GetModelMatrix(model, false);
    scene.GetProjectionMatrix(projection);
    const GLint viewport[4] = {0, 0, 800, 600};
    scene.rotation = {40.0, 80.0, 0.0};
    double x = 0.0;
    double y = 0.0;
    double depth = 0.0;
    gluProject(1.5, 0.75, -3.0, model.data(), projection.data(), viewport, &x, &y, &depth);
    const CVector4 place = scene.ProjectToWindow({1.5, 0.75, -3.0, 5.0});
    EXPECT_LT(std::hypot(place.x - x, place.y - y, place.z - 1.0 - 29.0 * depth), 1e-9);
}

TEST_F(ViewTest, MeasuresTheEdgeThatTheEyeSeesAndEndsForEveryInput) {
    for (const float distance : {4.1F, 12.0F, 28.5F}) {
        scene.position.z = -distance;
        const double d = static_cast<double>(distance);
        // The line of sight touches the globe where the radius stands upright on it.
        const double touchDeg = RadiansToDegrees(std::acos(3.0 / d));
        const double diameter = 1800.0 / std::tan(kPi / 12.0) / std::sqrt(d * d - 9.0);
        const GlobeMeasure measure = scene.MeasureGlobe(globe);
        EXPECT_NEAR(measure.longitudeSpan, 2.0 * touchDeg, 2.01) << d;
        EXPECT_NEAR(measure.diameter, diameter, 3.0 + diameter * 1e-3) << d;
        EXPECT_NEAR(measure.limbDepth, 9.0 / d - d, 0.05) << d;
    }
    scene.height = 0;
    for (const float z : {-12.0F, 5.0F, static_cast<float>(kInfinity)}) {
        scene.position.z = z;
        EXPECT_GE(scene.MeasureGlobe(globe).longitudeSpan, 0) << z;
    }
    scene.position.z = static_cast<float>(kNan);
    EXPECT_EQ(scene.MeasureGlobe(globe).diameter, 0) << "no number is no size";
    EXPECT_EQ(scene.MeasureGlobe(globe).longitudeSpan, 180) << "nothing grew: stopped at once";
}

TEST_F(ViewTest, PickingAndProjectingMeetAtEverySizeZoomAndAngle) {
    // Width, height, tilt, spin, distance.
    const double views[][5] = {{1920, 1080, 95, 200, -4.1},    {300, 900, 271, 359, -28.5},
                               {1, 1, 10, 10, -12.2},          {8192, 4096, 0, 0, -4.1},
                               {65535, 65535, 90, 270, -12.2}, {1, 65535, 180, 1, -6.0}};
    for (const auto& [width, height, tilt, spin, distance] : views) {
        Resize(width, height);
        scene.position.z = static_cast<float>(distance);
        scene.rotation = {tilt, spin, 0.0};
        const auto hit = PickGlobe(scene, globe, width * 0.45, height * 0.5, true);
        ASSERT_TRUE(hit.has_value()) << width << "x" << height;
        CVector4 turned = *hit;
        scene.TransformPoint(turned, 0, 1);
        const CVector4 window = scene.ProjectToWindow(turned);
        EXPECT_LT(std::hypot(window.x / width - 0.45, window.y / height - 0.5), 1e-6);
        EXPECT_LT(window.z, scene.ProjectToWindow({}).z) << "the far side was hit";
    }
    for (const double far : {1e308, kInfinity, kNan})
        EXPECT_FALSE(PickGlobe(scene, globe, far, far, true)) << far;
    Resize(800, 0);
    EXPECT_FALSE(PickGlobe(scene, globe, 0.0, 0.0, true));
    Resize(800, 600);
    scene.position.z = -12.0F;
    CGeoPoint pointed;
    for (std::int32_t x = 250; x <= 550; ++x) {
        scene.rotation = {x % 3 * 80.0, 123.4, 0.0};
        ASSERT_TRUE(RepickAt(pointed, scene, globe, x, x * 7 % 101 + 250));
        ASSERT_EQ(SnapToPixel(pointed.windowPoint.x), x);
        ASSERT_EQ(SnapToPixel(pointed.windowPoint.y), x * 7 % 101 + 250);
    }
    EXPECT_EQ(SnapToPixel(2.999998), 2.999998) << "between two pixels";
    EXPECT_EQ(SnapToPixel(-3.0000005), -3.0);
}

TEST(Pointer, KnowsItsWindowWhatItPressedAndWhetherItMoved) {
    PointerState pointer;
    const char windows[] = {'A', 'B'};
    EXPECT_TRUE(pointer.Enter(&windows[0]));
    pointer.LeaveDestroyed(&windows[1]);
    EXPECT_FALSE(pointer.Enter(&windows[1])) << "it is still over the first";
    pointer.Press({3, 4});
    pointer.NoteDragTo({3, 4});
    EXPECT_FALSE(pointer.WasDragged()) << "a message without a movement";
    pointer.BeginDrag({}, LatLon());
    pointer.HoldPhoto({1, 2});
    pointer.ForgetPress();
    EXPECT_TRUE(!pointer.IsAnchored() && pointer.HeldPhoto() == PressedPhoto());
    // Tilt, spin, pressed latitude and longitude, latitude, longitude, tilt and spin after. Upside
    // down, from 90 to below 270 degrees, sideways turns round.
    const double drags[][8] = {{40, 10, 20, 30, 20, 35, 40, 15},  {40, 10, 20, 30, 25, 30, 35, 10},
                               {100, 10, 20, 30, 20, 35, 100, 5}, {269.9, 10, 0, 0, 0, 1, 269.9, 9},
                               {270, 10, 0, 0, 0, 1, 270, 11},    {359, 359, 3, 0, 0, 5, 2, 4}};
    for (const auto& d : drags) {
        pointer.BeginDrag({d[0], d[1]}, LatLon{d[2], d[3]});
        const ViewAngles view = pointer.DragTo({d[4], d[5]});
        EXPECT_LT(std::hypot(view.tilt - d[6], view.spin - d[7]), 1e-9) << view.tilt;
    }
    EXPECT_EQ(WrapDegrees(725.0) + WrapDegrees(360.0), 365.0) << "corrected only once";
}

TEST(Zoom, StopsAtItsLimitsWhateverTheWayThere) {
    EXPECT_EQ(ZoomByWheel(-12.2F, 1000), kNearestDistance);
    EXPECT_FLOAT_EQ(ZoomByWheel(-12.2F, 3), -11.9F);
    // Steps of a tenth drift in float: out and back in must not end beyond the limit.
    float distance = kNearestDistance;
    for (int i = 0; i < 260; ++i) distance = ZoomByKey(distance, false);
    EXPECT_EQ(distance, kFarthestDistance);
    for (int i = 0; i < 260; ++i) distance = ZoomByKey(distance, true);
    EXPECT_EQ(distance, kNearestDistance);
    EXPECT_TRUE(WheelNotches(119) == 0 && WheelNotches(-360) == 3 && WheelNotches(-32768) == 273);
}

TEST(FlightPath, TakesTheShortWayInEvenStepsToPlacesOnly) {
    FlightPath flight;
    // Tilt and spin before, place, steps, tilt and spin after: half a turn, across north, negative
    // latitude and longitude east, the same place still takes two steps, beyond a turn.
    const double cases[][7] = {{0, 0, 0, 180, 150, 0, 180},      {350, 0, 10, 0, 16, 10, 0},
                               {40, 0, -30, 209, 138, 330, 209}, {40, 20, 40, 20, 2, 40, 20},
                               {40, 0, 40, 730, 8, 40, 10},      {0, 359, 0, 1, 2, 0, 1}};
    for (const auto& [tilt, spin, latitude, longitude, steps, newTilt, newSpin] : cases) {
        ASSERT_TRUE(flight.Start({tilt, spin}, {latitude, longitude}));
        int taken = 1;
        while (flight.Step()) ++taken;
        const ViewAngles end = flight.Current();
        EXPECT_EQ(taken, steps) << longitude;
        EXPECT_LT(std::hypot(end.tilt - newTilt, end.spin - newSpin), 1e-9) << longitude;
    }
    EXPECT_FALSE(flight.Start({}, {kNan, 1.0}) || flight.Start({}, {1.0, kInfinity}));
    EXPECT_TRUE(flight.Start({40.0, 0.0}, {1e308, -1e308})) << "many turns, but a place";
}

TEST(LevelOfDetail, FactorIsKeptInItsRangeAndDecidesTheMeshButNoTextures) {
    LevelOfDetail detail;
    TextureLimits limits;
    limits.maxTextureSize = 4096;
    // Factor, as it is kept, slices, stacks, shells.
    const int cases[][5] = {{-5, 50, 180, 120, 20},   {200, 200, 180, 90, 5},
                            {100, 100, 180, 120, 10}, {50, 50, 180, 120, 20},
                            {201, 201, 180, 90, 1},   {9999, 800, 36, 30, 1}};
    for (const auto& [factor, kept, slices, stacks, shells] : cases) {
        detail.Apply(factor, limits);
        EXPECT_EQ(detail.Factor(), kept);
        EXPECT_THAT(detail.Mesh(), FieldsAre(slices, stacks, shells)) << factor;
        EXPECT_EQ(limits.textureLimit, 4096) << "textures keep their size";
    }
    EXPECT_TRUE(StepFactor(300, true) == 600 && StepFactor(800, true) == 800);
    EXPECT_TRUE(StepFactor(300, false) == 150 && StepFactor(50, false) == 50);
    MapSettings settings;
    EXPECT_EQ(StoreSettings({9, 9, -5, 9}, settings), 800);
    EXPECT_THAT(CurrentSettings(settings, 899), FieldsAre(2, 1, 1, 8));
    EXPECT_EQ(StoreSettings({-9, -9, 0, -1}, settings), 0);
    EXPECT_THAT(CurrentSettings(settings, 50), FieldsAre(-3, -3, 0, 0));
}

TEST(LevelOfDetail, MeasuresThreeFramesAfterAWarmUp) {
    using enum TuneOutcome;
    LevelOfDetail detail;
    const auto expect = [&](TuneOutcome outcome, std::initializer_list<std::uint32_t> frames,
                            bool busy = false) {
        for (const auto ms : frames) EXPECT_EQ(detail.AddFrame(busy, ms), outcome) << ms;
    };
    expect(Idle, {500});  // nothing is measured before it was asked for
    detail.StartMeasuring();
    expect(AnotherFrame, {5000, 100, 0, 100});  // the warm-up and what is too short do not count
    expect(Idle, {100, 5000});                  // 10 frames a second are enough
    detail.StartMeasuring();
    expect(AnotherFrame, {101, 101, 101});
    expect(Coarser, {101});  // 9 frames a second are too few
    EXPECT_EQ(detail.Factor(), 200);
    detail.StartMeasuring();
    expect(AnotherFrame, {50});
    expect(Idle, {50}, true);  // a load under way gives it up
    expect(Idle, {50});        // and it does not go on afterwards
}

}  // namespace
