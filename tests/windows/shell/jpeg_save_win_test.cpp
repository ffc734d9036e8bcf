// Textures saved as JPEG files by the platform's real GDI+.

#include <gtest/gtest.h>

#include <cstdlib>

#include "image/gdiplus_win.h"
#include "image/jpeg_probe_win.h"
#include "support/import_spy_win.h"
#include "windows/shell/image_files_win.h"

namespace {

using JpegSaveTest = ImageFileTest;

TEST_F(JpegSaveTest, SavesBackToItsOwnFileAndKeepsPicturesUpright) {
    fs::copy_file(Asset("map.jpg"), Path(L"map.jpg"));
    CGLTexture map;
    ASSERT_EQ(map.LoadFromFile(Path(L"map.jpg"), 512, 256), kLoadedShrunk);
    const Bytes before(map.GetPixels(), map.GetPixels() + 512 * 256 * 3);
    ASSERT_TRUE(map.SaveJpeg(Path(L"map.jpg"), 85));
    EXPECT_EQ(Bytes(map.GetPixels(), map.GetPixels() + 512 * 256 * 3), before);

    CGLTexture again;
    ASSERT_EQ(again.LoadFromFile(Path(L"map.jpg"), 512, 256), kLoadedUnchanged);
    std::int64_t difference = 0;
    for (std::size_t i = 0; i < before.size(); ++i) {
        difference += std::abs(again.GetPixels()[i] - before[i]);
    }
    // Upside down, or with red and blue exchanged, it is tens.
    EXPECT_LT(static_cast<double>(difference) / static_cast<double>(before.size()), 6.0);
}

TEST_F(JpegSaveTest, SavesOnlyThePictureOutOfALargerBuffer) {
    CJpegTexture texture;
    ASSERT_EQ(texture.LoadFromFile(Write(L"colours.bmp", ColourBitmap(24)), 64, 64), 1);
    ASSERT_TRUE(texture.SaveJpeg(Path(L"small.jpg"), 100));
    ASSERT_TRUE(texture.ConvertToRgba(255));
    ASSERT_TRUE(texture.SaveJpeg(Path(L"four_bytes.jpg"), 100));
    for (const wchar_t* name : {L"small.jpg", L"four_bytes.jpg"}) {
        std::int32_t width = 0;
        std::int32_t height = 0;
        std::int32_t components = 0;
        EXPECT_TRUE(ProbeJpeg(Path(name), width, height, components));
        EXPECT_EQ(width, 2);
        EXPECT_EQ(height, 2);
        EXPECT_EQ(components, 3);
    }
}

TEST_F(JpegSaveTest, AFailedSaveKeepsTheTexture) {
    CJpegTexture texture;
    ASSERT_EQ(texture.LoadFromFile(Write(L"colours.bmp", ColourBitmap(24)), 0, 0), 1);
    EXPECT_FALSE(texture.SaveJpeg(Path(L"no folder\\map.jpg"), 85));
    EXPECT_FALSE(texture.SaveJpeg(L"", 85));
    EXPECT_EQ(TexturePixel(texture, 0, 0), kRed);
}

struct SavedWith {
    GUID parameter = {};
    ULONG count = 0, values = 0, type = 0, quality = 0;
};
SavedWith savedWith;

Gdiplus::GpStatus WINGDIPAPI RecordSave(Gdiplus::GpImage*, const WCHAR*, const CLSID*,
                                        const Gdiplus::EncoderParameters* parameters) {
    const Gdiplus::EncoderParameter& first = parameters->Parameter[0];
    savedWith = {first.Guid, parameters->Count, first.NumberOfValues, first.Type,
                 *static_cast<const ULONG*>(first.Value)};
    return Gdiplus::Ok;
}

// Wine: its encoder does not look at the quality, so what it is told is all that can be seen.
TEST_F(JpegSaveTest, TellsTheEncoderTheQuality) {
    CJpegTexture texture;
    ASSERT_EQ(texture.LoadFromFile(Write(L"colours.bmp", ColourBitmap(24)), 0, 0), 1);
    void* const real = ReplaceImport(GetModuleHandleW(nullptr), "GdipSaveImageToFile",
                                     reinterpret_cast<void*>(&RecordSave));
    ASSERT_NE(real, nullptr);
    const GUID quality = {
        0x1D5BE4B5, 0xFA4A, 0x452D, {0x9C, 0xDD, 0x5D, 0xB3, 0x51, 0x05, 0xE7, 0xEB}};
    const struct {
        int asked;
        ULONG told;
    } cases[] = {{85, 85}, {1, 1}, {100, 100}, {0, 75}, {-5, 75}};
    for (const auto& c : cases) {
        savedWith = {};
        EXPECT_TRUE(texture.SaveJpeg(Path(L"map.jpg"), c.asked));
        EXPECT_EQ(savedWith.quality, c.told);
        EXPECT_EQ(savedWith.count, 1U);
        EXPECT_EQ(savedWith.values, 1U);
        EXPECT_EQ(savedWith.type, 4U);
        EXPECT_TRUE(IsEqualGUID(savedWith.parameter, quality));
    }
    ReplaceImport(GetModuleHandleW(nullptr), "GdipSaveImageToFile", real);
}

}  // namespace
