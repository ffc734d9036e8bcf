#pragma once
// Pictures for benchmarks: blocks of noise in memory, so that only the measured operation allocates
// memory.

#include <cstdint>
#include <cstring>
#include <memory>
#include <random>
#include <vector>

#include "image/jpeg_texture.h"
#include "image/picture.h"

using PixelBytes = std::vector<std::uint8_t>;

inline PixelBytes NoiseBytes(std::size_t bytes) {
    std::mt19937_64 random(7);
    PixelBytes noise(bytes);
    for (std::size_t at = 0; at + sizeof(std::uint64_t) <= bytes; at += sizeof(std::uint64_t)) {
        const std::uint64_t value = random();
        std::memcpy(&noise[at], &value, sizeof value);
    }
    return noise;
}

/// A decoded picture that uses the caller's pixels: top row first, B, G, R, rows packed.
class BorrowedPicture final : public Picture {
public:
    BorrowedPicture(const PixelBytes& pixels, int width, int height)
        : pixels_(pixels), width_(width), height_(height) {}
    bool IsOk() const noexcept override { return true; }
    std::int32_t GetWidth() const noexcept override { return width_; }
    std::int32_t GetHeight() const noexcept override { return height_; }
    std::int32_t GetPixelFormat() const noexcept override { return kPixelFormat24bppRgb; }
    PixelRows LockForReading() override { return {pixels_.data(), std::ptrdiff_t{width_} * 3}; }
    void Unlock() noexcept override {}

private:
    const PixelBytes& pixels_;
    int width_;
    int height_;
};

inline void LoadNoise(CJpegTexture& texture, const PixelBytes& pixels, int width, int height) {
    texture.CJpegTexture::Load(std::make_unique<BorrowedPicture>(pixels, width, height), 0, 0);
}
