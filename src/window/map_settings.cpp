#include "window/map_settings.h"

#include "math/angles.h"

namespace {

constexpr std::int32_t kPercentPerStep = 100;  // "lag_factor" is in hundreds of percent
constexpr std::int32_t kMaxLagFactor = 8;
// Ranges of the exponents of 2 by which the limits of the picture's size are scaled.
constexpr std::int32_t kMinScaler = -3;
constexpr std::int32_t kMaxScalerX = 2;
constexpr std::int32_t kMaxScalerY = 1;  // one less, because the picture is half as high as wide

}  // namespace

RawSettings CurrentSettings(const MapSettings& settings, std::int32_t factor) noexcept {
    return {settings.texScalerX, settings.texScalerY, settings.texCompression,
            factor / kPercentPerStep};
}

std::int32_t StoreSettings(const RawSettings& raw, MapSettings& settings) noexcept {
    settings.texScalerX = Clamp(raw.texScalerX, kMinScaler, kMaxScalerX);
    settings.texScalerY = Clamp(raw.texScalerY, kMinScaler, kMaxScalerY);
    settings.texCompression = raw.texCompression != 0 ? 1 : 0;
    return Clamp(raw.lagFactor, 0, kMaxLagFactor) * kPercentPerStep;
}
