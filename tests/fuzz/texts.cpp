// Feeds texts of any shape to the readers of language files, command lines and settings. The first
// byte says whether the rest is ASCII, where the escapes and digits are, or has 16 bits a
// character.

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <memory>
#include <vector>

#include "api/command_line_folder.h"
#include "fuzz/check.h"
#include "host/lang_escapes.h"
#include "host/language_code.h"
#include "host/unit_words.h"
#include "window/map_font.h"

namespace {

constexpr HorivoWideChar kEnd = '\0';

void CheckEscapes(std::vector<HorivoWideChar> text) {
    std::vector<HorivoWideChar> terminated = text;
    terminated.push_back(kEnd);
    const auto length = static_cast<std::int32_t>(text.size());
    const std::int32_t byLength = Unescape(text.data(), length);
    Check(byLength >= 0 && byLength <= length && byLength == Unescape(terminated.data(), -1));
    Check(byLength == length || text[static_cast<std::size_t>(byLength)] == kEnd);
    Check(terminated[static_cast<std::size_t>(byLength)] == kEnd);
    Check(std::equal(text.begin(), text.begin() + byLength, terminated.begin()));
}

void CheckMenuKey(std::vector<HorivoWideChar> text) {
    text.push_back(kEnd);
    MenuKey(text.data());
    const auto end = std::find(text.begin(), text.end(), kEnd);
    Check(end != text.end() && end - text.begin() <= kMenuKeyChars);
    for (auto c = text.begin(); c != end; ++c) {
        Check(*c < 0x80 && std::strchr(" &=;[]\t\r\n", static_cast<char>(*c)) == nullptr);
    }
}

/// Every word lies terminated in the table's own buffer, and the other tables stay as they were.
void CheckUnitTable(std::vector<HorivoWideChar> text) {
    text.push_back(kEnd);
    const auto file = std::make_unique<CLangFile>();
    ParseUnitTable(*file, 2, text.data());
    Check(file->unitCount[2] <= kUnitRanges);
    std::for_each_n(file->unitRanges[2], file->unitCount[2], [](const UnitRange& range) {
        Check(range.low <= range.high && range.high <= 99);
    });
    const HorivoWideChar* buffer = file->unitBuffer[2];
    for (std::uint32_t number = 0; number < 200; ++number) {
        const HorivoWideChar* word = UnitWord(*file, 2, number);
        if (buffer[0] == kEnd && word[0] == 'h' && word[1] == kEnd) continue;  // built in
        Check(word >= buffer && word < buffer + kUnitChars);
        Check(std::find(word, buffer + kUnitChars, kEnd) != buffer + kUnitChars);
    }
    for (const int other : {1, 3}) Check(!file->unitCount[other] && !file->unitBuffer[other][0]);
}

void CheckCommandLine(const std::wstring& line) {
    const std::wstring folder = FolderOfCommandLine(line);
    if (folder.empty()) return;
    const bool quoted = line.front() == L'"';
    Check(folder.size() <= 259 && folder.back() == L'\\');
    Check(line.compare(quoted ? 1 : 0, folder.size(), folder) == 0);
    Check(!quoted || folder.find(L'"') == std::wstring::npos);
}

void CheckCodes(const std::wstring& text) {
    Check(ParseCodePage(text.c_str()) <= 65535);
    const std::basic_string<HorivoWideChar> abbrev(text.begin(), text.end());
    const LanguageCode code = LanguageFileCode(abbrev.c_str());
    Check(code[2] == 0 && (code[0] == 0) == (code[1] == 0));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2 || size > 1U << 16U) return 0;
    const std::size_t step = data[0] % 2 == 0 ? 1 : 2;
    std::vector<HorivoWideChar> text;  // in a block of exactly its size
    text.reserve((size - 1) / step);
    for (std::size_t i = 1; i + step <= size; i += step) {
        text.push_back(static_cast<HorivoWideChar>(data[i] | (step == 1 ? 0 : data[i + 1] << 8)));
    }
    CheckEscapes(text);
    CheckMenuKey(text);
    CheckUnitTable(text);
    CheckCommandLine({text.begin(), text.end()});
    CheckCodes({text.begin(), text.end()});
    return 0;
}
