#include "host/unit_words.h"

#include <algorithm>

namespace {

constexpr std::uint32_t kModulus = 100;  // a word depends only on the last two digits of the number

constexpr HorivoWideChar kBuiltInWords[kUnitTables][2] = {{'s'}, {'m'}, {'h'}, {'d'}, {'w'}};

bool IsDigit(HorivoWideChar c) noexcept { return c >= '0' && c <= '9'; }

/// Reads a decimal number at `text` and advances `text` behind it. A number above 99 becomes 100,
/// however many digits it has. @return whether there is a number of 0 to 99
bool TakeNumber(const HorivoWideChar*& text, std::uint32_t& number) noexcept {
    const bool found = IsDigit(*text);
    for (number = 0; IsDigit(*text); ++text) {
        number = std::min(number * 10 + static_cast<std::uint32_t>(*text - '0'), kModulus);
    }
    return found && number < kModulus;
}

/// Reads a range such as "7" or "2-4" at `text` and advances `text` behind the characters read.
/// @return whether the range is valid
bool TakeRange(const HorivoWideChar*& text, UnitRange& range) noexcept {
    std::uint32_t low = 0;
    if (!TakeNumber(text, low)) return false;
    std::uint32_t high = low;
    if (*text == '-' && !TakeNumber(++text, high)) return false;
    range = {static_cast<std::uint8_t>(low), static_cast<std::uint8_t>(high)};
    return low <= high;
}

/// Reads the text of one unit table into the language record (CLangFile).
class UnitTableReader {
public:
    UnitTableReader(CLangFile& file, std::uint32_t table, const HorivoWideChar* text) noexcept
        : ranges_(file.unitRanges[table]),
          texts_(file.unitTexts[table]),
          buffer_(file.unitBuffer[table]),
          count_(file.unitCount[table]),
          text_(text) {}

    void Read() noexcept {
        count_ = 0;
        if (*TakeWord() == '\0') return;
        while (*text_ == ';' && used_ < kUnitChars) {
            ++text_;
            const std::uint16_t first = count_;
            TakeRanges();
            // A list of ranges ends with a space; any other character here is an error.
            if (*text_ != ' ') return;
            ++text_;
            std::fill(texts_ + first, texts_ + count_, TakeWord());
        }
    }

private:
    /// Copies the word up to the next ";" into the buffer; truncates the word when the buffer is
    /// full. @return the copy
    const HorivoWideChar* TakeWord() noexcept {
        const HorivoWideChar* word = buffer_ + used_;
        for (; *text_ != '\0' && *text_ != ';' && used_ < kUnitChars - 1; ++text_) {
            buffer_[used_++] = *text_;
        }
        buffer_[used_++] = '\0';
        return word;
    }

    /// Appends the ranges of one group to the record, up to the first error in its list of numbers.
    /// The texts of these ranges are null; Read sets them when it has read the word after the list.
    void TakeRanges() noexcept {
        UnitRange range{};
        while (TakeRange(text_, range) && count_ < kUnitRanges) {
            ranges_[count_] = range;
            texts_[count_++] = nullptr;
            if (*text_ != ',') break;
            ++text_;
        }
    }

    UnitRange* ranges_;
    const HorivoWideChar** texts_;
    HorivoWideChar* buffer_;
    std::uint16_t& count_;
    const HorivoWideChar* text_;
    std::uint32_t used_ = 0;  ///< characters of `buffer_` in use
};

}  // namespace

void ParseUnitTable(CLangFile& file, std::uint32_t table, const HorivoWideChar* text) noexcept {
    UnitTableReader(file, table, text).Read();
}

const HorivoWideChar* UnitWord(const CLangFile& file, std::uint32_t table,
                               std::uint32_t number) noexcept {
    if (table >= kUnitTables) return nullptr;
    const std::uint32_t rest = number % kModulus;
    // The search goes backwards, because a later group overrides an earlier one.
    for (std::uint32_t i = file.unitCount[table]; i-- > 0;) {
        const UnitRange& range = file.unitRanges[table][i];
        if (range.low <= rest && rest <= range.high) {
            if (file.unitTexts[table][i] != nullptr) return file.unitTexts[table][i];
            break;
        }
    }
    const HorivoWideChar* word = file.unitBuffer[table];
    return *word != '\0' ? word : kBuiltInWords[table];
}
