// What the running DLL sends to OpenGL: creation, the globe's lists, one frame; call after call.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

#include "support/faked_import_win.h"
#include "support/gl_listing_win.h"
#include "support/gl_spy_win.h"
#include "support/map_host_win.h"

namespace {

constexpr double kPi = 3.141592653589793;
constexpr SYSTEMTIME kNewYearNoon2000 = {2000, 1, 6, 1, 12, 0, 0, 0};
constexpr UINT_PTR kClockTimer = 4;

/// A direction or a place, x, y, z.
struct Point {
    double x, y, z;
};
/// +Y is the North Pole, +Z is 0 N 0 E, +X is 0 N 90 E.
Point OnGlobe(double latitudeDeg, double longitudeDeg, double radius) {
    const double lat = latitudeDeg * kPi / 180.0;
    const double lon = longitudeDeg * kPi / 180.0;
    return {radius * std::cos(lat) * std::sin(lon), radius * std::sin(lat),
            radius * std::cos(lat) * std::cos(lon)};
}

HANDLE WINAPI RefuseThread(SECURITY_ATTRIBUTES*, SIZE_T, LPTHREAD_START_ROUTINE, void*, DWORD,
                           DWORD*) {
    return nullptr;
}

CityRecord City(double latitude, double longitude) {
    CityRecord city = {};
    city.latitude = latitude;
    city.longitude = longitude;
    return city;
}

class GlTrace : public MapHostTest {
protected:
    GlTrace() { FixedClock() = kNewYearNoon2000; }

    static GlListing& Calls() { return SpiedGl().calls; }

    /// A window that stays without a map: no worker can start.
    HWND CreateBareMap(int width = 400, int height = 300) {
        ReplaceImport(library.module, "CreateThread", reinterpret_cast<void*>(&RefuseThread));
        Init();
        return CreateMap(width, height);
    }

    /// Compiles at the present fixed time and gives what was sent.
    static const GlListing& CompileAgain(HWND map) {
        Calls().clear();
        SendMessageW(map, WM_TIMER, kClockTimer, 0);
        return Calls();
    }

    static Point SunOf(const GlListing& body) {
        for (const std::string& call : body) {
            if (!call.starts_with(GlCall("glLightfv", GL_LIGHT0, GL_POSITION))) continue;
            const auto numbers = SpiedNumbers(call);
            EXPECT_EQ(numbers.at(5), 0.0) << "parallel rays";
            return {numbers.at(2), numbers.at(3), numbers.at(4)};
        }
        ADD_FAILURE() << "no Sun";
        return {};
    }

    /// Walks over the Sun and its colours.
    static void ExpectSun(GlWalk& walk) {
        // Known from elsewhere for noon of 1 January 2000: declination and hour angle.
        const Point sun = OnGlobe(-23.033, 0.834, 3.6);
        constexpr double kSlack = 3.6 * 0.01 * kPi / 180.0;
        walk.ExpectNear("glLightfv", {GL_LIGHT0, GL_POSITION, sun.x, sun.y, sun.z, 0.0}, kSlack);
        walk.ExpectNear(
            "glLightfv",
            {GL_LIGHT0, GL_SPOT_DIRECTION, -sun.x / 3.6, -sun.y / 3.6, -sun.z / 3.6, 1.0}, kSlack);
        walk.Expect({GlCall("glLightfv", GL_LIGHT0, GL_DIFFUSE, 1, 1, 1, 1),
                     GlCall("glLightfv", GL_LIGHT0, GL_AMBIENT, 0.4, 0.4, 0.4, 1),
                     GlCall("glLightfv", GL_LIGHT0, GL_SPECULAR, 0.7, 0.7, 0.55, 1)});
    }

    struct Shell {
        double radius, alpha;
    };
    static void ExpectAir(GlWalk& walk, const std::vector<Shell>& shells) {
        walk.Expect({GlCall("glPushMatrix"), GlCall("glPolygonMode", GL_FRONT, GL_FILL),
                     GlCall("glEnable", GL_ALPHA_TEST), GlCall("glEnable", GL_BLEND),
                     GlCall("glBlendFunc", GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA),
                     GlCall("glMateriali", GL_FRONT, GL_SHININESS, 120),
                     GlCall("glRotatef", -90, 1, 0, 0)});
        for (const Shell& s : shells) {
            walk.ExpectNear("glMaterialfv", {GL_FRONT, GL_DIFFUSE, 0.4, 0.7, 0.95, s.alpha}, 1e-6);
            walk.ExpectNear("glMaterialfv", {GL_FRONT, GL_AMBIENT, 0, 0.25, 0.55, s.alpha}, 1e-6);
            walk.ExpectNear("glMaterialfv", {GL_FRONT, GL_SPECULAR, 0, 0.25, 0.95, s.alpha}, 1e-6);
            walk.Expect({GlCall("gluNewQuadric"),
                         GlCall("gluSphere", GlAddress(), s.radius, 180, 120),
                         GlCall("gluDeleteQuadric", GlAddress())});
        }
        walk.Expect({GlCall("glDisable", GL_BLEND), GlCall("glDisable", GL_ALPHA_TEST),
                     GlCall("glClear", GL_DEPTH_BUFFER_BIT), GlCall("glPopMatrix")});
    }

    static void ExpectEndOfBody(GlWalk& walk) {
        walk.Expect({GlCall("glMateriali", GL_FRONT, GL_SHININESS, 0),
                     GlCall("glMaterialfv", GL_FRONT, GL_SPECULAR, 0, 0, 0, 1),
                     GlCall("glEndList")});
    }

    static void ExpectStartOfPoints(GlWalk& walk, unsigned list) {
        walk.Expect(
            {GlCall("glNewList", list, GL_COMPILE),
             GlCall("glLightfv", GL_LIGHT0, GL_AMBIENT, 0.95, 0.95, 0.95, 1),
             GlCall("glLightfv", GL_LIGHT0, GL_DIFFUSE, 0.9, 0.9, 0.9, 1),
             GlCall("glMaterialfv", GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, 0.9, 0.65, 0.1, 1),
             GlCall("glPointSize", 2), GlCall("glBegin", GL_POINTS)});
    }

    static void ExpectPoint(GlWalk& walk, double latitude, double longitude) {
        const Point up = OnGlobe(latitude, longitude, 1.0);
        const Point at = OnGlobe(latitude, longitude, 3.0003);
        walk.ExpectNear("glNormal3d", {up.x, up.y, up.z}, 1e-6);
        walk.ExpectNear("glVertex3d", {at.x, at.y, at.z}, 1e-6);
    }
};

}  // namespace

TEST_F(GlTrace, CreationPreparesSceneAndLamp) {
    ASSERT_NE(CreateBareMap(), nullptr);
    const GlListing part = LastPart(Calls(), GlCall("glEnable", GL_CULL_FACE), "glViewport");
    GlWalk walk(part);
    walk.Expect({GlCall("glEnable", GL_CULL_FACE),
                 GlCall("glLighti", GL_LIGHT0, GL_SPOT_EXPONENT, 0),
                 GlCall("glLighti", GL_LIGHT0, GL_SPOT_CUTOFF, 60),
                 GlCall("glLightModelfv", GL_LIGHT_MODEL_AMBIENT, 0.25, 0.25, 0.3, 1),
                 GlCall("glEnable", GL_LIGHTING), GlCall("glEnable", GL_LIGHT0),
                 GlCall("glShadeModel", GL_SMOOTH),
                 // The lamp; its colours stand in this order on purpose.
                 GlCall("glLightfv", GL_LIGHT1, GL_AMBIENT, 0, 0, 0, 1),
                 GlCall("glLightfv", GL_LIGHT1, GL_DIFFUSE, 0.3, 1, 0.9, 1),
                 GlCall("glLightfv", GL_LIGHT1, GL_SPECULAR, 0.3, 1, 0.9, 1),
                 GlCall("glLighti", GL_LIGHT1, GL_SPOT_EXPONENT, 16),
                 GlCall("glLighti", GL_LIGHT1, GL_SPOT_CUTOFF, 30), GlCall("glEnable", GL_LIGHT1)});
    const GlListing before = LastPart(Calls(), GlCall("glEnable", GL_DEPTH_TEST), "glEnable");
    EXPECT_THAT(before, testing::ElementsAre(GlCall("glEnable", GL_DEPTH_TEST),
                                             GlCall("glEnable", GL_CULL_FACE)));
    EXPECT_THAT(SpiedCalls("glShadeModel"), testing::SizeIs(2));
    EXPECT_EQ(SpiedCalls("glEnable 16385").size(), 1U) << "one lamp";
}

TEST_F(GlTrace, SizeOfAWindowWithoutMapRecordsOneShellOfAirAndNoSurface) {
    ASSERT_NE(CreateBareMap(), nullptr);
    const GlobeLists lists = LastGlobeLists(Calls());
    const auto from =
        std::find(Calls().begin(), Calls().end(), GlCall("glViewport", 0, 0, 400, 300));
    ASSERT_NE(from, Calls().end());
    const GlListing resized(from, Calls().end());
    GlWalk walk(resized);
    walk.Expect({GlCall("glViewport", 0, 0, 400, 300), GlCall("glMatrixMode", GL_PROJECTION),
                 GlCall("glLoadIdentity"), GlCall("gluPerspective", 30, 4.0 / 3.0, 1, 30),
                 GlCall("glMatrixMode", GL_MODELVIEW), GlCall("glLoadIdentity"),
                 GlCall("glClear", GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT),
                 GlCall("glMatrixMode", GL_MODELVIEW), GlCall("glLoadIdentity"),
                 GlCall("glNewList", lists.body, GL_COMPILE), GlCall("glTranslatef", 0, 0, 0)});
    ExpectSun(walk);
    ExpectAir(walk, {{3.075, 0.52}});
    ExpectEndOfBody(walk);
    ExpectStartOfPoints(walk, lists.cities);
    walk.Expect({GlCall("glEnd"), GlCall("glEndList")});
}

TEST_F(GlTrace, TilesAreUploadedToEightNamesThatALaterMapTakesOver) {
    const HWND map = CreateTexturedMap();
    const auto names = SpiedCalls("glBindTexture");
    ASSERT_GE(names.size(), 8U);
    GlListing upload;
    for (std::size_t tile = 0; tile < 8; ++tile) {
        const GlListing one = {
            names[tile],
            GlCall("glTexParameteri", GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR),
            GlCall("glTexParameteri", GL_TEXTURE_2D, GL_TEXTURE_MAG_FILTER, GL_LINEAR),
            GlCall("glTexParameteri", GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_CLAMP_TO_EDGE),
            GlCall("glTexParameteri", GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_CLAMP_TO_EDGE),
            GlCall("glPixelStorei", GL_UNPACK_ALIGNMENT, 1),
            GlCall("glTexImage2D"),
            GlCall("glFlush")};
        upload.insert(upload.end(), one.begin(), one.end());
    }
    const GlListing end = {GlCall("glBindTexture", GL_TEXTURE_2D, 0),
                           GlCall("glDisable", GL_TEXTURE_2D),
                           GlCall("glClear", GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT)};
    const GlListing first = LastPart(Calls(), GlCall("glIsEnabled", GL_TEXTURE_2D), "glMatrixMode");
    GlWalk walk(first);
    walk.Expect({GlCall("glIsEnabled", GL_TEXTURE_2D), GlCall("glEnable", GL_TEXTURE_2D),
                 GlCall("glGenTextures", 8, GlAddress())});
    walk.Expect(upload);
    walk.Expect(end);

    Calls().clear();
    Key(map, 'H');
    ASSERT_TRUE(WaitForTiles(16));
    const GlListing second =
        LastPart(Calls(), GlCall("glIsEnabled", GL_TEXTURE_2D), "glMatrixMode");
    GlWalk again(second);
    again.Expect({GlCall("glIsEnabled", GL_TEXTURE_2D), GlCall("glEnable", GL_TEXTURE_2D)});
    again.Expect(upload);
    again.Expect(end);
}

TEST_F(GlTrace, TexturedBodyHasTenShellsAndTheGlobesOwnMaterial) {
    const HWND map = CreateTexturedMap();
    CompileAgain(map);
    const GlobeLists lists = LastGlobeLists(Calls());
    const GlListing body = LastList(Calls(), lists.body);
    GlWalk walk(body);
    walk.Expect({GlCall("glNewList", lists.body, GL_COMPILE), GlCall("glTranslatef", 0, 0, 0)});
    ExpectSun(walk);
    ExpectAir(walk, {{3.00075, 0.52},
                     {3.003, 0.47},
                     {3.00675, 0.42},
                     {3.012, 0.37},
                     {3.01875, 0.32},
                     {3.027, 0.27},
                     {3.03675, 0.22},
                     {3.048, 0.17},
                     {3.06075, 0.12},
                     {3.075, 0.07}});
    walk.Expect({GlCall("glMaterialfv", GL_FRONT, GL_AMBIENT, 0.3, 0.3, 0.35, 1),
                 GlCall("glMaterialfv", GL_FRONT, GL_DIFFUSE, 1, 1, 1, 1),
                 GlCall("glMaterialfv", GL_FRONT, GL_SPECULAR, 0.2, 0.2, 0.2, 1),
                 GlCall("glTexEnvfv", GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, 1, 1, 1, 1),
                 GlCall("glMateriali", GL_FRONT, GL_SHININESS, 30),
                 GlCall("glTexEnvi", GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE)});
    const GlListing end(body.end() - 4, body.end());
    GlWalk endWalk(end);
    endWalk.Expect(GlCall("glDisable", GL_TEXTURE_2D));
    ExpectEndOfBody(endWalk);
}

TEST_F(GlTrace, CitiesAreGoldPointsAndThoseInRangeGreen) {
    cities = {City(51.5, -0.1), City(0.0, 30.0), City(-33.9, 18.4), City(35.7, 139.7),
              City(40.0, 0.0)};
    cities[2].inRange = 1;
    const HWND map = CreateBareMap();
    ASSERT_NE(map, nullptr);
    const GlListing calls = CompileAgain(map);
    const GlobeLists lists = LastGlobeLists(calls);
    const GlListing part = LastList(calls, lists.cities);
    GlWalk walk(part);
    ExpectStartOfPoints(walk, lists.cities);
    // Neither the city on the equator nor the one on the prime meridian has a place.
    ExpectPoint(walk, 51.5, -0.1);
    ExpectPoint(walk, 35.7, 139.7);
    walk.Expect({GlCall("glEnd"),
                 GlCall("glMaterialfv", GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE, 0, 0.99, 0, 1),
                 GlCall("glBegin", GL_POINTS)});
    ExpectPoint(walk, -33.9, 18.4);
    walk.Expect({GlCall("glEnd"), GlCall("glEndList")});
    walk.ExpectEnd();
}

TEST_F(GlTrace, FrameGoesFromViewportToSwap) {
    const HWND map = CreateTexturedMap();
    const GlobeLists lists = LastGlobeLists(Calls());
    Paint(map);
    PumpPending();
    Calls().clear();
    Paint(map);
    const GlListing frame = Calls();
    GlWalk walk(frame);
    walk.Expect(
        {GlCall("glViewport", 0, 0, 400, 300), GlCall("glMatrixMode", GL_PROJECTION),
         GlCall("glLoadIdentity"), GlCall("gluPerspective", 30, 4.0 / 3.0, 1, 30),
         GlCall("glMatrixMode", GL_MODELVIEW), GlCall("glLoadIdentity"),
         GlCall("glClearColor", 0, 0, 0, 0),
         GlCall("glClear", GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT),
         GlCall("glMatrixMode", GL_MODELVIEW), GlCall("glLoadIdentity"),
         // The camera, then the lamp: nobody has pointed at the globe, it waits in its
         // centre and shines away from the viewer.
         GlCall("glTranslatef", 0, 0, -12.2), GlCall("glRotated", 40, 1, 0, 0),
         GlCall("glTranslatef", 0, 0, 0), GlCall("glLightfv", GL_LIGHT1, GL_POSITION, 0, 0, 0, 1),
         GlCall("glLightfv", GL_LIGHT1, GL_SPOT_DIRECTION, 0, 0, -1, 1),
         GlCall("glLightModeli", GL_LIGHT_MODEL_COLOR_CONTROL, GL_SEPARATE_SPECULAR_COLOR),
         GlCall("glCallList", lists.body),
         GlCall("glLightModeli", GL_LIGHT_MODEL_COLOR_CONTROL, GL_SINGLE_COLOR),
         GlCall("glCallList", lists.cities),
         // From here on in pixels.
         GlCall("glMatrixMode", GL_PROJECTION), GlCall("glLoadIdentity"),
         GlCall("gluOrtho2D", 0, 400, 0, 300), GlCall("glMatrixMode", GL_MODELVIEW),
         GlCall("glLoadIdentity"), GlCall("glDisable", GL_LIGHTING),
         GlCall("glDisable", GL_DEPTH_TEST),
         // The readout in the corner; no label without a city.
         GlCall("glColor3d", 1, 1, 1), GlCall("glPushMatrix"), GlCall("glRasterPos3f", 4, 4, 0)});
    walk.Skip("glListBase");
    // "Lat  0 00'N  Long   0 00'E": 26 bytes.
    walk.Expect({GlCall("glCallLists", 26, GL_UNSIGNED_BYTE, GlAddress()), GlCall("glPopMatrix")});

    ASSERT_GE(frame.size(), 4U);
    EXPECT_THAT(
        GlListing(frame.end() - 4, frame.end()),
        testing::ElementsAre(GlCall("glEnable", GL_DEPTH_TEST), GlCall("glEnable", GL_LIGHTING),
                             GlCall("glFlush"), GlCall("SwapBuffers")));
    EXPECT_EQ(SpiedCalls("glPushMatrix").size(), SpiedCalls("glPopMatrix").size());
    EXPECT_TRUE(SpiedCalls("glNewList").empty()) << "a frame records nothing";
    EXPECT_TRUE(SpiedCalls("glVertex3f").empty()) << "the globe comes from its list";
}

TEST_F(GlTrace, SunMovesOnTheClockTimerWithoutAFrame) {
    const HWND map = CreateBareMap();
    ASSERT_NE(map, nullptr);
    FixedClock() = {2026, 7, 3, 1, 10, 0, 0, 0};
    const Point ten = SunOf(CompileAgain(map));
    ValidateRect(map, nullptr);
    FixedClock().wHour = 11;
    const GlListing recompiled = CompileAgain(map);
    const Point eleven = SunOf(recompiled);
    // One hour is 15 degrees westwards; the angle on the sky shrinks with the declination.
    const double turn = std::atan2(ten.x, ten.z) - std::atan2(eleven.x, eleven.z);
    EXPECT_NEAR(turn * 180.0 / kPi, 15.0, 0.01);
    EXPECT_EQ(recompiled.front(), GlCall("glClear", GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT));
    EXPECT_TRUE(SpiedCalls("SwapBuffers").empty());
    EXPECT_FALSE(GetUpdateRect(map, nullptr, FALSE)) << "the change waits for the next frame";
}
