// The self-test of a newly installed picture: which files it leaves and what it answers.
#include <gmock/gmock.h>

#include <fstream>
#include <iterator>
#include <optional>

#include "base/handles_win.h"
#include "image/gdiplus_win.h"
#include "support/faked_import_win.h"
#include "support/gdiplus_pictures_win.h"
#include "support/gl_spy_win.h"
#include "support/jpeg_bytes.h"
#include "support/map_host_win.h"
#include "support/table.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

using Content = std::optional<std::string>;  // of a file; empty: there is none

Content ReadFileBytes(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(file), {});
}

/// An initialised library that must never show a message box.
class InstallMapTest : public MapHostTest {
protected:
    InstallMapTest() {
        SpiedGl().keepCalls = false;
        EXPECT_EQ(Init(), HORIVO_OK);
    }
    ~InstallMapTest() override {
        EXPECT_EQ(boxes_.Calls(), 0) << "the host shows messages, not the self-test";
        EXPECT_EQ(FindWindowW(L"Zelmo 3D map window - OpenGL version", nullptr), nullptr)
            << "the test window is left over";
    }

    static fs::path PristinePath() { return DataFolder() / "map0.jpg"; }
    static void Put(const Content& map, const Content& pristine) {
        fs::remove(MapPath());
        fs::remove(PristinePath());
        if (map) std::ofstream(MapPath(), std::ios::binary) << *map;
        if (pristine) std::ofstream(PristinePath(), std::ios::binary) << *pristine;
    }
    static std::string Pattern(int width, int height) {
        PutPatternMap(width, height);
        return *ReadFileBytes(MapPath());
    }
    /// Sizes of what was uploaded since the last call.
    static std::vector<int> TakeUploadWidths() {
        std::vector<int> widths;
        for (const SpiedUpload& upload : SpiedGl().uploads) widths.push_back(upload.width);
        SpiedGl().uploads.clear();
        return widths;
    }

private:
    FakedImport<"MessageBoxW", decltype(MessageBoxW)> boxes_{
        library.module, [](HWND, LPCWSTR, LPCWSTR, UINT) { return IDOK; }};
};

TEST_F(InstallMapTest, KeepsAPristineCopyAndFallsBackToIt) {
    const std::string good = Pattern(512, 256);
    const std::string other = Pattern(256, 128);
    const std::string bad = JpegHeaderBytes(512, 256, 3).substr(0, 9);  // cut within the size
    const std::string flat = JpegHeaderBytes(512, 15, 3);
    const struct {
        const char* why;
        Content map;
        Content pristine;
        std::uint32_t code;
        Content mapAfter;
        Content pristineAfter;
        fs::path locked = {};
    } cases[] = {
        {"first picture", good, {}, HORIVO_OK, good, good},
        {"an older copy stays", good, other, HORIVO_OK, good, other},
        {"a bad first picture is its own copy", bad, {}, HORIVO_BAD_PICTURE, bad, bad},
        {"bad, restored", bad, good, HORIVO_OK, good, good},
        {"flat, restored", flat, good, HORIVO_OK, good, good},
        {"missing, restored", {}, good, HORIVO_OK, good, good},
        {"nothing helps", bad, bad + "!", HORIVO_BAD_PICTURE, bad + "!", bad + "!"},
        {"the copy's own fault counts", bad, flat, HORIVO_UNFIT_PICTURE, flat, flat},
        {"no copy can be made", good, {}, HORIVO_COPY_FAILED, good, {}, MapPath()},
        {"it cannot be replaced", bad, good, HORIVO_COPY_FAILED, bad, good, MapPath()},
        {"the copy cannot be read", bad, good, HORIVO_COPY_FAILED, bad, good, PristinePath()},
        {"no picture at all", {}, {}, HORIVO_COPY_FAILED, {}, {}},
    };
    const FakedImport<"GdipSaveImageToFile", decltype(Gdiplus::DllExports::GdipSaveImageToFile)>
        saves(library.module);
    EXPECT_EQ(library.GetLastSysError(), 0U);
    for (const auto& c : cases) {
        Put(c.map, c.pristine);
        {
            const UniqueFile lock(CreateFileW(c.locked.c_str(), GENERIC_READ, 0, nullptr,
                                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
            EXPECT_EQ(library.InstallMap(), c.code) << c.why;
        }
        EXPECT_TRUE(ReadFileBytes(MapPath()) == c.mapAfter) << c.why;
        EXPECT_TRUE(ReadFileBytes(PristinePath()) == c.pristineAfter) << c.why;
        EXPECT_EQ(TakeUploadWidths().size(), c.code == HORIVO_OK ? 8U : 0U) << c.why;
        if (c.locked.empty()) continue;
        EXPECT_EQ(library.GetLastSysError(), DWORD{ERROR_SHARING_VIOLATION}) << c.why;
    }
    EXPECT_EQ(saves.Calls(), 0) << "pictures that fit are not written anew";
    EXPECT_EQ(library.GetLastSysError(), DWORD{ERROR_FILE_NOT_FOUND});
}

TEST_F(InstallMapTest, JudgesThePictureByItsHeaderAndTheMachinesMemory) {
    for (const Row& row : Table("install_check")) {
        const auto number = [&row](std::size_t i) { return static_cast<unsigned>(row.Int(i)); };
        Put(JpegHeaderBytes(number(0), number(1), number(2)), {});
        const FakedImport<"GlobalMemoryStatusEx", decltype(GlobalMemoryStatusEx)> memory(
            library.module, [&row](MEMORYSTATUSEX* answer) -> BOOL {
                EXPECT_EQ(answer->dwLength, 64U);
                answer->ullAvailPhys = 1;  // what is free now does not count
                answer->ullTotalPhys = row.Big(3);
                return answer->ullTotalPhys != 0;
            });
        // The rest of the file is missing, so that the window shows a bare globe: that is for the
        // user to see.
        const std::uint32_t code = row.Text(4) == "fit"     ? HORIVO_OK
                                   : row.Text(4) == "unfit" ? HORIVO_UNFIT_PICTURE
                                                            : HORIVO_BAD_PICTURE;
        EXPECT_EQ(library.InstallMap(), code) << row.why;
    }
    EXPECT_EQ(library.GetLastSysError(), 0U) << "none of these is the system's fault";
}

TEST_F(InstallMapTest, WritesAPictureBackThatHadToShrink) {
    using Save =
        FakedImport<"GdipSaveImageToFile", decltype(Gdiplus::DllExports::GdipSaveImageToFile)>;
    bool refuse = false;
    // Wine: its encoder does not look at the quality; what it is told is all that can be seen.
    const Save saves(
        library.module, [&](Gdiplus::GpImage* image, const WCHAR* path, const CLSID* encoder,
                            const Gdiplus::EncoderParameters* parameters) {
            EXPECT_EQ(parameters->Count, 1U);
            const Gdiplus::EncoderParameter& parameter = parameters->Parameter[0];
            EXPECT_TRUE(parameter.Guid == Gdiplus::EncoderQuality);
            EXPECT_EQ(*static_cast<const ULONG*>(parameter.Value), 85U);
            return refuse ? Gdiplus::Win32Error : Save::Real(image, path, encoder, parameters);
        });
    const std::string original = Pattern(600, 300);
    EXPECT_EQ(library.InstallMap(), HORIVO_OK);
    EXPECT_TRUE(ReadFileBytes(PristinePath()) == original);
    // Of the pattern green grows to the right and red downward: it stays upright, its colours too.
    const RgbPicture saved = DecodePicture(MapPath());
    ASSERT_EQ(saved.pixels.size(), 512U * 256 * 3);
    const std::uint8_t* upperRight = &saved.pixels[3 * (8 * 512 + 500)];
    EXPECT_GT(upperRight[1], 200);
    EXPECT_LT(upperRight[0], 50);
    EXPECT_EQ(library.InstallMap(), HORIVO_OK);
    EXPECT_EQ(saves.Calls(), 1) << "what was written back fits";

    Put(original, original);
    refuse = true;
    EXPECT_EQ(library.InstallMap(), HORIVO_OK) << "the picture in memory serves all the same";
    EXPECT_EQ(saves.Calls(), 2);
}

TEST_F(InstallMapTest, HalvesTheLimitUntilTheTilesFitAndKeepsIt) {
    const std::string original = Pattern(512, 256);
    SpiedGl().maxTextureSize = 1024;
    SpiedGl().refuseAbove = 64;
    EXPECT_EQ(library.InstallMap(), HORIVO_OK);
    // 1024 and 512 leave the picture as it is, 256 shrinks it, which is then written back.
    EXPECT_THAT(TakeUploadWidths(), ElementsAre(128, 128, 64, 64, 64, 64, 64, 64, 64, 64));
    EXPECT_TRUE(ReadFileBytes(MapPath()) != original);
    // The driver's word does not lift what the test has found out.
    SpiedGl().refuseAbove = 0;
    Put(original, original);
    const HWND window = CreateMap();
    ASSERT_TRUE(WaitForTiles());
    EXPECT_THAT(TakeUploadWidths(), testing::Each(64));
    EXPECT_TRUE(ReadFileBytes(MapPath()) == original) << "only the self-test writes the picture";
    Pattern(128, 64);
    EXPECT_EQ(library.InstallMap(), HORIVO_OK);
    ASSERT_TRUE(WaitForTiles(16)) << "eight in the test window, eight in the live one";
    EXPECT_THAT(TakeUploadWidths(), testing::Each(32));
    DestroyWindow(window);
    // Below 257 nothing is left to halve: it ends, and still succeeds.
    SpiedGl().refuseAbove = 4;
    EXPECT_EQ(library.InstallMap(), HORIVO_OK);
    EXPECT_EQ(TakeUploadWidths().size(), 1U);
}

TEST_F(InstallMapTest, SaysWhyTheTestWindowWasRefused) {
    Pattern(64, 32);
    {
        const FakedImport<"wglCreateContext", decltype(wglCreateContext)> none(
            library.module, [](HDC) { return HGLRC{}; });
        EXPECT_EQ(library.InstallMap(), HORIVO_CONTEXT_FAILED);
    }
    {
        const FakedImport<"CreateWindowExW", decltype(CreateWindowExW)> none(
            library.module, [](auto...) {
                SetLastError(ERROR_NO_MORE_USER_HANDLES);
                return HWND{};
            });
        EXPECT_EQ(library.InstallMap(), HORIVO_CLASS_FAILED);
        EXPECT_EQ(library.GetLastSysError(), DWORD{ERROR_NO_MORE_USER_HANDLES});
    }
    EXPECT_EQ(library.InstallMap(), HORIVO_OK) << "a refusal is not for good";
}

}  // namespace
