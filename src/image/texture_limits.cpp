#include "image/texture_limits.h"

#include "image/jpeg_texture.h"

TextureBounds ScaledBounds(std::int32_t limit, const TextureLimits& limits) noexcept {
    return {ScaledLimit(limit, limits.texScalerX), ScaledLimit(limit, limits.texScalerY)};
}

bool FitToLimits(CJpegTexture& texture, int widthLimit, int heightLimit) noexcept {
    const int width = texture.GetWidth();
    const int height = texture.GetHeight();
    if (width <= widthLimit && height <= heightLimit) {
        return !texture.IsPowerOfTwoSize() && texture.MakePowerOfTwo();
    }
    return texture.Rescale(std::min(width, widthLimit), std::min(height, heightLimit));
}
