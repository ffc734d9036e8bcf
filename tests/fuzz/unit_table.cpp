// Feeds texts of any shape to the reader of unit tables and asks for every word: all lie terminated
// in the table's own buffer, and the tables beside it stay as they were.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

#include "host/unit_words.h"

namespace {

constexpr std::uint32_t kTable = 2;

void Check(bool holds) {
    if (!holds) std::abort();
}

void CheckWord(const CLangFile& file, std::uint32_t number) {
    const HorivoWideChar* word = UnitWord(file, kTable, number);
    const HorivoWideChar* buffer = file.unitBuffer[kTable];
    const bool builtIn = word[0] == 'h' && word[1] == '\0';
    if (builtIn && buffer[0] == '\0') return;
    Check(word >= buffer && word < buffer + kUnitChars);
    Check(std::find(word, buffer + kUnitChars, HorivoWideChar{'\0'}) != buffer + kUnitChars);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > 1U << 16U) return 0;
    // In a block of exactly its size; bytes make digits and signs likelier than 16 random bits.
    const std::unique_ptr<HorivoWideChar[]> text(new HorivoWideChar[size + 1]);
    std::copy_n(data, size, text.get());
    text[size] = '\0';
    const auto file = std::make_unique<CLangFile>();
    ParseUnitTable(*file, kTable, text.get());
    Check(file->unitCount[kTable] <= kUnitRanges);
    for (std::uint32_t i = 0; i < file->unitCount[kTable]; ++i) {
        const UnitRange range = file->unitRanges[kTable][i];
        Check(range.low <= range.high && range.high <= 99);
    }
    for (std::uint32_t number = 0; number < 200; ++number) CheckWord(*file, number);
    for (const std::uint32_t other : {kTable - 1, kTable + 1}) {
        Check(file->unitCount[other] == 0 && file->unitBuffer[other][0] == '\0');
    }
    return 0;
}
