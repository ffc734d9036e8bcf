#pragma once
// What the tests of picture files share: GDI+, a folder, files made of a few bytes.

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <string>
#include <vector>

#include "base/windows_types.h"
#include "image/gdiplus_session_win.h"
#include "image/jpeg_texture.h"

namespace fs = std::filesystem;
using Bytes = std::vector<std::uint8_t>;

/// GDI+ and a folder of its own for each test.
class ImageFileTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(gdiplus_.IsStarted());
        folder_ =
            fs::temp_directory_path() / (L"horivo_image_" + std::to_wstring(GetCurrentProcessId()));
        fs::create_directories(folder_);
    }
    void TearDown() override { fs::remove_all(folder_); }

    std::wstring Path(const wchar_t* name) const { return (folder_ / name).wstring(); }

    std::wstring Write(const wchar_t* name, const Bytes& bytes) const {
        std::ofstream file(folder_ / name, std::ios::binary);
        file.write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
        return Path(name);
    }

private:
    GdiplusUse gdiplus_;
    fs::path folder_;
};

inline Bytes Read(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline fs::path Asset(const char* name) { return fs::path(HORIVO_ASSETS) / name; }

inline void Append(Bytes& bytes, std::initializer_list<std::uint32_t> values, int size) {
    for (const std::uint32_t value : values) {
        for (int i = 0; i < size; ++i) bytes.push_back(static_cast<std::uint8_t>(value >> (8 * i)));
    }
}

/// A bitmap file of 2 x 2: upper row red, green; lower row blue, white.
inline Bytes ColourBitmap(std::uint32_t bitsPerPixel) {
    const std::uint32_t bytesPerPixel = bitsPerPixel / 8;
    Bytes file = {'B', 'M'};
    Append(file, {54 + 16, 0, 54, 40, 2, 2}, 4);
    Append(file, {1, bitsPerPixel}, 2);
    Append(file, {0, 16, 2835, 2835, 0, 0}, 4);
    const std::uint32_t rows[2][2] = {{0x0000FF, 0xFFFFFF}, {0xFF0000, 0x00FF00}};
    for (const auto& row : rows) {
        for (const std::uint32_t colour : row) {
            Append(file, {colour}, static_cast<int>(bytesPerPixel));
        }
        if (bytesPerPixel == 3) Append(file, {0}, 2);
    }
    return file;
}

/// The same of 8 bits with a grey palette: 10, 80; 150, 255.
inline Bytes GreyBitmap() {
    Bytes file = {'B', 'M'};
    Append(file, {54 + 1024 + 8, 0, 54 + 1024, 40, 2, 2}, 4);
    Append(file, {1, 8}, 2);
    Append(file, {0, 8, 2835, 2835, 256, 256}, 4);
    for (std::uint32_t grey = 0; grey < 256; ++grey) Append(file, {grey * 0x010101}, 4);
    Append(file, {150, 255, 0, 0, 10, 80, 0, 0}, 1);
    return file;
}

inline std::array<int, 3> TexturePixel(const CJpegTexture& texture, int x, int fromTop) {
    const int row = texture.GetHeight() - 1 - fromTop;
    const std::uint8_t* const pixel =
        texture.GetPixels() + (row * texture.GetBufferWidth() + x) * texture.GetBytesPerPixel();
    return {pixel[0], pixel[1], pixel[2]};
}

inline constexpr std::array<int, 3> kRed = {255, 0, 0};
inline constexpr std::array<int, 3> kGreen = {0, 255, 0};
inline constexpr std::array<int, 3> kBlue = {0, 0, 255};
inline constexpr std::array<int, 3> kWhite = {255, 255, 255};
