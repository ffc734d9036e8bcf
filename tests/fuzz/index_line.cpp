// Builds a line of an index file from fields of any content and reads it back: what stands in the
// columns must come out, and nothing else. The first byte chooses the kind, 0x1F parts the fields.

#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include "fuzz/check.h"
#include "photos/photo_index.h"

namespace {

constexpr std::size_t kFields = 6;
constexpr std::size_t kMaxLine = 4095;  // bytes that are kept
constexpr char kFieldEnd = '\x1F';

/// ASCII without what ends a field, a line or the file.
std::string Cleaned(std::string text) {
    for (char& c : text) {
        c = static_cast<char>(c & 0x7F);
        if (c < ' ' || c == '\x7F') c = '_';
    }
    return text;
}

std::vector<std::string> FieldsOf(std::string_view bytes) {
    std::vector<std::string> fields;
    while (fields.size() < kFields) {
        const std::size_t end = std::min(bytes.find(kFieldEnd), bytes.size());
        fields.push_back(Cleaned(std::string(bytes.substr(0, end))));
        bytes.remove_prefix(std::min(end + 1, bytes.size()));
    }
    return fields;
}

bool IsPieceOf(WideView read, const std::string& written, bool whole) {
    const bool fits = whole ? read.size() == written.size() : read.size() <= written.size();
    return fits && std::equal(read.begin(), read.end(), written.begin());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 3 || size > 2 * kMaxLine) return 0;
    const bool ofCountry = data[0] % 2 != 0;
    const auto number = static_cast<std::int32_t>(data[1] * 256 + data[2]);
    auto fields = FieldsOf({reinterpret_cast<const char*>(data) + 3, size - 3});
    fields[0] = std::to_string(number);
    std::string line;
    for (const std::string& field : fields) line += field + '\t';
    line.back() = '\n';
    const bool whole = line.size() <= kMaxLine;
    line += "7";

    PhotoIndexReader reader(line, ofCountry ? PhotoIndexKind::Country : PhotoIndexKind::City);
    PhotoIndexEntry entry;
    Check(reader.Next(entry));
    Check(entry.photoNumber == number);
    Check(IsPieceOf(entry.city, ofCountry ? fields[1] : "", whole));
    Check(IsPieceOf(entry.caption, fields[ofCountry ? 4 : 3], whole));
    Check(IsPieceOf(entry.pagePath, fields[ofCountry ? 5 : 4], whole));
    Check(reader.Next(entry) && entry.photoNumber == 7);
    Check(entry.city.empty() && entry.caption.empty() && entry.pagePath.empty());
    Check(!reader.Next(entry));
    return 0;
}
