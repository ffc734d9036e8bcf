// Feeds what a settings file may say to everything that takes its values: the four numbers and what
// follows from the detail factor, the texture limits that the scalers make, code pages and language
// codes as locales spell them.

#include <cstdint>
#include <cstring>
#include <string>

#include "fuzz/check.h"
#include "host/language_code.h"
#include "image/texture_limits.h"
#include "window/level_of_detail.h"
#include "window/map_font.h"
#include "window/map_settings.h"

namespace {

struct Numbers {
    RawSettings raw;
    std::int32_t maxTextureSize;
    std::uint32_t elapsedMs;
};

void CheckDetail(const LevelOfDetail& detail) {
    Check(detail.Factor() >= kFinestFactor && detail.Factor() <= kCoarsestFactor);
    Check(detail.Mesh().sphereSlices >= 4 && detail.Mesh().sphereSlices % 4 == 0);
    Check(detail.Mesh().sphereStacks >= 2 && detail.Mesh().sphereStacks % 2 == 0);
    Check(detail.Mesh().atmosphereLayers >= 1 && detail.Mesh().atmosphereLayers <= 20);
}

void CheckNumbers(const Numbers& numbers) {
    MapSettings settings;
    LevelOfDetail detail;
    TextureLimits limits;
    const std::int32_t glAnswer = numbers.maxTextureSize & 0x7FFFFFFF;
    limits.maxTextureSize = glAnswer;
    detail.Apply(StoreSettings(numbers.raw, settings), limits);
    CheckDetail(detail);
    Check(settings.texScalerX >= -3 && settings.texScalerX <= 2);
    Check(settings.texScalerY >= -3 && settings.texScalerY <= 1);
    Check(settings.texCompression == 0 || settings.texCompression == 1);
    Check(limits.textureLimit >= 0 && limits.textureLimit <= glAnswer);
    Check(ScaledLimit(limits.textureLimit, settings.texScalerX) >= 0);

    detail.StartMeasuring();
    for (int frame = 0; frame < 8; ++frame) {
        if (detail.AddFrame(false, numbers.elapsedMs) == TuneOutcome::Coarser) {
            detail.Apply(detail.Factor(), limits);
        }
    }
    CheckDetail(detail);
    for (const bool coarser : {true, false}) {
        detail.Apply(StepFactor(numbers.raw.lagFactor / 2, coarser), limits);
        CheckDetail(detail);
    }
    // What is written back is read as the same.
    const RawSettings again = CurrentSettings(settings, detail.Factor());
    MapSettings copy;
    StoreSettings(again, copy);
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
