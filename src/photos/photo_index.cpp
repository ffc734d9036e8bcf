#include "photos/photo_index.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <optional>

using std::string_view_literals::operator""sv;

namespace {

constexpr std::size_t kMaxLineLength = 4095;  // bytes
constexpr std::size_t kFieldCount = 6;
constexpr std::size_t kMaxNumberLength = 10;  // characters: the length of 2147483647
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr char kEndOfFileMark = '\x1A';  // Ctrl-Z
constexpr HorivoWideChar kTab = '\t';

/// The columns that one kind of index uses for the caption and the page path.
struct Columns {
    std::size_t caption, pagePath;
};
constexpr std::size_t kNumberColumn = 0;
constexpr std::size_t kCityColumn = 1;
constexpr Columns kCityColumns = {3, 4};
constexpr Columns kCountryColumns = {4, 5};

using Fields = std::array<WideView, kFieldCount>;

/// Removes the first line from `rest` and returns it without its LF.
std::string_view TakeLine(std::string_view& rest) noexcept {
    const std::size_t end = std::min(rest.find('\n'), rest.size());
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return line;
}

/// Returns the length to which a line that is too long is cut. Leaves out a UTF-8 character that
/// would be cut at the limit, because a part of a character would make the whole line invalid as
/// UTF-8.
std::size_t CutPosition(std::string_view line) noexcept {
    // UTF-8: a character begins with 11xxxxxx, and at most three bytes 10xxxxxx follow.
    constexpr unsigned kKindMask = 0xC0;
    constexpr unsigned kFollowingByte = 0x80;
    constexpr unsigned kFirstByte = 0xC0;
    constexpr std::size_t kMaxFollowingBytes = 3;
    const auto kindOf = [line](std::size_t at) {
        return static_cast<unsigned char>(line[at]) & kKindMask;
    };
    std::size_t start = kMaxLineLength;
    while (start > kMaxLineLength - kMaxFollowingBytes && kindOf(start) == kFollowingByte) --start;
    return kindOf(start) == kFirstByte ? start : kMaxLineLength;
}

std::string_view TextOfLine(std::string_view line) noexcept {
    if (line.size() > kMaxLineLength) line = line.substr(0, CutPosition(line));
    return line.substr(0, line.find_first_of("\0\r"sv));
}

bool IsComment(std::string_view text) noexcept {
    return text.empty() || text.front() == '#' || text.front() == ';';
}

WideString Widen(std::string_view text) {
    WideString wide;
    return WidenUtf8(text, wide) ? wide : WidenAnsi(text);
}

Fields SplitFields(WideView line) noexcept {
    Fields fields;
    for (WideView& field : fields) {
        const std::size_t end = std::min(line.find(kTab), line.size());
        field = line.substr(0, end);
        line.remove_prefix(std::min(end + 1, line.size()));
    }
    return fields;
}

/// Reads a decimal number from the first ten characters of `field`. Returns nothing when there is
/// no digit or when the number is negative.
std::optional<std::int32_t> ReadPhotoNumber(WideView field) noexcept {
    field = field.substr(0, kMaxNumberLength);
    field.remove_prefix(std::min(field.find_first_not_of(HorivoWideChar{' '}), field.size()));
    const bool negative = !field.empty() && field.front() == '-';
    if (negative || (!field.empty() && field.front() == '+')) field.remove_prefix(1);
    std::int64_t number = 0;
    std::size_t digits = 0;
    while (digits < field.size() && field[digits] >= '0' && field[digits] <= '9') {
        number = number * 10 + (field[digits] - '0');
        ++digits;
    }
    if (digits == 0 || (negative && number != 0)) return std::nullopt;
    constexpr std::int64_t kLargest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::min(number, kLargest));
}

}  // namespace

PhotoIndexReader::PhotoIndexReader(std::string_view bytes, PhotoIndexKind kind) noexcept
    : rest_(bytes.substr(0, bytes.find(kEndOfFileMark))), kind_(kind) {
    if (rest_.starts_with(kUtf8Mark)) rest_.remove_prefix(kUtf8Mark.size());
}

bool PhotoIndexReader::Next(PhotoIndexEntry& entry) {
    while (!rest_.empty()) {
        const std::string_view text = TextOfLine(TakeLine(rest_));
        if (IsComment(text)) continue;
        const WideString line = Widen(text);
        const Fields fields = SplitFields(line);
        const std::optional<std::int32_t> number = ReadPhotoNumber(fields[kNumberColumn]);
        if (!number) continue;
        const bool ofCountry = kind_ == PhotoIndexKind::Country;
        const Columns columns = ofCountry ? kCountryColumns : kCityColumns;
        entry.photoNumber = *number;
        entry.city = ofCountry ? fields[kCityColumn] : WideView();
        entry.caption = fields[columns.caption];
        entry.pagePath = fields[columns.pagePath];
        return true;
    }
    return false;
}
