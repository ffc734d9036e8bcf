// What the running DLL sends to OpenGL: creation, the globe's lists, one frame; call after call.
#include <gmock/gmock.h>

#include <cmath>

#include "support/faked_import_win.h"
#include "support/gl_listing_win.h"
#include "support/gl_spy_win.h"
#include "support/map_host_win.h"
#include "support/seen_view_win.h"
#include "support/table.h"

namespace {

constexpr SYSTEMTIME kNewYearNoon2000 = {2000, 1, 6, 1, 12, 0, 0, 0};
constexpr UINT_PTR kClockTimer = 4;
constexpr double kTolerance = 1e-6;

class GlTrace : public MapHostTest {
protected:
    GlTrace() {
        FixedClock() = kNewYearNoon2000;
        for (const Row& row : Table("gl_names")) {
            for (std::size_t i = 0; i < row.cells.size(); i += 2) {
                numbers_[row.Text(i)] = row.Int(i + 1);
            }
        }
    }

    static GlListing& Calls() { return SpiedGl().calls; }

    /// A window that stays without a map: no worker can start.
    HWND CreateBareMap() {
        const FakedImport<"CreateThread", decltype(CreateThread)> none(
            library.module, [](auto...) { return HANDLE{}; });
        Init();
        return CreateMap();
    }
    static void LookAtClock(HWND map) { SendMessageW(map, WM_TIMER, kClockTimer, 0); }

    /// `calls` as OpenGL executes them: each list that is called is replaced by its content.
    GlListing Expanded(const GlListing& calls) const {
        constexpr std::string_view kCall = "glCallList ";
        GlListing expanded;
        for (const std::string& call : calls) {
            GlListing list;
            if (call.starts_with(kCall)) {
                const std::string name = call.substr(kCall.size());
                list = LastPart(Calls(), Call("glNewList " + name, "COMPILE"), "glEndList");
            }
            if (list.empty()) list = {"", call, ""};
            expanded.insert(expanded.end(), list.begin() + 1, list.end() - 1);
        }
        return expanded;
    }

    /// Begins a walk along a listing; Then says by parts of the table what comes next.
    void Walk(const GlListing& calls) {
        for (const std::string& call : SpiedCalls("glNewList")) {
            numbers_["BODY"] = numbers_["CITIES"];  // the last but one
            numbers_["CITIES"] = SpiedNumbers(call).at(0);
        }
        rest_ = calls;
    }
    void Then(std::initializer_list<const char*> parts) {
        for (const std::string part : parts) {
            GlListing expected;
            for (const Row& row : table_) {
                if (row.why != part) continue;
                expected.insert(expected.end(), row.cells.begin(), row.cells.end());
            }
            ASSERT_LE(expected.size(), rest_.size()) << part;
            ExpectBegins(rest_, expected, kTolerance, numbers_);
            rest_.erase(rest_.begin(), rest_.begin() + std::ssize(expected));
        }
    }
    void SetRadius(int shell, int shells) {
        numbers_["RADIUS"] = 3.0 + 0.075 * shell * shell / (shells * shells);
    }
    void ThenAir(int shells) {
        for (int i = 1; i <= shells; ++i) {
            SetRadius(i, shells);
            numbers_["ALPHA"] = 0.52 - 0.5 * (i - 1) / shells;
            Then({"shell"});
        }
        Then({"end of air"});
    }
    void ThenUpload(const GlListing& binds) {
        for (std::size_t tile = 0; tile < 8; ++tile) {
            numbers_["TILE"] = SpiedNumbers(binds.at(tile)).at(1);
            Then({"tile"});
        }
        Then({"end of upload"});
    }
    static bool IsRecording(const std::string& call) { return call.starts_with("glNewList "); }
    std::string Call(const std::string& function, const std::string& name) const {
        return GlCall(function, static_cast<int>(numbers_.at(name)));
    }

private:
    const std::vector<Row> table_ = Table("gl_calls");
    GlNumbers numbers_;
    GlListing rest_;
};

}  // namespace

TEST_F(GlTrace, CreationPreparesSceneAndLampAndAWindowWithoutMapOneShellOfAir) {
    ASSERT_NE(CreateBareMap(), nullptr);
    Walk(LastPart(Calls(), Call("glEnable", "DEPTH_TEST"), "glViewport"));
    Then({"creation"});
    const auto sized = std::find(Calls().begin(), Calls().end(), "glViewport 0 0 400 300");
    Walk(Expanded({sized, Calls().end()}));
    SetRadius(1, 1);
    Then({"size", "picture", "shell's list", "body"});
    ThenAir(1);
    Then({"end of body", "cities", "end of cities"});
}

TEST_F(GlTrace, TilesAreUploadedToEightNamesThatALaterMapTakesOver) {
    const HWND map = CreateTexturedMap();
    const GlListing binds = SpiedCalls("glBindTexture");
    Walk(LastPart(Calls(), Call("glIsEnabled", "TEXTURE_2D"), "glMatrixMode"));
    Then({"upload", "names"});
    ThenUpload(binds);

    Calls().clear();
    Key(map, 'H');
    ASSERT_TRUE(WaitForTiles(16));
    Walk(LastPart(Calls(), Call("glIsEnabled", "TEXTURE_2D"), "glMatrixMode"));
    Then({"upload"});
    ThenUpload(binds);
}

TEST_F(GlTrace, TexturedBodyHasTenShellsAndTheGlobesOwnMaterial) {
    const HWND map = CreateTexturedMap();
    ValidateRect(map, nullptr);
    const auto before = std::ssize(Calls());
    LookAtClock(map);
    EXPECT_FALSE(GetUpdateRect(map, nullptr, FALSE)) << "the change waits for the next frame";
    const GlListing look(Calls().begin() + before, Calls().end());
    EXPECT_EQ(std::count_if(look.begin(), look.end(), IsRecording), 2) << "no shell anew";
    Walk(Expanded(look));
    Then({"picture", "body"});
    ThenAir(10);
    Then({"globe"});
    Walk(LastPart(Calls(), Call("glDisable", "TEXTURE_2D"), "glEndList"));
    Then({"end of globe", "end of body"});
}

TEST_F(GlTrace, CitiesAreGoldPointsAndThoseInRangeGreen) {
    // Neither the city on the equator nor the one on the prime meridian has a place.
    const double places[][2] = {{51.5, -0.1}, {0.0, 30.0}, {-33.9, 18.4}, {35.7, 139.7}, {40, 0.0}};
    for (const auto& [latitude, longitude] : places) {
        CityRecord& city = cities.emplace_back();
        city.latitude = latitude;
        city.longitude = longitude;
        city.inRange = latitude < 0.0 ? 1 : 0;
    }
    LookAtClock(CreateBareMap());
    Walk(LastPart(Calls(), SpiedCalls("glNewList").back(), "glEndList"));
    Then({"cities", "some cities", "end of cities"});
}

TEST_F(GlTrace, FrameGoesFromViewportToSwap) {
    const HWND map = CreateTexturedMap();
    Walk({});
    Calls().clear();
    Paint(map);
    EXPECT_TRUE(SpiedCalls("glNewList").empty()) << "a frame records nothing";
    EXPECT_TRUE(SpiedCalls("glVertex3f").empty()) << "the globe comes from its list";
    Walk(Calls());
    Then({"size", "frame"});
    Walk(LastPart(Calls(), Call("glEnable", "DEPTH_TEST"), "SwapBuffers"));
    Then({"end of frame"});
}

TEST_F(GlTrace, LampHangsOverThePlaceThatThePointerShows) {
    const HWND map = CreateTexturedMap();
    const struct {
        int key;   ///< pressed before, 0 for none
        int x, y;  ///< client coordinates
    } cases[] = {{0, 295, 120}, {VK_LEFT, 120, 90}, {VK_UP, 240, 200}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.x);
        if (c.key != 0) Key(map, c.key);
        SendMessageW(map, WM_MOUSEMOVE, 0, MAKELPARAM(c.x, c.y));
        Calls().clear();
        Paint(map);
        const auto place = PlaceUnder(ViewOfPicture(Calls()), c.x, c.y);
        const GlListing at = SpiedCalls(Call("glLightfv", "LIGHT1"));
        ASSERT_TRUE(place && at.size() == 2);
        const auto lamp = SpiedNumbers(at[0]);  // behind the light and the property
        EXPECT_EQ(lamp.at(5), 1.0) << "a lamp in a place, not a direction";
        const double height = std::hypot(lamp[2], lamp[3], lamp[4]);
        EXPECT_NEAR(height, 3.6, 1e-5) << "1.2 globe radii from the centre";
        const GlobeDirection over = {lamp[2] / height, lamp[3] / height, lamp[4] / height};
        EXPECT_LT(AngleBetween(over, *place), 0.01);
        const auto beam = SpiedNumbers(at[1]);
        EXPECT_LT(AngleBetween({-beam.at(2), -beam[3], -beam[4]}, over), 0.1);
    }
}
