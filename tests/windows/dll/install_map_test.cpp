// The self-test of a newly installed picture: which files it leaves and what it answers.
#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

#include "base/handles_win.h"
#include "image/gdiplus_win.h"
#include "support/gdiplus_pictures_win.h"
#include "support/jpeg_bytes.h"
#include "support/map_play_win.h"
#include "support/table.h"

namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

std::string ReadFileBytes(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

/// An initialised library that must never show a message box.
class InstallMapTest : public MapPlay {
protected:
    InstallMapTest() { Init(); }
    ~InstallMapTest() override {
        EXPECT_EQ(boxes, 0) << "the host shows messages, not the self-test";
        EXPECT_EQ(FindWindowW(L"Zelmo 3D map window - OpenGL version", nullptr), nullptr)
            << "the test window is left over";
    }

    /// Writes the picture and its copy; one without content is removed.
    static void Put(const std::string& map, const std::string& pristine) {
        for (const auto& [path, content] : {std::pair(MapPath(), map), {kPristine, pristine}}) {
            fs::remove(path);
            if (!content.empty()) std::ofstream(path, std::ios::binary) << content;
        }
    }
    static std::string Pattern(int width, int height) {
        PutPatternMap(width, height);
        return ReadFileBytes(MapPath());
    }
    /// Sizes of what was uploaded since the last call.
    static std::vector<int> TakeUploadWidths() {
        std::vector<int> widths;
        for (const SpiedUpload& upload : std::exchange(SpiedGl().uploads, {}))
            widths.push_back(upload.width);
        return widths;
    }
    static inline const fs::path kPristine = DataFolder() / "map0.jpg";
};

TEST_F(InstallMapTest, KeepsAPristineCopyAndFallsBackToIt) {
    const std::string good = Pattern(512, 256);
    const std::string other = Pattern(256, 128);
    const std::string bad = JpegHeaderBytes(512, 256, 3).substr(0, 9);  // cut within the size
    const std::string flat = JpegHeaderBytes(512, 15, 3);
    const struct {
        const char* why;
        std::string map, pristine;
        std::uint32_t code;
        std::string mapAfter, pristineAfter;
        fs::path locked = {};
    } cases[] = {
        {"first picture", good, "", HORIVO_OK, good, good},
        {"an older copy stays", good, other, HORIVO_OK, good, other},
        {"a bad first picture is its own copy", bad, "", HORIVO_BAD_PICTURE, bad, bad},
        {"flat, restored", flat, good, HORIVO_OK, good, good},
        {"missing, restored", "", good, HORIVO_OK, good, good},
        {"the copy's own fault counts", bad, flat, HORIVO_UNFIT_PICTURE, flat, flat},
        {"no copy can be made", good, "", HORIVO_COPY_FAILED, good, "", MapPath()},
        {"it cannot be replaced", bad, good, HORIVO_COPY_FAILED, bad, good, MapPath()},
        {"no picture at all", "", "", HORIVO_COPY_FAILED, "", ""},
    };
    for (const auto& c : cases) {
        Put(c.map, c.pristine);
        {
            const UniqueFile lock(CreateFileW(c.locked.c_str(), GENERIC_READ, 0, nullptr,
                                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
            EXPECT_EQ(library.InstallMap(), c.code) << c.why;
        }
        EXPECT_TRUE(ReadFileBytes(MapPath()) == c.mapAfter) << c.why;
        EXPECT_TRUE(ReadFileBytes(kPristine) == c.pristineAfter) << c.why;
        EXPECT_EQ(TakeUploadWidths().size(), c.code == HORIVO_OK ? 8U : 0U) << c.why;
        if (c.locked.empty()) continue;
        EXPECT_EQ(library.GetLastSysError(), DWORD{ERROR_SHARING_VIOLATION});
    }
    EXPECT_EQ(library.GetLastSysError(), DWORD{ERROR_FILE_NOT_FOUND});
}

TEST_F(InstallMapTest, JudgesThePictureByItsHeaderAndTheMachinesMemory) {
    for (const ::Row& row : Table("install_check")) {
        const auto number = [&row](std::size_t i) { return static_cast<unsigned>(row.Int(i)); };
        Put(JpegHeaderBytes(number(0), number(1), number(2)), "");
        const FakedImport<"GlobalMemoryStatusEx", decltype(GlobalMemoryStatusEx)> memory(
            library.module, [&row](MEMORYSTATUSEX* answer) {
                EXPECT_EQ(answer->dwLength, 64U);
                answer->ullAvailPhys = 1;  // what is free now does not count
                answer->ullTotalPhys = row.Big(3);
                return answer->ullTotalPhys != 0;
            });
        // The rest of the file is missing: the window shows a bare globe, for the user to see.
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
    const Save saves(library.module, [&](auto* image, auto* path, auto* encoder, auto* told) {
        EXPECT_TRUE(told->Count == 1 && told->Parameter[0].Guid == Gdiplus::EncoderQuality);
        EXPECT_EQ(*static_cast<const ULONG*>(told->Parameter[0].Value), 85U);
        return refuse ? Gdiplus::Win32Error : Save::Real(image, path, encoder, told);
    });
    const std::string original = Pattern(600, 300);
    Play("install");
    EXPECT_TRUE(ReadFileBytes(kPristine) == original);
    // Of the pattern green grows to the right and red downward: it stays upright, its colours too.
    const RgbPicture saved = DecodePicture(MapPath());
    ASSERT_EQ(saved.pixels.size(), 512U * 256 * 3);
    const std::uint8_t* upperRight = &saved.pixels[3 * (8 * 512 + 500)];
    EXPECT_GT(upperRight[1], 200);
    EXPECT_LT(upperRight[0], 50);
    Play("install");
    EXPECT_EQ(saves.Calls(), 1) << "what was written back fits";
    Put(original, original);
    refuse = true;
    Play("install", "the picture in memory serves all the same");
}

TEST_F(InstallMapTest, HalvesTheLimitUntilTheTilesFitAndKeepsIt) {
    const std::string original = Pattern(512, 256);
    SpiedGl().maxTextureSize = 1024;
    SpiedGl().refuseAbove = 64;
    Play("install");
    // 1024 and 512 leave the picture as it is, 256 shrinks it, which is then written back.
    EXPECT_THAT(TakeUploadWidths(), ElementsAre(128, 128, 64, 64, 64, 64, 64, 64, 64, 64));
    EXPECT_TRUE(ReadFileBytes(MapPath()) != original);
    // The driver's word does not lift what the test has found out.
    SpiedGl().refuseAbove = 0;
    Put(original, original);
    Play("create a; settle");
    EXPECT_THAT(TakeUploadWidths(), testing::Each(64));
    EXPECT_TRUE(ReadFileBytes(MapPath()) == original) << "only the self-test writes the picture";
    Pattern(128, 64);
    Play("install; settle");
    EXPECT_EQ(SpiedGl().uploads.size(), 16U) << "eight in the test window, eight in the live one";
    EXPECT_THAT(TakeUploadWidths(), testing::Each(32));
    // Below 257 nothing is left to halve: it ends, and still succeeds.
    SpiedGl().refuseAbove = 4;
    Play("close; install");
    EXPECT_EQ(TakeUploadWidths().size(), 1U);
}

}  // namespace
