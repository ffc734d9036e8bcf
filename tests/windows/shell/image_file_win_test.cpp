// Picture files through the platform's real GDI+: opening, probing, converting.

#include "image/image_file_win.h"

#include <gtest/gtest.h>

#include <cstdlib>

#include "base/handles_win.h"
#include "image/jpeg_probe_win.h"
#include "support/import_spy_win.h"
#include "windows/shell/image_files_win.h"

namespace {

double Luma(int red, int green, int blue) { return 0.299 * red + 0.587 * green + 0.114 * blue; }

TEST_F(ImageFileTest, DecodesTheMapLikeAnotherDecoder) {
    CJpegTexture texture;
    ASSERT_EQ(texture.LoadFromFile(Asset("map.jpg").wstring(), 0, 0), kLoadedUnchanged);
    ASSERT_EQ(texture.GetWidth(), 4096);
    ASSERT_EQ(texture.GetHeight(), 2048);
    // 64 x 48 points as libjpeg-turbo's djpeg decodes them, see tests/data/README.md.
    const Bytes samples = Read(Asset("../tests/data/map_samples.rgb"));
    ASSERT_EQ(samples.size(), 64U * 48 * 3);
    int farOff = 0;
    for (int row = 0; row < 48; ++row) {
        for (int column = 0; column < 64; ++column) {
            const auto pixel = TexturePixel(texture, 32 + 64 * column + row % 4, 21 + 42 * row);
            const std::uint8_t* const sample =
                &samples[static_cast<std::size_t>((row * 64 + column) * 3)];
            for (int c = 0; c < 3; ++c) farOff += std::abs(pixel[c] - sample[c]) > 2 ? 1 : 0;
            ASSERT_NEAR(Luma(pixel[0], pixel[1], pixel[2]), Luma(sample[0], sample[1], sample[2]),
                        2.5)
                << column << ", " << row;
        }
    }
    // Decoders interpolate the halved colour of a JPEG in different ways, at edges visibly.
    EXPECT_LT(farOff, 64 * 48 * 3 * 3 / 100) << "values of 9216 that differ by more than 2";
}

TEST_F(ImageFileTest, ReadsEveryFormatAsTopToBottomRgb) {
    for (const std::uint32_t bits : {24U, 32U}) {
        CJpegTexture texture;
        ASSERT_EQ(texture.LoadFromFile(Write(L"colours.bmp", ColourBitmap(bits)), 0, 0), 1) << bits;
        EXPECT_EQ(texture.GetBytesPerPixel(), 3);
        EXPECT_EQ(TexturePixel(texture, 0, 0), kRed) << bits;
        EXPECT_EQ(TexturePixel(texture, 1, 0), kGreen) << bits;
        EXPECT_EQ(TexturePixel(texture, 0, 1), kBlue) << bits;
        EXPECT_EQ(TexturePixel(texture, 1, 1), kWhite) << bits;
    }
    CJpegTexture grey;
    ASSERT_EQ(grey.LoadFromFile(Write(L"grey.bmp", GreyBitmap()), 0, 0), kLoadedUnchanged);
    EXPECT_EQ(TexturePixel(grey, 0, 0), (std::array{10, 10, 10}));
    EXPECT_EQ(TexturePixel(grey, 1, 1), (std::array{255, 255, 255}));
}

TEST_F(ImageFileTest, ReadsAPngWithAlpha) {
    {
        Gdiplus::Bitmap bitmap(3, 2, PixelFormat32bppARGB);
        for (int i = 0; i < 6; ++i) bitmap.SetPixel(i % 3, i / 3, Gdiplus::Color(0xFF0000FF));
        bitmap.SetPixel(2, 0, Gdiplus::Color(0xFFFF0000));
        CLSID png = {};
        ASSERT_GE(GetEncoderClsid(L"image/png", png), 0);
        ASSERT_EQ(bitmap.Save(Path(L"buttons.png").c_str(), &png, nullptr), Gdiplus::Ok);
    }
    const auto picture = OpenPicture(Path(L"buttons.png"));
    ASSERT_TRUE(picture->IsOk());
    EXPECT_EQ(picture->GetPixelFormat(), kPixelFormat32bppArgb);
    const PixelRows rows = picture->LockForReading();
    ASSERT_NE(rows.firstRow, nullptr);
    EXPECT_EQ(rows.firstRow[2 * 4 + 2], 255) << "red of the upper right pixel";
    EXPECT_EQ(rows.firstRow[rows.stride + 2 * 4], 255) << "blue of the one below";
    EXPECT_EQ(picture->LockForReading().firstRow, nullptr) << "locked already";
    picture->Unlock();

    CJpegTexture texture;
    ASSERT_EQ(texture.LoadFromFile(Path(L"buttons.png"), 64, 64), kLoadedUnchanged);
    EXPECT_EQ(TexturePixel(texture, 2, 0), kRed);
    EXPECT_EQ(TexturePixel(texture, 0, 1), kBlue);
}

TEST_F(ImageFileTest, FindsEncodersByTheirExactMimeType) {
    const CLSID untouched = {1, 2, 3, {4, 5, 6, 7, 8, 9, 10, 11}};
    for (const wchar_t* name : {L"image/JPEG", L"image/jpe", L"image/jpegs", L""}) {
        CLSID clsid = untouched;
        EXPECT_EQ(GetEncoderClsid(name, clsid), -1);
        EXPECT_TRUE(IsEqualGUID(clsid, untouched));
    }
    const CLSID jpeg = {
        0x557CF401, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
    CLSID clsid = untouched;
    EXPECT_GE(GetEncoderClsid(L"image/jpeg", clsid), 0);
    EXPECT_TRUE(IsEqualGUID(clsid, jpeg));
}

void ExpectUnreadable(const std::wstring& path, const char* why) {
    SCOPED_TRACE(why);
    EXPECT_FALSE(OpenPicture(path)->IsOk());
    EXPECT_EQ(OpenPicture(path)->LockForReading().firstRow, nullptr);
    CGLTexture texture;
    EXPECT_EQ(texture.LoadFromFile(path, 64, 64), kLoadFailed);
    EXPECT_EQ(texture.GetPixels(), nullptr);
    std::int32_t width = -1;
    std::int32_t height = -2;
    std::int32_t components = -3;
    EXPECT_FALSE(ProbeJpeg(path, width, height, components));
    EXPECT_EQ(width, -1);
    EXPECT_EQ(height, -2);
    EXPECT_EQ(components, -3);
}

TEST_F(ImageFileTest, WhatCannotBeReadIsNotOk) {
    ExpectUnreadable(L"", "no name");
    ExpectUnreadable(Path(L"missing.jpg"), "missing");
    ExpectUnreadable(Path(L""), "a folder");
    ExpectUnreadable(Write(L"empty.jpg", {}), "0 bytes");
    ExpectUnreadable(Write(L"text.jpg", Bytes(1000, 'x')), "text");
    ExpectUnreadable(Write(L"start.jpg", {0xFF, 0xD8, 0xFF, 0xE0}), "only a start");

    fs::copy_file(Asset("map.jpg"), Path(L"locked.jpg"));
    {
        const UniqueFile writer(CreateFileW(Path(L"locked.jpg").c_str(), GENERIC_WRITE, 0, nullptr,
                                            OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
        ASSERT_TRUE(writer.IsOpen());
        ExpectUnreadable(Path(L"locked.jpg"), "another program writes it");
    }
    for (const auto& file : fs::directory_iterator(Path(L""))) {
        EXPECT_TRUE(fs::remove(file)) << "still open: " << file.path();
    }
}

TEST_F(ImageFileTest, AMapCutShortNeverBreaksTheLoad) {
    const Bytes map = Read(Asset("map.jpg"));
    for (const std::ptrdiff_t length : {100, 700, 5000, 200000, 1461000}) {
        const auto path = Write(L"cut.jpg", Bytes(map.begin(), map.begin() + length));
        CGLTexture texture;
        const int result = texture.LoadFromFile(path, 1024, 512);
        EXPECT_EQ(result != kLoadFailed, texture.GetPixels() != nullptr) << length;
    }
}

TEST_F(ImageFileTest, ProbesTheMapWhileOthersReadIt) {
    const auto path = Asset("map.jpg").wstring();
    const auto picture = OpenPicture(path);
    std::int32_t width = 0;
    std::int32_t height = 0;
    std::int32_t components = 0;
    EXPECT_TRUE(ProbeJpeg(path, width, height, components));
    EXPECT_EQ(width, 4096);
    EXPECT_EQ(height, 2048);
    EXPECT_EQ(components, 3);
}

std::unique_ptr<Gdiplus::Bitmap> SmallBitmap() {
    return std::make_unique<Gdiplus::Bitmap>(4, 3, PixelFormat32bppARGB);
}

TEST_F(ImageFileTest, ConvertsOnlyWhatHasAnotherFormat) {
    auto source = SmallBitmap();
    Gdiplus::Bitmap* const same = source.get();
    auto converted = ConvertPixelFormat(std::move(source), PixelFormat32bppARGB, true);
    EXPECT_EQ(converted.get(), same);
    converted->SetPixel(1, 2, Gdiplus::Color(0xFF102030));
    converted = ConvertPixelFormat(std::move(converted), PixelFormat24bppRGB, false);
    ASSERT_NE(converted, nullptr);
    EXPECT_EQ(converted->GetPixelFormat(), PixelFormat24bppRGB);
    Gdiplus::Color colour;
    converted->GetPixel(1, 2, &colour);
    EXPECT_EQ(colour.GetValue(), 0xFF102030);
    EXPECT_EQ(ConvertPixelFormat(nullptr, PixelFormat24bppRGB, true), nullptr);
}

Gdiplus::GpStatus WINGDIPAPI RefuseToDraw(Gdiplus::GpGraphics*, Gdiplus::GpImage*, INT, INT, INT,
                                          INT) {
    return Gdiplus::OutOfMemory;
}

TEST_F(ImageFileTest, AFailedConversionKeepsTheSourceWhenTold) {
    const HMODULE self = GetModuleHandleW(nullptr);
    void* const real =
        ReplaceImport(self, "GdipDrawImageRectI", reinterpret_cast<void*>(&RefuseToDraw));
    ASSERT_NE(real, nullptr);
    EXPECT_EQ(ConvertPixelFormat(SmallBitmap(), PixelFormat24bppRGB, true), nullptr);
    auto source = SmallBitmap();
    Gdiplus::Bitmap* const same = source.get();
    EXPECT_EQ(ConvertPixelFormat(std::move(source), PixelFormat24bppRGB, false).get(), same);
    CJpegTexture texture;
    EXPECT_EQ(texture.Load(std::make_unique<GdiplusPicture>(SmallBitmap()), 0, 0), kLoadFailed);
    ReplaceImport(self, "GdipDrawImageRectI", real);
}

TEST_F(ImageFileTest, ReadsSetsAndClonesPixels) {
    static_assert(ExchangeRedBlue(0x80112233) == 0x80332211);
    GdiplusPicture picture(SmallBitmap());
    std::uint32_t colour = 1;
    EXPECT_TRUE(picture.SetPixel(3, 0, 0xFFABCDEF));
    EXPECT_TRUE(picture.GetPixel(3, 0, colour));
    EXPECT_EQ(colour, 0xFFABCDEFU);
    EXPECT_TRUE(picture.IsOk());
    EXPECT_FALSE(picture.GetPixel(4, 0, colour));
    EXPECT_FALSE(picture.IsOk()) << "a failed operation is remembered";

    auto source = SmallBitmap();
    const auto clone = CloneImage(*source);
    source.reset();
    ASSERT_NE(clone, nullptr);
    EXPECT_EQ(clone->GetWidth(), 4U);
    GdiplusPicture none(nullptr);
    EXPECT_FALSE(none.IsOk() || none.GetPixel(0, 0, colour) || none.SetPixel(0, 0, 0));
}

}  // namespace
