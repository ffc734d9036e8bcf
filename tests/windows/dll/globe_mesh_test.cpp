// The globe's surface and its detail as the running DLL records them: every strip of every tile,
// with normals bent towards the Sun.
#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <set>

#include "globe/sun_position.h"
#include "support/gl_listing_win.h"
#include "support/gl_spy_win.h"
#include "support/map_host_win.h"

namespace {

constexpr double kPi = 3.141592653589793;
constexpr double kNormalSlack = 1e-6;
constexpr double kPlaceSlack = 2e-6;
constexpr SYSTEMTIME kSummerEvening = {2026, 6, 0, 21, 18, 0, 0, 0};
constexpr UINT_PTR kClockTimer = 4;

using Vector = std::array<double, 3>;
using Matrix = std::array<Vector, 3>;

Matrix Product(const Matrix& a, const Matrix& b) {
    Matrix product = {};
    for (std::size_t r = 0; r < 3; ++r) {
        for (std::size_t c = 0; c < 3; ++c) {
            for (std::size_t k = 0; k < 3; ++k) product[r][c] += a[r][k] * b[k][c];
        }
    }
    return product;
}

Matrix AboutX(double degrees) {
    const double c = std::cos(degrees * kPi / 180.0);
    const double s = std::sin(degrees * kPi / 180.0);
    return {{{1, 0, 0}, {0, c, -s}, {0, s, c}}};
}

Matrix AboutY(double degrees) {
    const double c = std::cos(degrees * kPi / 180.0);
    const double s = std::sin(degrees * kPi / 180.0);
    return {{{c, 0, s}, {0, 1, 0}, {-s, 0, c}}};
}

/// Turns the Sun onto the Z axis, stretches tenfold along it and turns back.
Matrix SunStretch(const SYSTEMTIME& utc) {
    double hourAngle = 0.0;
    double declination = 0.0;
    SunPosition(utc, &hourAngle, &declination);
    const double longitude = -360.0 - hourAngle;
    const Matrix back = Product(AboutY(longitude), AboutX(-declination));
    const Matrix there = Product(AboutX(declination), AboutY(-longitude));
    const Matrix stretch = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 10}}};
    return Product(back, Product(stretch, there));
}

Vector Bend(const Matrix& m, const Vector& p) {
    Vector bent = {};
    for (std::size_t r = 0; r < 3; ++r) bent[r] = m[r][0] * p[0] + m[r][1] * p[1] + m[r][2] * p[2];
    const double length = std::hypot(bent[0], bent[1], bent[2]);
    return {bent[0] / length, bent[1] / length, bent[2] / length};
}

/// +Y is the North Pole, +Z is 0 N 0 E, +X is 0 N 90 E. In single precision, as the globe's tables
/// have it: bending makes ten times as much of what a place differs by.
Vector PlaceOf(double latitudeDeg, double longitudeDeg) {
    const double lat = latitudeDeg * kPi / 180.0;
    const double lon = longitudeDeg * kPi / 180.0;
    const auto fromAxis = static_cast<float>(std::cos(lat));
    return {fromAxis * static_cast<float>(std::sin(lon)), static_cast<float>(std::sin(lat)),
            fromAxis * static_cast<float>(std::cos(lon))};
}

/// What the surface of a globe of radius 3 has to be.
struct ExpectedMesh {
    int slices;
    int stacks;
    Matrix bending;
    std::vector<unsigned> textures;  ///< by tile

    int Rings() const { return stacks / 2; }
    int Segments() const { return slices / 4; }

    void CheckVertex(GlWalk& walk, bool north, int tile, int segment, int ring) const {
        // Tiles run from 180 W to 180 E, segments of a tile from its eastern edge westwards.
        const double east = -180.0 + 90.0 * (tile % 4 + 1) - 90.0 * segment / Segments();
        const Vector p = PlaceOf(90.0 * ring / Rings() * (north ? 1.0 : -1.0), east);
        const Vector n = Bend(bending, p);
        const double s = 1.0 - static_cast<double>(segment) / Segments();
        const double up = static_cast<double>(ring) / Rings();
        walk.ExpectNear("glNormal3f", {n[0], n[1], n[2]}, kNormalSlack);
        walk.ExpectNear("glTexCoord2f", {s, north ? up : 1.0 - up}, 1e-6);
        walk.ExpectNear("glVertex3f", {3 * p[0], 3 * p[1], 3 * p[2]}, kPlaceSlack);
    }

    void CheckStrip(GlWalk& walk, bool north, int tile, int ring) const {
        walk.Expect(GlCall("glBegin", GL_QUAD_STRIP));
        for (int segment = 0; segment <= Segments() && !walk.Failed(); ++segment) {
            // The southern vertex first, on both sides of the equator.
            CheckVertex(walk, north, tile, segment, north ? ring - 1 : ring);
            CheckVertex(walk, north, tile, segment, north ? ring : ring - 1);
        }
        walk.Expect(GlCall("glEnd"));
    }

    void Check(GlWalk& walk) const {
        walk.Expect(GlCall("glTexEnvi", GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE));
        for (const int tile : {7, 6, 5, 4, 3, 2, 1, 0}) {
            walk.Expect(
                {GlCall("glEnable", GL_TEXTURE_2D),
                 GlCall("glBindTexture", GL_TEXTURE_2D, textures[static_cast<std::size_t>(tile)]),
                 GlCall("glTexEnvi", GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE)});
            for (int ring = 1; ring <= Rings() && !walk.Failed(); ++ring)
                CheckStrip(walk, tile >= 4, tile, ring);
        }
        walk.Expect(GlCall("glDisable", GL_TEXTURE_2D));
    }
};

class GlobeMesh : public MapHostTest {
protected:
    GlobeMesh() { FixedClock() = kSummerEvening; }

    static GlListing& Calls() { return SpiedGl().calls; }

    /// The names of the eight textures by tile, from the uploads in the record.
    static std::vector<unsigned> TextureNames() {
        std::vector<unsigned> names;
        unsigned bound = 0;
        for (const std::string& call : Calls()) {
            if (call.starts_with("glBindTexture "))
                bound = static_cast<unsigned>(SpiedNumbers(call).at(1));
            if (call == "glTexImage2D") names.push_back(bound);
        }
        EXPECT_EQ(names.size(), 8U);
        names.resize(8);
        return names;
    }

    /// The body's calls from the first of the mesh to its last.
    static GlListing Surface(const GlListing& body) {
        const std::string first = GlCall("glMateriali", GL_FRONT, GL_SHININESS, 30);
        const auto from = std::find(body.begin(), body.end(), first);
        if (from == body.end()) return {};
        return {from + 1, body.end() - 3};
    }

    struct Detail {
        int slices = 0, stacks = 0, shells = 0;
        bool operator==(const Detail&) const = default;
    };

    /// Of the last compiled body, by its spheres and its strips, which must agree.
    static Detail LastDetail() {
        const GlListing body = LastList(Calls(), LastGlobeLists(Calls()).body);
        Detail detail;
        int strips = 0;
        int vertices = 0;
        for (const std::string& call : body) {
            if (call.starts_with("gluSphere ")) {
                std::string numbers = call;
                numbers.erase(numbers.find('*'), 1);
                const auto values = SpiedNumbers(numbers);
                detail = {static_cast<int>(values.at(1)), static_cast<int>(values.at(2)),
                          detail.shells + 1};
            }
            if (call.starts_with("glBegin ")) ++strips;
            if (call.starts_with("glVertex3f ")) ++vertices;
        }
        EXPECT_EQ(strips, 8 * (detail.stacks / 2));
        EXPECT_EQ(vertices, strips * 2 * (detail.slices / 4 + 1));
        return detail;
    }
};

}  // namespace

TEST_F(GlobeMesh, EveryVertexLiesOnItsTileWithItsNormalBentTowardsTheSun) {
    const HWND map = CreateTexturedMap();
    const std::vector<unsigned> textures = TextureNames();
    EXPECT_EQ(std::set<unsigned>(textures.begin(), textures.end()).size(), 8U);

    const struct {
        const char* what;
        int key;  ///< pressed before, 0 for none
        SYSTEMTIME time;
        int slices, stacks;
    } cases[] = {
        {"60 strips of 46 pairs a tile", 0, kSummerEvening, 180, 120},
        {"45 strips of 46 pairs", 'L', kSummerEvening, 180, 90},
        {"30 strips of 31 pairs, an equinox", 'L', {2024, 3, 0, 20, 3, 6, 0, 0}, 120, 60},
        {"15 strips of 10 pairs, midwinter", 'L', {2026, 12, 0, 21, 12, 0, 0, 0}, 36, 30},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        if (c.key != 0) Key(map, c.key);
        FixedClock() = c.time;
        Calls().clear();
        SendMessageW(map, WM_TIMER, kClockTimer, 0);
        const GlListing surface = Surface(LastList(Calls(), LastGlobeLists(Calls()).body));
        GlWalk walk(surface);
        ExpectedMesh{c.slices, c.stacks, SunStretch(c.time), textures}.Check(walk);
        walk.ExpectEnd();
    }
}

TEST_F(GlobeMesh, KeysHalveAndDoubleTheDetail) {
    const HWND map = CreateTexturedMap();
    EXPECT_EQ(LastDetail(), (Detail{180, 120, 10}));
    const struct {
        char key;
        Detail detail;  ///< empty where nothing changes
    } steps[] = {
        {'H', {180, 120, 20}},
        {'H', {}},
        {'L', {180, 120, 10}},
        {'L', {180, 90, 5}},
        {'L', {120, 60, 1}},
        {'L', {36, 30, 1}},
        {'L', {}},
        {'H', {120, 60, 1}},
    };
    for (const auto& step : steps) {
        Calls().clear();
        Key(map, step.key);
        if (step.detail == Detail{}) {
            EXPECT_TRUE(SpiedCalls("glNewList").empty()) << "beyond the end: " << step.key;
        } else {
            EXPECT_EQ(LastDetail(), step.detail) << step.key;
        }
    }
}
