// The renderer that Windows falls back to without a driver, and on remote sessions: OpenGL 1.1, no
// extensions, small textures. All of a map's life has to work on it.
#include <gmock/gmock.h>

#include <bit>

#include "support/gdiplus_pictures_win.h"
#include "support/gl_listing_win.h"
#include "support/gl_spy_win.h"
#include "support/map_play_win.h"

namespace {

using testing::Contains;
using testing::Each;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr GLsizei kLargestTexture = 1024;
constexpr int kAssetWidth = 4096;

class WorstRendererTest : public MapPlay {
protected:
    WorstRendererTest() {
        SpiedGl().maxTextureSize = kLargestTexture;
        SpiedGl().refuseAbove = kLargestTexture;
        AddCity(L"Paris", L"France", 42.0, 3.0, 30);
        photos.PutCity(L"France\\Paris", 2, 96, 64);
        consent = 1;
        PutPatternMap(kAssetWidth, kAssetWidth / 2);
    }
    /// What OpenGL 1.1 knows: sizes that are powers of two, the formats of its time.
    static void ExpectOldUploadsOnly() {
        for (const SpiedUpload& upload : SpiedGl().uploads) {
            EXPECT_TRUE(std::has_single_bit(static_cast<unsigned>(upload.width)));
            EXPECT_TRUE(std::has_single_bit(static_cast<unsigned>(upload.height)));
            EXPECT_LE(std::max(upload.width, upload.height), kLargestTexture);
            EXPECT_THAT(upload.format, testing::AnyOf(GL_RGB, GL_RGBA));
            EXPECT_THAT(upload.internalFormat, testing::AnyOf(3, 4, GL_RGB, GL_RGBA));
            EXPECT_EQ(upload.border, 0);
        }
    }

private:
    using GetString = FakedImport<"glGetString", decltype(glGetString)>;
    GetString strings_{library.module, [](GLenum name) {
                           const char* text = "";
                           if (name == GL_RENDERER) text = "GDI Generic";
                           if (name == GL_VENDOR) text = "Fallback Inc.";
                           if (name == GL_VERSION) text = "1.1.0";
                           return reinterpret_cast<const GLubyte*>(text);
                       }};
    FakedImport<"wglGetProcAddress", decltype(wglGetProcAddress)> noExtensions_{
        library.module, [](LPCSTR) { return PROC{}; }};
};

TEST_F(WorstRendererTest, MapIsShrunkToFitAndAllWorks) {
    SpiedGl().keepCalls = true;
    Open();
    EXPECT_EQ(SpiedGl().uploads.size(), 8U);
    EXPECT_THAT(SpiedGl().uploads, Each(testing::Field(&SpiedUpload::width, kLargestTexture / 4)));
    ExpectOldUploadsOnly();
    // Neither clamp mode, nor a property that came with an extension.
    for (const std::string& call : SpiedCalls("glTexParameteri")) {
        EXPECT_THAT(SpiedNumbers(call)[1],
                    testing::AnyOf(GL_TEXTURE_MIN_FILTER, GL_TEXTURE_MAG_FILTER));
    }
    EXPECT_THAT(SpiedCalls("glLightModeli"), testing::IsEmpty()) << "separate specular colour";

    Key(window, 'I');
    const auto words = Look().Words();
    EXPECT_THAT(words, Contains(HasSubstr("texture size 1024x512(max 4096x2048)")));
    for (const char* title : {"Renderer: ", ", Version: ", "Vendor: "})
        EXPECT_THAT(words, Contains(title));
    for (const char* told : {"GDI", "1.1", "Fallback", "llvmpipe", "Mesa"})
        EXPECT_THAT(words, Each(Not(HasSubstr(told))));
    Key(window, 'I');

    SpiedGl().uploads.clear();
    SendMessageW(window, HORIVO_MSG_CITY, 0, reinterpret_cast<LPARAM>(cities.data()));
    EXPECT_THAT(Look().Words(), Contains("Paris"));
    EXPECT_GE(Look().images.size(), 2U) << "photos";
    ExpectOldUploadsOnly();

    SpiedGl().uploads.clear();
    Key(window, 'H');
    EXPECT_TRUE(WaitForTiles());
    ExpectOldUploadsOnly();
}

TEST_F(WorstRendererTest, InstallMapWritesThePictureThatFits) {
    Init();
    EXPECT_EQ(library.InstallMap(), HORIVO_OK);
    const RgbPicture installed = DecodePicture(MapPath());
    EXPECT_EQ(installed.width, kLargestTexture);
    EXPECT_EQ(installed.height, kLargestTexture / 2);
    EXPECT_EQ(DecodePicture(DataFolder() / "map0.jpg").width, kAssetWidth);
    ExpectOldUploadsOnly();
}

}  // namespace
