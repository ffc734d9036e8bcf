// The globe's surface and its detail as the running DLL records them: every strip of every tile,
// with normals bent towards the Sun.
#include <gmock/gmock.h>

#include <cmath>
#include <set>

#include "globe/sun_position.h"
#include "support/gl_listing_win.h"
#include "support/gl_spy_win.h"
#include "support/map_host_win.h"

namespace {

constexpr double kRadians = 3.141592653589793 / 180.0;
constexpr double kTolerance = 2e-6;
constexpr SYSTEMTIME kSummerEvening = {2026, 6, 0, 21, 18, 0, 0, 0};
constexpr UINT_PTR kClockTimer = 4;

struct Vector {
    double x, y, z;
};

/// +Y is the North Pole, +Z is 0 N 0 E, +X is 0 N 90 E. In single precision, as the globe's tables
/// have it: bending makes ten times as much of what a place differs by.
Vector PlaceOf(double latitudeDeg, double longitudeDeg) {
    const auto fromAxis = static_cast<float>(std::cos(latitudeDeg * kRadians));
    return {fromAxis * static_cast<float>(std::sin(longitudeDeg * kRadians)),
            static_cast<float>(std::sin(latitudeDeg * kRadians)),
            fromAxis * static_cast<float>(std::cos(longitudeDeg * kRadians))};
}

/// The direction of `p`, its part towards the Sun made ten times as long.
Vector Bend(const Vector& p, const Vector& sun) {
    const double more = 9.0 * (p.x * sun.x + p.y * sun.y + p.z * sun.z);
    const Vector bent = {p.x + more * sun.x, p.y + more * sun.y, p.z + more * sun.z};
    const double length = std::hypot(bent.x, bent.y, bent.z);
    return {bent.x / length, bent.y / length, bent.z / length};
}

Vector SunAt(const SYSTEMTIME& utc) {
    double hourAngle = 0.0;
    double declination = 0.0;
    SunPosition(utc, &hourAngle, &declination);
    const double fromAxis = std::cos(declination * kRadians);
    return {-fromAxis * std::sin(hourAngle * kRadians), std::sin(declination * kRadians),
            fromAxis * std::cos(hourAngle * kRadians)};
}

/// What the surface of a globe of radius 3 has to be.
class ExpectedMesh {
public:
    ExpectedMesh(int slices, int stacks, const Vector& sun)
        : segments_(slices / 4), rings_(stacks / 2), sun_(sun) {}

    GlListing Calls(const GlListing& binds) {
        calls_ = {kModulate};
        for (const int tile : {7, 6, 5, 4, 3, 2, 1, 0}) {
            calls_.push_back(GlCall("glEnable", GL_TEXTURE_2D));
            calls_.push_back(binds.at(static_cast<std::size_t>(tile)));
            calls_.push_back(kModulate);
            for (int ring = 1; ring <= rings_; ++ring) AddStrip(tile >= 4, tile, ring);
        }
        calls_.push_back(GlCall("glDisable", GL_TEXTURE_2D));
        return calls_;
    }

private:
    void AddStrip(bool north, int tile, int ring) {
        calls_.push_back(GlCall("glBegin", GL_QUAD_STRIP));
        for (int segment = 0; segment <= segments_; ++segment) {
            // The southern vertex first, on both sides of the equator.
            AddVertex(north, tile, segment, north ? ring - 1 : ring);
            AddVertex(north, tile, segment, north ? ring : ring - 1);
        }
        calls_.emplace_back("glEnd");
    }
    void AddVertex(bool north, int tile, int segment, int ring) {
        // Tiles run from 180 W to 180 E, segments of a tile from its eastern edge westwards.
        const double part = static_cast<double>(segment) / segments_;
        const double up = static_cast<double>(ring) / rings_;
        const Vector p = PlaceOf(north ? 90.0 * up : -90.0 * up, 90.0 * (tile % 4 - 1 - part));
        const Vector n = Bend(p, sun_);
        calls_.push_back(GlCall("glNormal3f", n.x, n.y, n.z));
        calls_.push_back(GlCall("glTexCoord2f", 1.0 - part, north ? up : 1.0 - up));
        calls_.push_back(GlCall("glVertex3f", 3 * p.x, 3 * p.y, 3 * p.z));
    }

    const std::string kModulate =
        GlCall("glTexEnvi", GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
    int segments_, rings_;
    Vector sun_;
    GlListing calls_;
};

struct GlobeMesh : MapHostTest {
    static GlListing& Calls() { return SpiedGl().calls; }
};

}  // namespace

TEST_F(GlobeMesh, EveryVertexLiesOnItsTileWithItsNormalBentTowardsTheSun) {
    FixedClock() = kSummerEvening;
    const HWND map = CreateTexturedMap();
    GlListing binds = SpiedCalls("glBindTexture");  // of the eight uploads
    binds.resize(8);
    EXPECT_EQ(std::set<std::string>(binds.begin(), binds.end()).size(), 8U);

    const struct {
        const char* what;
        const char* keys;  ///< change the detail
        SYSTEMTIME time;
        int slices, stacks;
    } cases[] = {
        {"60 strips of 46 pairs a tile", "H", kSummerEvening, 180, 120},
        {"15 strips of 10 pairs, midwinter", "LLLL", {2026, 12, 0, 21, 12, 0, 0, 0}, 36, 30},
        {"30 strips of 31 pairs, an equinox", "H", {2024, 3, 0, 20, 3, 6, 0, 0}, 120, 60},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        FixedClock() = c.time;
        SendMessageW(map, WM_TIMER, kClockTimer, 0);
        Calls().clear();
        for (const char* key = c.keys; *key != '\0'; ++key) Key(map, *key);
        const GlListing body =
            LastPart(Calls(), GlCall("glMateriali", GL_FRONT, GL_SHININESS, 30), "glEndList");
        ASSERT_GT(body.size(), 4U);
        const GlListing surface(body.begin() + 1, body.end() - 3);
        const GlListing expected = ExpectedMesh(c.slices, c.stacks, SunAt(c.time)).Calls(binds);
        EXPECT_EQ(surface.size(), expected.size());
        ExpectBegins(surface, expected, kTolerance);
    }
    Key(map, 'L');
    Calls().clear();
    Key(map, 'L');
    EXPECT_TRUE(SpiedCalls("glNewList").empty()) << "coarser than the coarsest";
}
