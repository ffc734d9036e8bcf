// The self-test of a newly installed picture: which files it leaves and what it answers.
#include <gmock/gmock.h>

#include <fstream>
#include <iterator>
#include <optional>

#include "image/gdiplus_win.h"
#include "support/faked_import_win.h"
#include "support/gdiplus_pictures_win.h"
#include "support/gl_spy_win.h"
#include "support/jpeg_bytes.h"
#include "support/map_host_win.h"
#include "support/resource_count_win.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

constexpr wchar_t kMapClass[] = L"Zelmo 3D map window - OpenGL version";
constexpr std::uint64_t kPlenty = std::uint64_t{1} << 40U;

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
        EXPECT_EQ(FindWindowW(kMapClass, nullptr), nullptr) << "the test window is left over";
    }

    static fs::path PristinePath() { return DataFolder() / "map0.jpg"; }
    static void Put(const fs::path& path, const Content& content) {
        fs::remove(path);
        if (content) std::ofstream(path, std::ios::binary) << *content;
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
    /// What the information line of `window` says.
    static std::string InfoLine(HWND window) {
        SpiedGl().keepTexts = true;
        SpiedGl().texts.clear();
        Paint(window);
        for (const std::string& text : SpiedGl().texts)
            if (text.starts_with("per. factor")) return text;
        return {};
    }

private:
    FakedImport<"MessageBoxW", decltype(MessageBoxW)> boxes_{
        library.module, [](HWND, LPCWSTR, LPCWSTR, UINT) { return IDOK; }};
};

TEST_F(InstallMapTest, KeepsAPristineCopyAndFallsBackToIt) {
    const std::string good = Pattern(512, 256);
    const std::string other = Pattern(256, 128);
    const std::string bad = "no picture";
    const std::string grey = JpegHeaderBytes(512, 256, 1);
    const std::string flat = JpegHeaderBytes(512, 15, 3);
    const struct {
        const char* why;
        Content map;
        Content pristine;
        std::uint32_t code;
        Content mapAfter;
        Content pristineAfter;
    } cases[] = {
        {"first picture", good, {}, HORIVO_OK, good, good},
        {"an older copy stays", good, other, HORIVO_OK, good, other},
        {"a bad first picture is its own copy", bad, {}, HORIVO_BAD_PICTURE, bad, bad},
        {"a grey first picture too", grey, {}, HORIVO_UNFIT_PICTURE, grey, grey},
        {"bad, restored", bad, good, HORIVO_OK, good, good},
        {"grey, restored", grey, good, HORIVO_OK, good, good},
        {"missing, restored", {}, good, HORIVO_OK, good, good},
        {"nothing helps", bad, bad + "!", HORIVO_BAD_PICTURE, bad + "!", bad + "!"},
        {"the copy's own fault counts", bad, flat, HORIVO_UNFIT_PICTURE, flat, flat},
        {"no picture at all", {}, {}, HORIVO_COPY_FAILED, {}, {}},
    };
    const FakedImport<"GdipSaveImageToFile", decltype(Gdiplus::DllExports::GdipSaveImageToFile)>
        saves(library.module);
    for (const auto& c : cases) {
        Put(MapPath(), c.map);
        Put(PristinePath(), c.pristine);
        EXPECT_EQ(library.InstallMap(), c.code) << c.why;
        EXPECT_TRUE(ReadFileBytes(MapPath()) == c.mapAfter) << c.why;
        EXPECT_TRUE(ReadFileBytes(PristinePath()) == c.pristineAfter) << c.why;
        EXPECT_EQ(TakeUploadWidths().size(), c.code == HORIVO_OK ? 8U : 0U) << c.why;
    }
    EXPECT_EQ(saves.Calls(), 0) << "pictures that fit are not written anew";
    EXPECT_EQ(library.GetLastSysError(), DWORD{ERROR_FILE_NOT_FOUND});
}

TEST_F(InstallMapTest, JudgesThePictureByItsHeader) {
    const std::string good = Pattern(64, 32);
    const struct {
        const char* why;
        std::string picture;
        std::uint32_t code;
    } cases[] = {
        {"smallest", Pattern(16, 16), HORIVO_OK},
        {"too narrow", Pattern(15, 16), HORIVO_UNFIT_PICTURE},
        {"too flat", Pattern(16, 15), HORIVO_UNFIT_PICTURE},
        {"grey", JpegHeaderBytes(64, 32, 1), HORIVO_UNFIT_PICTURE},
        {"two components", JpegHeaderBytes(64, 32, 2), HORIVO_UNFIT_PICTURE},
        {"five components", JpegHeaderBytes(64, 32, 5), HORIVO_UNFIT_PICTURE},
        {"empty file", "", HORIVO_BAD_PICTURE},
        {"another kind", "\x89PNG\r\n\x1A\n", HORIVO_BAD_PICTURE},
        {"cut in the start", good.substr(0, 1), HORIVO_BAD_PICTURE},
        {"cut before the size", good.substr(0, 20), HORIVO_BAD_PICTURE},
        {"cut in the size", JpegHeaderBytes(64, 32, 3).substr(0, 9), HORIVO_BAD_PICTURE},
        // The header is sound and the window shows a bare globe: that is for the user to see.
        {"cut behind the size", JpegHeaderBytes(64, 32, 3), HORIVO_OK},
    };
    for (const auto& c : cases) {
        Put(MapPath(), c.picture);
        Put(PristinePath(), {});
        EXPECT_EQ(library.InstallMap(), c.code) << c.why;
    }
    EXPECT_EQ(library.GetLastSysError(), 0U) << "none of these is the system's fault";
}

TEST_F(InstallMapTest, TakesAThirdOfTheMemoryAndNoByteMore) {
    const std::uint64_t bytes = std::uint64_t{64} * 32 * 3;
    const std::uint64_t assumed = std::uint64_t{192} << 20U;  // where Windows does not tell
    const struct {
        const char* why;
        std::string picture;
        std::optional<std::uint64_t> memory;
        std::uint32_t code;
    } cases[] = {
        {"exactly a third", Pattern(64, 32), 3 * bytes, HORIVO_OK},
        {"one byte short", Pattern(64, 32), 3 * bytes - 1, HORIVO_BAD_PICTURE},
        {"largest of all", JpegHeaderBytes(65535, 65535, 4), kPlenty, HORIVO_OK},
        {"no 32-bit product", JpegHeaderBytes(65535, 65535, 4), 1U << 30U, HORIVO_BAD_PICTURE},
        {"assumed memory", JpegHeaderBytes(8192, 2048, 4), std::nullopt, HORIVO_OK},
        {"above it", JpegHeaderBytes(8192, 2049, 4), std::nullopt, HORIVO_BAD_PICTURE},
    };
    static_assert(assumed / 3 == std::uint64_t{8192} * 2048 * 4);
    for (const auto& c : cases) {
        Put(MapPath(), c.picture);
        Put(PristinePath(), {});
        const FakedImport<"GlobalMemoryStatusEx", decltype(GlobalMemoryStatusEx)> memory(
            library.module, [&c](MEMORYSTATUSEX* answer) -> BOOL {
                EXPECT_EQ(answer->dwLength, 64U);
                answer->ullAvailPhys = 1;  // what is free now does not count
                answer->ullTotalPhys = c.memory.value_or(1);
                return c.memory.has_value();
            });
        EXPECT_EQ(library.InstallMap(), c.code) << c.why;
    }
}

TEST_F(InstallMapTest, SaysWhyAFileCannotBeCopied) {
    const std::string good = Pattern(64, 32);
    const struct {
        const char* why;
        Content map;
        Content pristine;
        fs::path locked;
    } cases[] = {
        {"no copy can be made", good, {}, MapPath()},
        {"the picture cannot be replaced", "bad", good, MapPath()},
        {"the copy cannot be read", "bad", good, PristinePath()},
    };
    for (const auto& c : cases) {
        Put(MapPath(), c.map);
        Put(PristinePath(), c.pristine);
        const HANDLE lock = CreateFileW(c.locked.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
        EXPECT_EQ(library.InstallMap(), HORIVO_COPY_FAILED) << c.why;
        EXPECT_EQ(library.GetLastSysError(), DWORD{ERROR_SHARING_VIOLATION}) << c.why;
        CloseHandle(lock);
        EXPECT_TRUE(ReadFileBytes(MapPath()) == c.map) << c.why;
        EXPECT_TRUE(ReadFileBytes(PristinePath()) == c.pristine) << c.why;
    }
    Put(MapPath(), good);
    Put(PristinePath(), {});
    const FakedImport<"CopyFileW", decltype(CopyFileW)> readOnly(
        library.module, [](LPCWSTR, LPCWSTR, BOOL failIfExists) -> BOOL {
            EXPECT_FALSE(failIfExists);
            SetLastError(ERROR_WRITE_PROTECT);
            return FALSE;
        });
    EXPECT_EQ(library.InstallMap(), HORIVO_COPY_FAILED);
    EXPECT_EQ(library.GetLastSysError(), DWORD{ERROR_WRITE_PROTECT});
}

TEST_F(InstallMapTest, WritesAPictureBackThatHadToShrink) {
    using Save =
        FakedImport<"GdipSaveImageToFile", decltype(Gdiplus::DllExports::GdipSaveImageToFile)>;
    bool refuse = false;
    // Wine: its encoder does not look at the quality; what it is told is all that can be seen.
    const Save saves(
        library.module, [&](Gdiplus::GpImage* image, const WCHAR* path, const CLSID* encoder,
                            const Gdiplus::EncoderParameters* parameters) {
            EXPECT_EQ(fs::path(path), MapPath());
            EXPECT_EQ(parameters->Count, 1U);
            const Gdiplus::EncoderParameter& parameter = parameters->Parameter[0];
            EXPECT_TRUE(parameter.Guid == Gdiplus::EncoderQuality);
            EXPECT_EQ(*static_cast<const ULONG*>(parameter.Value), 85U);
            return refuse ? Gdiplus::Win32Error : Save::Real(image, path, encoder, parameters);
        });
    const std::string original = Pattern(600, 300);
    EXPECT_EQ(library.InstallMap(), HORIVO_OK);
    EXPECT_EQ(saves.Calls(), 1);
    EXPECT_TRUE(ReadFileBytes(PristinePath()) == original);
    // Of the pattern green grows to the right and red downward: it stays upright, its colours too.
    const RgbPicture saved = DecodePicture(MapPath());
    ASSERT_EQ(saved.pixels.size(), 512U * 256 * 3);
    const std::uint8_t* upperRight = &saved.pixels[3 * (8 * 512 + 500)];
    EXPECT_GT(upperRight[1], 200);
    EXPECT_LT(upperRight[0], 50);
    EXPECT_EQ(library.InstallMap(), HORIVO_OK);
    EXPECT_EQ(saves.Calls(), 1) << "what was written back fits";

    Put(MapPath(), original);
    refuse = true;
    EXPECT_EQ(library.InstallMap(), HORIVO_OK) << "the picture in memory serves all the same";
    EXPECT_EQ(saves.Calls(), 2);
    EXPECT_TRUE(ReadFileBytes(MapPath()) == original);
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
    Put(MapPath(), original);
    const HWND window = CreateMap();
    ASSERT_TRUE(WaitForTiles());
    EXPECT_THAT(TakeUploadWidths(), testing::Each(64));
    Key(window, 'I');
    EXPECT_THAT(InfoLine(window), testing::HasSubstr("texture size 256x128(max 1024x512)"));
    EXPECT_TRUE(ReadFileBytes(MapPath()) == original) << "only the self-test writes the picture";
    DestroyWindow(window);
    // Below 257 nothing is left to halve: it ends, and still succeeds.
    SpiedGl().refuseAbove = 4;
    TakeUploadWidths();
    EXPECT_EQ(library.InstallMap(), HORIVO_OK);
    EXPECT_EQ(TakeUploadWidths().size(), 1U);
}

TEST_F(InstallMapTest, SaysWhyTheTestWindowWasRefusedAndLeavesNothing) {
    Pattern(64, 32);
    EXPECT_EQ(library.InstallMap(), HORIVO_OK);
    const ResourceCount before = CountResources();
    {
        const FakedImport<"wglCreateContext", decltype(wglCreateContext)> none(
            library.module, [](HDC) -> HGLRC {
                SetLastError(ERROR_NO_SYSTEM_RESOURCES);
                return nullptr;
            });
        EXPECT_EQ(library.InstallMap(), HORIVO_CONTEXT_FAILED);
        EXPECT_EQ(library.GetLastSysError(), DWORD{ERROR_NO_SYSTEM_RESOURCES});
    }
    {
        const FakedImport<"CreateWindowExW", decltype(CreateWindowExW)> none(
            library.module,
            [](DWORD, LPCWSTR, LPCWSTR, DWORD, int, int, int, int, HWND, HMENU, HINSTANCE,
               LPVOID) -> HWND {
                SetLastError(ERROR_NO_MORE_USER_HANDLES);
                return nullptr;
            });
        EXPECT_EQ(library.InstallMap(), HORIVO_CLASS_FAILED);
        EXPECT_EQ(library.GetLastSysError(), DWORD{ERROR_NO_MORE_USER_HANDLES});
    }
    EXPECT_EQ(library.InstallMap(), HORIVO_OK) << "a refusal is not for good";
    const ResourceCount after = CountResources();
    EXPECT_EQ(after.kernelHandles, before.kernelHandles);
    EXPECT_EQ(after.gdiObjects, before.gdiObjects);
}

TEST_F(InstallMapTest, LiveWindowShowsTheNewPictureAfterwards) {
    Pattern(512, 256);
    const HWND window = CreateMap();
    ASSERT_TRUE(WaitForTiles());
    TakeUploadWidths();
    Key(window, 'I');
    Pattern(256, 128);
    EXPECT_EQ(library.InstallMap(), HORIVO_OK);
    ASSERT_TRUE(WaitForTiles(16)) << "eight in the test window, eight in the live one";
    EXPECT_THAT(TakeUploadWidths(), testing::Each(64));
    EXPECT_THAT(InfoLine(window), testing::HasSubstr("texture size 256x128"));
    EXPECT_TRUE(IsWindow(window));
    DestroyWindow(window);
}

}  // namespace
