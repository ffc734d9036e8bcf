#include "window/map_settings.h"

#include "base/windows_types.h"
#include "horivo_host.h"

namespace {

constexpr const wchar_t* kSection = L"map";

/// Returns the number of `key` in the file, or `current` when the key is missing.
std::int32_t ReadNumber(const std::wstring& file, const wchar_t* key,
                        std::int32_t current) noexcept {
    // Convert to a signed number: for -9 in the file, GetPrivateProfileIntW returns 4294967287.
    return static_cast<std::int32_t>(GetPrivateProfileIntW(kSection, key, current, file.c_str()));
}

}  // namespace

std::int32_t ReadMapSettings(const std::wstring& settingsFile, MapSettings& settings,
                             std::int32_t factor) {
    if (settingsFile.empty()) return factor;
    ReadAdminFlags();
    RawSettings raw = CurrentSettings(settings, factor);
    raw.texScalerX = ReadNumber(settingsFile, L"texScalerX", raw.texScalerX);
    raw.texScalerY = ReadNumber(settingsFile, L"texScalerY", raw.texScalerY);
    raw.texCompression = ReadNumber(settingsFile, L"tex_compression", raw.texCompression);
    raw.lagFactor = ReadNumber(settingsFile, L"lag_factor", raw.lagFactor);
    return StoreSettings(raw, settings);
}
