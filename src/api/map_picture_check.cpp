#include "api/map_picture_check.h"

#include "horivo_map.h"

namespace {

constexpr std::int32_t kMinSide = 16;  // pixels; InstallMap refuses a picture with a smaller side
constexpr std::uint64_t kMemoryShare = 3;  // the decoded picture may use 1 / 3 of the memory

}  // namespace

std::uint32_t CheckMapPicture(const std::optional<JpegSize>& header,
                              std::uint64_t memory) noexcept {
    if (!header) return HORIVO_BAD_PICTURE;
    if (header->width < kMinSide || header->height < kMinSide) {
        return HORIVO_UNFIT_PICTURE;
    }
    if (header->components != 3 && header->components != 4) return HORIVO_UNFIT_PICTURE;
    // Compute in 64 bits: the largest JPEG has 65535 x 65535 pixels of 4 bytes.
    const std::uint64_t bytes = static_cast<std::uint64_t>(header->height) *
                                static_cast<std::uint64_t>(header->width) *
                                static_cast<std::uint64_t>(header->components);
    return bytes <= memory / kMemoryShare ? HORIVO_OK : HORIVO_BAD_PICTURE;
}
