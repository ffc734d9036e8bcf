// The names of the running DLL's display lists, and its lamp: what follows from where things are.
#include <gmock/gmock.h>

#include <cmath>
#include <cstdlib>
#include <map>
#include <mutex>

#include "support/faked_import_win.h"
#include "support/gl_listing_win.h"
#include "support/gl_spy_win.h"
#include "support/map_host_win.h"

namespace {

constexpr double kPi = 3.141592653589793;
constexpr unsigned kFontLists = 256;

/// The blocks that the DLL's malloc has given since it was watched: sizes by the low half of the
/// address, which is what display lists are named after.
struct WatchedMalloc {
    std::mutex mutex;  // workers allocate too
    std::map<unsigned, std::size_t> blocks;

    bool HasBlockAt(unsigned low) const { return blocks.contains(low); }
    /// Whether [low, low + count) lies inside one block.
    bool HasRange(unsigned low, unsigned count) const {
        auto block = blocks.upper_bound(low);
        if (block == blocks.begin()) return false;
        --block;
        return low - block->first + count <= block->second;
    }
};
WatchedMalloc& Watched() {
    static WatchedMalloc watched;
    return watched;
}
void* WatchingMalloc(std::size_t size) {
    void* block = std::malloc(size);
    const std::lock_guard lock(Watched().mutex);
    Watched().blocks[static_cast<unsigned>(reinterpret_cast<std::uintptr_t>(block))] = size;
    return block;
}

struct Point {
    double x, y, z;
};
double Length(const Point& p) { return std::sqrt(p.x * p.x + p.y * p.y + p.z * p.z); }

class GlNames : public MapHostTest {
protected:
    HWND CreateTexturedMap() {
        PutPatternMap(128, 64);
        Init();
        SpiedGl().uploads.clear();
        const HWND map = CreateMap();
        EXPECT_TRUE(WaitForTiles());
        return map;
    }

    /// The first name of the font's lists, as the last text used it.
    static unsigned FontBase() {
        const auto calls = SpiedCalls("glListBase");
        return calls.empty() ? 0U : static_cast<unsigned>(SpiedNumbers(calls.back()).at(0));
    }
};

class LampOverPointer : public GlNames {
protected:
    static void MovePointer(HWND map, int x, int y) {
        SendMessageW(map, WM_MOUSEMOVE, 0, MAKELPARAM(x, y));
    }

    /// The lamp's place in the next frame; its beam goes to the globe's centre.
    static Point LampOf(HWND map) {
        SpiedGl().calls.clear();
        Paint(map);
        const auto calls = SpiedCalls(GlCall("glLightfv", GL_LIGHT1, GL_POSITION));
        EXPECT_EQ(calls.size(), 1U);
        const auto at = SpiedNumbers(calls.at(0));
        EXPECT_EQ(at.at(5), 1.0) << "a lamp in a place, not a direction";
        const Point lamp = {at[2], at[3], at[4]};
        const double length = Length(lamp);
        GlListing beam = SpiedCalls(GlCall("glLightfv", GL_LIGHT1, GL_SPOT_DIRECTION));
        GlWalk walk(beam);
        walk.ExpectNear("glLightfv",
                        {GL_LIGHT1, GL_SPOT_DIRECTION, -lamp.x / length, -lamp.y / length,
                         -lamp.z / length, 1.0},
                        1e-6);
        return lamp;
    }
};

}  // namespace

TEST_F(GlNames, ListsAreNamedAfterTheirObjectsAddresses) {
    ReplaceImport(library.module, "malloc", reinterpret_cast<void*>(&WatchingMalloc));
    const HWND map = CreateTexturedMap();
    const GlobeLists lists = LastGlobeLists(SpiedGl().calls);
    EXPECT_NE(lists.body, 0U);
    EXPECT_EQ(lists.cities, lists.body + 1);
    EXPECT_TRUE(Watched().HasBlockAt(lists.body)) << "the globe's own address";

    Paint(map);
    const unsigned base = FontBase();
    EXPECT_TRUE(Watched().HasRange(base, kFontLists)) << "names beyond the font's own memory";
    EXPECT_TRUE(lists.cities < base || lists.body - base >= kFontLists) << "no name twice";
}

TEST_F(GlNames, NothingNamedOutlivesItsWindow) {
    unsigned bases[2] = {};
    for (unsigned& base : bases) {
        SpiedGl().calls.clear();
        const HWND map = CreateTexturedMap();
        Paint(map);
        base = FontBase();
        const GlobeLists lists = LastGlobeLists(SpiedGl().calls);

        SpiedGl().calls.clear();
        DestroyWindow(map);
        const auto deleted = SpiedCalls("glDeleteLists");
        EXPECT_THAT(deleted,
                    testing::UnorderedElementsAre(GlCall("glDeleteLists", lists.cities, 1),
                                                  GlCall("glDeleteLists", lists.body, 1),
                                                  GlCall("glDeleteLists", base, kFontLists)));
        EXPECT_THAT(SpiedCalls("glDeleteTextures"),
                    testing::Contains(GlCall("glDeleteTextures", 8, GlAddress())));
        library.FreeMap();
    }
    EXPECT_EQ(bases[0], bases[1]) << "the font keeps its names for the life of the process";
}

TEST_F(LampOverPointer, HangsOverThePlaceThatThePointerShows) {
    const HWND map = CreateTexturedMap();
    const struct {
        const char* why;
        int key;  ///< pressed before, 0 for none
        double tilt, spin;
        int x, y;  ///< client coordinates
    } cases[] = {
        {"the middle", 0, 40, 0, 200, 150},
        {"towards the edge", 0, 40, 0, 295, 120},
        {"low", 0, 40, 0, 170, 255},
        {"globe turned", VK_LEFT, 40, 1, 120, 90},
        {"globe tilted", VK_UP, 41, 1, 240, 200},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.why);
        if (c.key != 0) Key(map, c.key);
        MovePointer(map, c.x, c.y);
        const Point lamp = LampOf(map);
        EXPECT_NEAR(Length(lamp), 3.6, 1e-5) << "1.2 globe radii from the centre";

        // The place under it, turned with the globe and seen from the camera, is at the pointer.
        const Point place = {lamp.x / 1.2, lamp.y / 1.2, lamp.z / 1.2};
        const double spin = c.spin * kPi / 180.0;
        const double tilt = c.tilt * kPi / 180.0;
        const double x = place.x * std::cos(spin) + place.z * std::sin(spin);
        const double level = -place.x * std::sin(spin) + place.z * std::cos(spin);
        const double y = place.y * std::cos(tilt) - level * std::sin(tilt);
        const double z = place.y * std::sin(tilt) + level * std::cos(tilt) - 12.2;
        const double scale = 150.0 / std::tan(15.0 * kPi / 180.0) / -z;  // pixels a unit
        EXPECT_NEAR(200.0 + x * scale, c.x, 0.01);
        EXPECT_NEAR(150.0 + y * scale, 299 - c.y, 0.01) << "the bottom row is row 0";
        EXPECT_GT(z, -12.2 + 9.0 / 12.2) << "on the side that the viewer sees";
    }
}

TEST_F(LampOverPointer, HangsOverTheCityThatTheHostShows) {
    cities.resize(1);
    std::wstring(L"Sydney").copy(cities[0].cityName, 63);
    cities[0].latitude = -33.87;
    cities[0].longitude = 151.21;
    const HWND map = CreateTexturedMap();
    SendMessageW(map, HORIVO_MSG_CITY, 0, reinterpret_cast<LPARAM>(&cities[0]));
    const Point lamp = LampOf(map);
    const double lat = -33.87 * kPi / 180.0;
    const double lon = 151.21 * kPi / 180.0;
    EXPECT_NEAR(lamp.x, 3.6 * std::cos(lat) * std::sin(lon), 1e-5);
    EXPECT_NEAR(lamp.y, 3.6 * std::sin(lat), 1e-5);
    EXPECT_NEAR(lamp.z, 3.6 * std::cos(lat) * std::cos(lon), 1e-5);
}
