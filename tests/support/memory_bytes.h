#pragma once

#include <cstring>
#include <span>

#include "image/jpeg_header.h"

/// A file in memory that a header walk reads.
class MemoryBytes final : public ByteSource {
public:
    explicit MemoryBytes(std::span<const std::uint8_t> bytes) : bytes_(bytes) {}
    bool Read(void* out, std::size_t size) noexcept override {
        ++reads;
        if (position_ > bytes_.size() || bytes_.size() - position_ < size) return false;
        std::memcpy(out, bytes_.data() + position_, size);
        position_ += size;
        return true;
    }
    bool Skip(std::int32_t offset) noexcept override {
        position_ += static_cast<std::size_t>(static_cast<std::ptrdiff_t>(offset));
        return true;
    }

    std::size_t reads = 0;

private:
    std::span<const std::uint8_t> bytes_;
    std::size_t position_ = 0;
};
