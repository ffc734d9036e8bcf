// Feeds texts of any shape to the readers of language files, command lines and settings. The first
// byte says whether the rest is ASCII, where the escapes and digits are, or has 16 bits a
// character.
#include <algorithm>
#include <memory>
#include <vector>

#include "api/command_line_folder.h"
#include "base/wide_text.h"
#include "fuzz/check.h"
#include "host/lang_escapes.h"
#include "host/language_code.h"
#include "host/unit_words.h"
#include "window/map_font.h"

namespace {

using Text = std::vector<HorivoWideChar>;

/// `terminated` ends with a NUL, `text` is the same in a block without one.
void CheckEscapesAndKey(Text terminated, Text text) {
    MenuKey(Text(terminated).data());
    const auto length = static_cast<std::int32_t>(text.size());
    const std::int32_t end = Unescape(text.data(), length);
    Check(end >= 0 && end <= length && end == Unescape(terminated.data(), -1));
    Check(std::equal(text.begin(), text.begin() + end, terminated.begin()));
}

/// Every word is terminated in the table's own room, and the other tables stay as they were.
void CheckUnitTable(const Text& terminated) {
    const auto file = std::make_unique<CLangFile>();
    ParseUnitTable(*file, 2, terminated.data());
    Check(file->unitCount[2] <= kUnitRanges);
    for (std::uint32_t i = 0; i < 200; ++i)
        Check(WideView(UnitWord(*file, 2, i)).size() < kUnitChars);
    for (const int other : {1, 3}) Check(!file->unitCount[other] && !file->unitBuffer[other][0]);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2 || size > 1U << 16U) return 0;
    const std::size_t step = data[0] % 2 == 0 ? 1 : 2;
    Text text;
    for (std::size_t i = 1; i + step <= size; i += step)
        text.push_back(static_cast<HorivoWideChar>(data[i] | (step == 1 ? 0 : data[i + 1] << 8)));
    const std::wstring line(text.begin(), text.end());
    const std::wstring folder = FolderOfCommandLine(line);
    Check(folder.empty() || (folder.size() <= 259 && folder.back() == L'\\'));
    Check(line.find(folder) <= 1 && ParseCodePage(line.c_str()) <= 65535);
    Text terminated = text;
    terminated.push_back(0);
    LanguageFileCode(terminated.data());
    text.shrink_to_fit();
    CheckEscapesAndKey(terminated, text);
    CheckUnitTable(terminated);
    return 0;
}
