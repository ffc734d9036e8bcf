#include "options.h"

#include "window/host_windows.h"

#include <shellapi.h>

#include <string_view>
#include <vector>

namespace {

constexpr int kSmallest = 64;    // pixels
constexpr int kLargest = 16384;  // pixels
constexpr int kTourWidth = 1280;
constexpr int kTourHeight = 800;

std::vector<std::wstring> CommandLineWords() {
    int count = 0;
    LPWSTR* words = CommandLineToArgvW(GetCommandLineW(), &count);
    if (words == nullptr) return {};
    std::vector<std::wstring> list(words, words + count);
    LocalFree(words);
    return list;
}

/// Reads digits off the front of `text`; -1 when there are none or the number is out of range.
int TakeNumber(std::wstring_view& text) {
    int number = -1;
    while (!text.empty() && text.front() >= L'0' && text.front() <= L'9') {
        number = (number < 0 ? 0 : number * 10) + (text.front() - L'0');
        if (number > kLargest) return -1;
        text.remove_prefix(1);
    }
    return number;
}

bool ReadSize(std::wstring_view text, Options& options) {
    options.width = TakeNumber(text);
    if (!text.starts_with(L'x')) return false;
    text.remove_prefix(1);
    options.height = TakeNumber(text);
    return text.empty() && options.width >= kSmallest && options.height >= kSmallest;
}

bool ReadPart(std::wstring_view text, Options& options) {
    constexpr struct {
        std::wstring_view name;
        TourPart part;
    } kParts[] = {{L"whole", TourPart::Whole},     {L"june", TourPart::JuneEvening},
                  {L"pointer", TourPart::Pointer}, {L"sizes", TourPart::Sizes},
                  {L"clock", TourPart::Clock},     {L"start", TourPart::Start}};
    for (const auto& known : kParts) {
        if (known.name != text) continue;
        options.tourPart = known.part;
        return true;
    }
    return false;
}

}  // namespace

bool ShowsMapAlone(const Options& options) {
    return !options.tourFolder.empty() && options.tourPart != TourPart::Clock &&
           options.tourPart != TourPart::Start;
}

bool ReadOptions(Options& options) {
    const std::vector<std::wstring> words = CommandLineWords();
    for (std::size_t i = 1; i + 1 < words.size(); i += 2) {
        const std::wstring& value = words[i + 1];
        bool read = false;
        if (words[i] == L"--tour") {
            options.tourFolder = value;
            read = !value.empty();
        } else if (words[i] == L"--size") {
            read = ReadSize(value, options);
        } else if (words[i] == L"--part") {
            read = ReadPart(value, options);
        }
        if (!read) return false;
    }
    if (!options.tourFolder.empty() && options.width == 0) {
        options.width = kTourWidth;
        options.height = kTourHeight;
    }
    // Every option has its value; the program's name stands alone.
    return words.size() % 2 == 1;
}
