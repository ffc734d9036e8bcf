// What the running DLL sends to OpenGL: creation, the globe's lists, one frame, call after call;
// and the tiles of the map.
#include <gmock/gmock.h>

#include <array>
#include <cmath>
#include <numbers>
#include <numeric>
#include <sstream>

#include "support/faked_import_win.h"
#include "support/frame_compare_win.h"
#include "support/map_host_win.h"
#include "support/table.h"

namespace {

constexpr SYSTEMTIME kNewYearNoon2000 = {2000, 1, 6, 1, 12, 0, 0, 0};
constexpr UINT_PTR kClockTimer = 4;

using Vector = std::array<double, 3>;

/// The direction of a place: +Y is the North Pole, +Z is 0 N 0 E, +X is 0 N 90 E.
Vector DirectionOf(double latitudeDeg, double longitudeDeg) {
    const double latitude = latitudeDeg * std::numbers::pi / 180.0;
    const double longitude = longitudeDeg * std::numbers::pi / 180.0;
    return {std::cos(latitude) * std::sin(longitude), std::sin(latitude),
            std::cos(latitude) * std::cos(longitude)};
}

class GlTrace : public MapHostTest {
protected:
    GlTrace() {
        FixedClock() = kNewYearNoon2000;
        for (const Row& row : Table("gl_names"))
            for (std::size_t i = 0; i < row.cells.size(); i += 2)
                numbers_[row.Text(i)] = row.Int(i + 1);
        for (const Row& row : Table("gl_calls"))
            for (const std::string& call : row.cells) parts_[row.why].push_back(call);
    }

    static std::vector<GlCall>& Calls() { return SpiedGl().calls; }
    /// Whether a call is the one that the table writes "glEnable LIGHT0".
    bool IsCall(const GlCall& call, const std::string& wanted) const {
        std::istringstream words(wanted);
        std::string word;
        words >> word;
        if (call.name != word) return false;
        std::size_t i = 0;
        for (; words >> word; ++i) {
            if (i == call.numbers.size()) return false;
            if (word == "?") continue;
            const auto named = numbers_.find(word);
            const std::size_t mark = word.find('~');
            const double miss = mark != word.npos ? std::stod(word.substr(mark + 1)) : 1e-6;
            const double number = named != numbers_.end() ? named->second : std::stod(word);
            if (std::abs(call.numbers[i] - number) > miss) return false;
        }
        return i == call.numbers.size();
    }
    /// Reading begins with the last call that is `wanted`.
    void ReadFrom(const std::string& wanted) {
        for (const GlCall& call : SpiedCalls("glNewList")) {
            numbers_["BODY"] = numbers_["CITIES"];  // the last but one
            numbers_["CITIES"] = call.numbers[0];
        }
        next_ = Calls().size();
        while (next_ > 0 && !IsCall(Calls()[--next_], wanted)) {
        }
    }
    /// The calls that follow are those of these parts of the table.
    void Then(std::initializer_list<const char*> parts) {
        for (const char* part : parts) {
            for (const std::string& wanted : parts_.at(part)) {
                const GlCall& call = Calls().at(next_++);
                ASSERT_TRUE(IsCall(call, wanted))
                    << call.name << testing::PrintToString(call.numbers) << "\nnot " << wanted;
            }
        }
    }
    void ThenAir(int shells) {
        for (int i = 0; i < shells; ++i) {
            numbers_["ALPHA"] = 0.52 - 0.5 * i / shells;
            Then({"shell"});
        }
        Then({"end of air"});
    }
    void ThenNumbers(std::string_view name, const std::vector<double>& wanted) {
        const GlCall& call = Calls().at(next_++);
        EXPECT_EQ(call.name, name);
        EXPECT_THAT(call.numbers, testing::Pointwise(testing::DoubleNear(1e-5), wanted));
    }
    /// A vertex so far from the western edge of its tile and from its southern one, as parts of the
    /// tile; its normal has ten times its part towards the Sun.
    void ThenVertex(int tile, double s, double t, const Vector& sun) {
        const Vector p = DirectionOf(90.0 * (tile / 4 - 1 + t), 90.0 * (tile % 4 - 2 + s));
        const double towards = std::inner_product(p.begin(), p.end(), sun.begin(), 0.0);
        Vector n;
        for (std::size_t i = 0; i < 3; ++i) n[i] = p[i] + 9.0 * towards * sun[i];
        const double length = std::hypot(n[0], n[1], n[2]);
        ThenNumbers("glNormal3f", {n[0] / length, n[1] / length, n[2] / length});
        ThenNumbers("glTexCoord2f", {s, t});
        ThenNumbers("glVertex3f", {3.0 * p[0], 3.0 * p[1], 3.0 * p[2]});
    }
    /// From the equator to the pole, strips from the eastern edge to the western one whose southern
    /// vertices come first.
    void ThenSurface(int tile, int segments, int rings, const Vector& sun) {
        Then({"tile's surface"});
        for (int ring = 0; ring < rings && !HasFailure(); ++ring) {
            ThenNumbers("glBegin", {GL_QUAD_STRIP});
            const double south = tile < 4 ? rings - 1 - ring : ring;
            for (int i = segments; i >= 0; --i) {
                for (const double t : {south, south + 1.0})
                    ThenVertex(tile, static_cast<double>(i) / segments, t / rings, sun);
            }
            ThenNumbers("glEnd", {});
        }
    }

    std::map<std::string, double> numbers_;  ///< by their names in the table
    std::map<std::string, std::vector<std::string>> parts_;
    std::size_t next_ = 0;
};

TEST_F(GlTrace, CreationPreparesSceneAndLampAndAWindowWithoutMapAirAndCities) {
    // Neither the city on the equator nor the one on the prime meridian has a place.
    const double places[][2] = {{51.5, -0.1}, {0.0, 30.0}, {-33.9, 18.4}, {35.7, 139.7}, {40, 0.0}};
    for (const auto& [latitude, longitude] : places) {
        CityRecord& city = cities.emplace_back();
        city.latitude = latitude;
        city.longitude = longitude;
        city.inRange = latitude < 0.0 ? 1 : 0;
    }
    // No worker can start, so the window stays without a map.
    const FakedImport<"CreateThread", decltype(CreateThread)> none(
        library.module, [](auto...) { return HANDLE{}; });
    Init();
    ASSERT_NE(CreateMap(), nullptr);
    ReadFrom("glEnable DEPTH_TEST");
    Then({"creation"});
    ReadFrom("glViewport 0 0 400 300");
    Then({"size", "picture", "shell's list", "body"});
    ThenAir(1);
    Then({"end of body", "cities", "some cities", "end of cities"});
}

TEST_F(GlTrace, TexturedGlobeIsUploadedRecordedAndDrawnWithTheLampOverThePointedPlace) {
    SpiedGl().keepPixels = true;
    const HWND map = CreateTexturedMap();
    const std::vector<GlCall> binds = SpiedCalls("glBindTexture");
    const auto uploads = SpiedGl().uploads.begin();
    for (int i = 0; i < 8; ++i)
        EXPECT_TRUE(ShowsPattern(uploads[i], i % 4 / 4.0, i / 4 / 2.0, 0.25, 0.5)) << "tile " << i;
    ReadFrom("glIsEnabled TEXTURE_2D");
    Then({"upload", "names", "tile", "tile", "tile", "tile", "tile", "tile", "tile", "tile",
          "end of upload"});
    Calls().clear();
    Key(map, 'H');
    ASSERT_TRUE(WaitForTiles(16)) << "into the same names, as their lists say below";
    ValidateRect(map, nullptr);
    Calls().clear();
    SendMessageW(map, WM_TIMER, kClockTimer, 0);
    EXPECT_FALSE(GetUpdateRect(map, nullptr, FALSE)) << "the change waits for the next frame";
    EXPECT_EQ(SpiedCalls("glNewList").size(), 2U) << "no shell anew";
    ReadFrom("glClear COLOR_AND_DEPTH_BUFFER");
    Then({"picture", "body"});
    ThenAir(20);
    Then({"globe"});
    const auto light = SpiedCalls("glLightfv").at(0).numbers;
    const double away = std::hypot(light[2], light[3], light[4]);
    for (const int tile : {7, 6, 5, 4, 3, 2, 1, 0}) {
        numbers_["TILE"] = binds.at(static_cast<std::size_t>(tile)).numbers[1];
        ThenSurface(tile, 45, 60, {light[2] / away, light[3] / away, light[4] / away});
    }
    Then({"end of globe", "end of body", "cities", "end of cities"});
    SendMessageW(map, WM_MOUSEMOVE, 0, MAKELPARAM(200, 149));
    Calls().clear();
    Paint(map);
    ReadFrom("");
    Then({"size", "frame"});
    EXPECT_EQ(next_, Calls().size());
}

}  // namespace
