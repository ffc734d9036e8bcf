// The self-test of a newly installed picture: which files it leaves and what it answers.
#include <gmock/gmock.h>

#include <iterator>

#include "image/gdiplus_win.h"
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
        Play("boxes 0", "the host shows messages, not the self-test");
        EXPECT_EQ(FindWindowW(L"Zelmo 3D map window - OpenGL version", nullptr), nullptr)
            << "the test window is left over";
    }

    /// Writes the picture and its copy; one without content is removed.
    void Put(const std::string& map, const std::string& copy) const {
        for (const auto& [path, content] : {std::pair(MapPath(), map), {pristine, copy}}) {
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
    const fs::path pristine = DataFolder() / "map0.jpg";
};

TEST_F(InstallMapTest, KeepsAPristineCopyAndFallsBackToIt) {
    const std::string good = Pattern(512, 256);
    const std::string other = Pattern(256, 128);
    const std::string bad = JpegHeaderBytes(512, 256, 3).substr(0, 9);  // cut within the size
    const std::string flat = JpegHeaderBytes(512, 15, 3);
    const struct {
        const char* why;
        std::string map, copy;
        std::uint32_t code;
        std::string mapAfter, copyAfter;
    } cases[] = {
        {"first picture", good, "", HORIVO_OK, good, good},
        {"an older copy stays", good, other, HORIVO_OK, good, other},
        {"a bad first picture is its own copy", bad, "", HORIVO_BAD_PICTURE, bad, bad},
        {"flat, restored", flat, good, HORIVO_OK, good, good},
        {"missing, restored", "", good, HORIVO_OK, good, good},
        {"the copy's own fault counts", bad, flat, HORIVO_UNFIT_PICTURE, flat, flat},
        {"no picture at all", "", "", HORIVO_COPY_FAILED, "", ""},
    };
    for (const auto& c : cases) {
        Put(c.map, c.copy);
        EXPECT_EQ(library.InstallMap(), c.code) << c.why;
        EXPECT_TRUE(ReadFileBytes(MapPath()) == c.mapAfter) << c.why;
        EXPECT_TRUE(ReadFileBytes(pristine) == c.copyAfter) << c.why;
        EXPECT_EQ(TakeUploadWidths().size(), c.code == HORIVO_OK ? 8U : 0U) << c.why;
    }
    Play("error no-file");
    Put(bad, good);
    const UniqueFile reader(
        CreateFileW(MapPath().c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    Play("install no-copy; error 32", "it cannot be replaced: a sharing violation");
}

TEST_F(InstallMapTest, JudgesThePictureByItsHeaderAndTheMachinesMemory) {
    for (const Row& row : Table("install_check")) {
        const auto number = [&row](std::size_t i) { return static_cast<unsigned>(row.Int(i)); };
        const FakedImport<"GlobalMemoryStatusEx", decltype(GlobalMemoryStatusEx)> memory(
            library.module, [&row](MEMORYSTATUSEX* answer) {
                EXPECT_EQ(answer->dwLength, 64U);
                answer->ullTotalPhys = row.Big(3);
                return answer->ullTotalPhys != 0;
            });
        // The rest of the file is missing: the window shows a bare globe, for the user to see.
        Put(JpegHeaderBytes(number(0), number(1), number(2)), "");
        EXPECT_EQ(library.InstallMap(), number(4)) << row.why;
    }
    Play("error none", "none of these is the system's fault");
}

TEST_F(InstallMapTest, HalvesTheLimitUntilTheTilesFitWritesThePictureBackAndKeepsTheLimit) {
    using Save =
        FakedImport<"GdipSaveImageToFile", decltype(Gdiplus::DllExports::GdipSaveImageToFile)>;
    // Wine: its encoder does not look at the quality; what it is told is all that can be seen.
    const Save saves(library.module, [&](auto* image, auto* path, auto* encoder, auto* how) {
        EXPECT_TRUE(how->Count == 1 && how->Parameter[0].Guid == Gdiplus::EncoderQuality);
        EXPECT_EQ(*static_cast<const ULONG*>(how->Parameter[0].Value), 85U);
        return Save::Real(image, path, encoder, how);
    });
    const std::string original = Pattern(512, 256);
    SpiedGl().maxTextureSize = 1024;
    SpiedGl().refuseAbove = 64;
    Play("install");
    // 1024 and 512 leave the picture as it is, 256 shrinks it, which is then written back.
    EXPECT_THAT(TakeUploadWidths(), ElementsAre(128, 128, 64, 64, 64, 64, 64, 64, 64, 64));
    EXPECT_TRUE(ReadFileBytes(pristine) == original);
    // Of the pattern green grows to the right and red downward: it stays upright, its colours too.
    const RgbPicture saved = DecodePicture(MapPath());
    ASSERT_EQ(saved.pixels.size(), 256U * 128 * 3);
    const std::uint8_t* upperRight = &saved.pixels[3 * (4 * 256 + 250)];
    EXPECT_TRUE(upperRight[1] > 200 && upperRight[0] < 50);
    // The driver's word does not lift what the test has found out.
    SpiedGl().refuseAbove = 0;
    Put(original, original);
    Play("create a; settle");
    EXPECT_THAT(TakeUploadWidths(), testing::Each(64));
    EXPECT_EQ(saves.Calls(), 1) << "only the self-test writes the picture";
    Play("install; settle");
    EXPECT_EQ(TakeUploadWidths().size(), 16U) << "in the test window, and in the live one";
    // Below 257 nothing is left to halve: it ends, and still succeeds.
    SpiedGl().refuseAbove = 4;
    Play("close; install");
    EXPECT_EQ(TakeUploadWidths().size(), 1U);
}

}  // namespace
