#include "support/memory_picture.h"

#include <cstring>
#include <random>
#include <utility>

namespace {

constexpr std::size_t kPadding = 5;  // bytes behind each row: a stride is not the row's length
constexpr std::uint8_t kPaddingByte = 0xEE;

int livePictures = 0;
int liveLocks = 0;
int conversions = 0;

}  // namespace

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

MemoryPicture::~MemoryPicture() { --livePictures; }
int MemoryPicture::LiveCount() noexcept { return livePictures; }
int MemoryPicture::LockCount() noexcept { return liveLocks; }
int MemoryPicture::ConversionCount() noexcept { return conversions; }

MemoryPicture::MemoryPicture(MemoryImage image) : image_(std::move(image)) {
    ++livePictures;
    if (!image_.lockable) return;  // nobody will see its rows
    const auto rowBytes = static_cast<std::size_t>(image_.width * BytesPerPixel(image_.format));
    const auto rowCount = static_cast<std::size_t>(image_.height);
    const std::size_t stride = rowBytes + kPadding;
    rows_.assign(stride * rowCount, kPaddingByte);
    for (std::size_t row = 0; row < rowCount; ++row) {
        const std::size_t place = image_.bottomUp ? rowCount - 1 - row : row;
        std::memcpy(&rows_[place * stride], &image_.bytes[row * rowBytes], rowBytes);
    }
}

PixelRows MemoryPicture::LockForReading() {
    if (!image_.lockable) return {};
    ++liveLocks;
    const auto rowCount = static_cast<std::size_t>(image_.height);
    const std::size_t stride = rows_.size() / rowCount;
    const auto step = static_cast<std::ptrdiff_t>(stride);
    if (image_.bottomUp) return {&rows_[(rowCount - 1) * stride], -step};
    return {rows_.data(), step};
}

void MemoryPicture::Unlock() noexcept { --liveLocks; }

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
    const MemoryImage& source = dynamic_cast<MemoryPicture&>(*picture).Image();
    ++conversions;
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
    image.width = block.width;
    image.height = block.height;
    for (std::int32_t row = 0; row < block.height; ++row) {
        const std::uint8_t* const bytes = block.firstRow + std::ptrdiff_t{row} * block.stride;
        image.bytes.insert(image.bytes.end(), bytes, bytes + block.width * block.bytesPerPixel);
    }
    return true;
}
