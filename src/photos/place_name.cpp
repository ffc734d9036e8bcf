#include "photos/place_name.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>

namespace {

constexpr std::uint32_t kFirstPrintable = 32;  // lower codes are control characters
constexpr std::uint32_t kDelete = 127;
constexpr std::string_view kDroppedMarks = "*/:;?\\";
constexpr HorivoWideChar kBackslash = '\\';

bool StaysInName(HorivoWideChar c) noexcept {
    const std::uint32_t code = c;
    if (code < kFirstPrintable || code == kDelete) return false;
    return code > kDelete || kDroppedMarks.find(static_cast<char>(code)) == std::string_view::npos;
}

/// Appends the cleaned `name` and a backslash to `path`, as a folder. Returns false when the
/// cleaned name cannot be a folder name.
bool AppendFolder(WideString& path, WideView name) {
    const WideString cleaned = CleanPlaceName(name);
    if (!IsFolderName(cleaned)) return false;
    path.append(cleaned).push_back(kBackslash);
    return true;
}

}  // namespace

WideString CleanPlaceName(WideView name, Spaces spaces) {
    WideString cleaned;
    cleaned.reserve(name.size());
    for (const HorivoWideChar c : name) {
        if (!StaysInName(c)) continue;
        cleaned.push_back(c == ' ' && spaces == Spaces::Underscore ? HorivoWideChar{'_'} : c);
    }
    return cleaned;
}

bool IsFolderName(WideView cleaned) noexcept {
    // Windows removes dots and spaces from the end of a name, so that ".. " would mean "..".
    return std::any_of(cleaned.begin(), cleaned.end(),
                       [](HorivoWideChar c) { return c != '.' && c != ' '; });
}

bool FormPhotoFolder(WideView root, WideView country, WideView city, WideString& path) {
    path.clear();
    if (root.empty() || country.empty()) return false;
    WideString folder(root);
    if (!AppendFolder(folder, country)) return false;
    if (!city.empty() && !AppendFolder(folder, city)) return false;
    if (folder.size() >= kPathLimit) return false;
    path = std::move(folder);
    return true;
}

bool FormPhotoPath(WideView root, WideView country, WideView city, std::int32_t number,
                   WideString& path) {
    return FormPhotoFolder(root, country, city, path) &&
           AppendFileName(path, WidenAscii(std::to_string(number) + ".jpg"));
}

bool AppendFileName(WideString& path, WideView fileName) {
    path.append(fileName);
    if (path.size() < kPathLimit) return true;
    path.clear();
    return false;
}
