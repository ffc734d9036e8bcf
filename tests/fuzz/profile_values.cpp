// Feeds what a settings file may say to everything that takes its values: the four numbers and what
// follows from the detail factor, the texture limits that the scalers make, code pages and language
// codes as locales spell them.

#include <cstdint>
#include <cstring>
#include <string>

#include "fuzz/check.h"
#include "host/language_code.h"
#include "image/texture_limits.h"
#include "window/font_charset.h"
#include "window/map_settings.h"
#include "window/tuning.h"

namespace {

struct Numbers {
    RawSettings raw;
    std::int32_t maxTextureSize;
    std::uint32_t elapsedMs;
};

void CheckDetail(const DetailState& detail) {
    Check(detail.perfFactor >= kFinestFactor && detail.perfFactor <= kCoarsestFactor);
    Check(detail.mesh.sphereSlices >= 4 && detail.mesh.sphereSlices % 4 == 0);
    Check(detail.mesh.sphereStacks >= 2 && detail.mesh.sphereStacks % 2 == 0);
    Check(detail.mesh.atmosphereLayers >= 1 && detail.mesh.atmosphereLayers <= 20);
}

void CheckNumbers(const Numbers& numbers) {
    MapSettings settings;
    DetailState detail;
    TextureLimits limits;
    const std::int32_t glAnswer = numbers.maxTextureSize & 0x7FFFFFFF;
    limits.maxTextureSize = glAnswer;
    ApplyPerfFactor(detail, limits, TakeSettings(numbers.raw, settings));
    CheckDetail(detail);
    Check(settings.texScalerX >= -3 && settings.texScalerX <= 2);
    Check(settings.texScalerY >= -3 && settings.texScalerY <= 1);
    Check(settings.texCompression == 0 || settings.texCompression == 1);
    Check(limits.textureLimit >= 0 && limits.textureLimit <= glAnswer);
    Check(ScaledLimit(limits.textureLimit, settings.texScalerX) >= 0);

    StartMeasuring(detail);
    for (int frame = 0; frame < 8; ++frame) {
        if (TuneStep(detail, false, numbers.elapsedMs) == TuneOutcome::Coarser) {
            ApplyPerfFactor(detail, limits, detail.perfFactor);
        }
    }
    CheckDetail(detail);
    for (const bool coarser : {true, false}) {
        ApplyPerfFactor(detail, limits, StepFactor(numbers.raw.lagFactor / 2, coarser));
        CheckDetail(detail);
    }
    // What is written back is read as the same.
    const RawSettings again = CurrentSettings(settings, detail.perfFactor);
    MapSettings copy;
    TakeSettings(again, copy);
    Check(copy.texScalerX == settings.texScalerX && copy.texScalerY == settings.texScalerY);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Numbers numbers{};
    if (size < sizeof numbers || size > 1U << 14U) return 0;
    std::memcpy(&numbers, data, sizeof numbers);
    CheckNumbers(numbers);

    const std::string text(reinterpret_cast<const char*>(data) + sizeof numbers,
                           size - sizeof numbers);
    const std::wstring wide(text.begin(), text.end());
    const std::uint32_t codePage = ParseCodePage(wide.c_str());
    Check(codePage <= 65535);
    CharsetOfCodePage(codePage);
    const std::basic_string<HorivoWideChar> abbrev(text.begin(), text.end());
    const LanguageCode code = LanguageFileCode(abbrev.c_str());
    Check(code[2] == 0 && (code[0] == 0) == (code[1] == 0));
    return 0;
}
