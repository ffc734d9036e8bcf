#include "support/memory_picture.h"

#include <cstring>
#include <random>

std::int32_t BytesPerPixel(std::int32_t format) { return ((format >> 8) & 0xFF) / 8; }

MemoryImage NoiseImage(std::int32_t width, std::int32_t height, std::int32_t format) {
    MemoryImage image;
    image.width = width;
    image.height = height;
    image.format = format;
    image.bytes.resize(static_cast<std::size_t>(width * height * BytesPerPixel(format)));
    std::mt19937 random(static_cast<unsigned>(width * 10007 + height));
    for (auto& byte : image.bytes) byte = static_cast<std::uint8_t>(random());
    return image;
}

MemoryPicture::MemoryPicture(MemoryImage file) : image(std::move(file)) {
    ++live;
    if (!image.lockable) return;         // nobody will see its rows
    constexpr std::size_t kPadding = 5;  // bytes behind each row: a stride is not a row's length
    const auto rowBytes = static_cast<std::size_t>(image.width * BytesPerPixel(image.format));
    const auto rowCount = static_cast<std::size_t>(image.height);
    rows_.assign((rowBytes + kPadding) * rowCount, 0xEE);
    for (std::size_t row = 0; row < rowCount; ++row)
        std::memcpy(&rows_[row * (rowBytes + kPadding)], &image.bytes[row * rowBytes], rowBytes);
}

PixelRows MemoryPicture::LockForReading() {
    if (!image.lockable) return {};
    ++locks;
    return {rows_.data(), std::ssize(rows_) / image.height};
}

std::map<std::wstring, MemoryImage>& PictureFiles() {
    static std::map<std::wstring, MemoryImage> files;
    return files;
}

std::unique_ptr<Picture> OpenPicture(const std::wstring& path) {
    const auto found = PictureFiles().find(path);
    if (found != PictureFiles().end()) return std::make_unique<MemoryPicture>(found->second);
    MemoryImage missing;
    missing.readable = false;
    return std::make_unique<MemoryPicture>(missing);
}

std::unique_ptr<Picture> ConvertPicture(std::unique_ptr<Picture> picture, std::int32_t format) {
    if (picture == nullptr || picture->GetPixelFormat() == format) return picture;
    const MemoryImage& source = dynamic_cast<MemoryPicture&>(*picture).image;
    if (!source.convertible || format != kPixelFormat24bppRgb) return nullptr;
    MemoryImage target = source;
    target.format = format;
    target.bytes.clear();
    const auto step = static_cast<std::size_t>(BytesPerPixel(source.format));
    for (std::size_t at = 0; at < source.bytes.size(); at += step) {
        for (std::size_t c = 0; c < 3; ++c) target.bytes.push_back(source.bytes[at + c % step]);
    }
    return std::make_unique<MemoryPicture>(std::move(target));
}

bool EncodeJpeg(const PixelBlock& block, const std::wstring& path, int) {
    MemoryImage& image = PictureFiles()[path] = {};
    for (std::int32_t row = 0; row < block.height; ++row) {
        const std::uint8_t* const bytes = block.firstRow + std::ptrdiff_t{row} * block.stride;
        image.bytes.insert(image.bytes.end(), bytes, bytes + block.width * block.bytesPerPixel);
    }
    return true;
}

int LoadImage(CJpegTexture& texture, const MemoryImage& image, int maxWidth, int maxHeight) {
    return texture.Load(std::make_unique<MemoryPicture>(image), maxWidth, maxHeight);
}

std::vector<int> Bytes(const CJpegTexture& texture) {
    if (texture.GetPixels() == nullptr) return {};
    const std::ptrdiff_t rows = texture.GetBufferHeight();
    const std::ptrdiff_t rowBytes = texture.GetBufferWidth() * texture.GetBytesPerPixel();
    return {texture.GetPixels(), texture.GetPixels() + rows * rowBytes};
}
