#include "photos/button_sheet_win.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "image/gdiplus_session_win.h"
#include "image/gdiplus_win.h"
#include "photos/button_sheet.h"

namespace {

namespace fs = std::filesystem;

constexpr CLSID kPngEncoder = {
    0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0, 0, 0xF8, 0x1E, 0xF3, 0x2E}};
constexpr CLSID kBmpEncoder = {
    0x557CF400, 0x1A04, 0x11D3, {0x9A, 0x73, 0, 0, 0xF8, 0x1E, 0xF3, 0x2E}};

struct Rgba {
    int red, green, blue, alpha;
    bool operator==(const Rgba&) const = default;
};

class ButtonSheetTest : public testing::Test {
protected:
    ButtonSheetTest() { fs::create_directories(folder_); }
    ~ButtonSheetTest() override {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }

    /// A picture with one half-transparent orange pixel in its upper left corner.
    std::wstring Save(int width, int height, Gdiplus::PixelFormat format, const CLSID& encoder) {
        Gdiplus::Bitmap bitmap(width, height, format);
        bitmap.SetPixel(0, 0, Gdiplus::Color(128, 255, 160, 32));
        const std::wstring path = (folder_ / L"buttons.png").wstring();
        EXPECT_EQ(bitmap.Save(path.c_str(), &encoder, nullptr), Gdiplus::Ok);
        return path;
    }
    static std::wstring Drawn() {
        return fs::absolute(fs::path(HORIVO_ASSETS) / "buttons.png").make_preferred().wstring();
    }
    /// Pixel at column x and row y, counted from the lower left.
    Rgba Pixel(int x, int y) const {
        const std::uint8_t* p = sheet_.GetPixels() + (y * kSheetWidth + x) * 4;
        return {p[0], p[1], p[2], p[3]};
    }

    const GdiplusUse gdiplus_;
    const fs::path folder_ =
        fs::temp_directory_path() / (L"horivo-sheet-" + std::to_wstring(GetCurrentProcessId()));
    ButtonSheet sheet_;
};

TEST_F(ButtonSheetTest, OnlyPicturesOfTheRightSizeWithThirtyTwoBitsServe) {
    const struct {
        const char* why;
        int width, height;
        Gdiplus::PixelFormat format;
        const CLSID& encoder;
        bool accepted;
    } cases[] = {
        {"right", 128, 256, PixelFormat32bppARGB, kPngEncoder, true},
        {"24 bits", 128, 256, PixelFormat24bppRGB, kPngEncoder, false},
        {"too wide", 129, 256, PixelFormat32bppARGB, kPngEncoder, false},
        {"too low", 128, 255, PixelFormat32bppARGB, kPngEncoder, false},
        {"lying", 256, 128, PixelFormat32bppARGB, kPngEncoder, false},
        {"32 bits without alpha", 128, 256, PixelFormat32bppRGB, kBmpEncoder, true},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(sheet_.Load(Save(c.width, c.height, c.format, c.encoder)), c.accepted) << c.why;
        EXPECT_EQ(sheet_.GetPixels() != nullptr, c.accepted) << c.why;
    }
}

TEST_F(ButtonSheetTest, MissingAndBrokenFilesLeaveTheSheetEmpty) {
    ASSERT_TRUE(sheet_.Load(Drawn()));
    EXPECT_FALSE(sheet_.Load((folder_ / L"none.png").wstring()));
    EXPECT_EQ(sheet_.GetPixels(), nullptr) << "the sheet before must not stay";
    const fs::path broken = folder_ / L"broken.png";
    std::ofstream(broken, std::ios::binary) << "\x89PNG\r\n\x1a\n and no more";
    EXPECT_FALSE(sheet_.Load(broken.wstring()));
    EXPECT_FALSE(sheet_.Load(L""));
}

TEST_F(ButtonSheetTest, TopRowOfThePictureLiesLastWithRedFirst) {
    ASSERT_TRUE(sheet_.Load(Save(128, 256, PixelFormat32bppARGB, kPngEncoder)));
    EXPECT_EQ(Pixel(0, 255), (Rgba{255, 160, 32, 128}));
    EXPECT_EQ(Pixel(0, 0).alpha, 0);
}

// Columns and rows of the sheet that each button shows when it is lit, from the lower left; its
// normal look lies 128 rows higher.
constexpr struct {
    const char* name;
    int x, y, width, height;
} kCells[] = {
    {"minus", 0, 0, 32, 32},  {"down", 32, 0, 32, 32},    {"left", 0, 32, 32, 32},
    {"home", 32, 32, 32, 32}, {"right", 64, 32, 32, 32},  {"plus", 0, 64, 32, 32},
    {"up", 32, 64, 32, 32},   {"photos", 0, 96, 100, 24}, {"previous", 64, 64, 9, 19},
    {"next", 64, 0, 9, 19},
};

TEST_F(ButtonSheetTest, DrawnSheetFillsEveryCellInBothLooks) {
    ASSERT_TRUE(sheet_.Load(Drawn()));
    for (const auto& cell : kCells) {
        int opaque = 0;
        int different = 0;
        for (int y = cell.y; y < cell.y + cell.height; ++y) {
            for (int x = cell.x; x < cell.x + cell.width; ++x) {
                const Rgba normal = Pixel(x, y + 128);
                opaque += normal.alpha == 255 && normal.red > 200 ? 1 : 0;
                different += normal == Pixel(x, y) ? 0 : 1;
            }
        }
        const int area = cell.width * cell.height;
        EXPECT_GT(opaque, area / 25) << cell.name << ": a bright glyph";
        EXPECT_LT(opaque, area / 2) << cell.name;
        EXPECT_GT(different, area / 2) << cell.name << ": the lit look is another one";
    }
}

TEST_F(ButtonSheetTest, DrawnSheetIsClearOutsideItsCells) {
    ASSERT_TRUE(sheet_.Load(Drawn()));
    for (int y = 0; y < kSheetHeight; ++y) {
        for (int x = 0; x < kSheetWidth; ++x) {
            const auto covers = [x, y](const auto& cell) {
                const int row = y % 128 - cell.y;
                return x >= cell.x && x < cell.x + cell.width && row >= 0 && row < cell.height;
            };
            if (std::none_of(std::begin(kCells), std::end(kCells), covers)) {
                ASSERT_EQ(Pixel(x, y).alpha, 0) << x << ' ' << y;
            }
        }
    }
}

}  // namespace
