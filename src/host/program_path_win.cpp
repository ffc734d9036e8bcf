#include "host/program_path_win.h"

#include "base/windows_types.h"

namespace {

constexpr DWORD kPathCapacity = 1001;  // characters; longer than any path in the language record

struct PathText {
    PathText() noexcept {
        length = GetModuleFileNameW(nullptr, text, kPathCapacity);
        if (length >= kPathCapacity) length = 0;  // the path was truncated
    }
    wchar_t text[kPathCapacity];
    DWORD length;
};

}  // namespace

ProgramPath FindProgramPath() noexcept {
    static const PathText path;
    const std::wstring_view whole(path.text, path.length);
    // A path without a backslash gives an empty folder: find_last_of returns npos, npos + 1 is 0.
    const std::size_t nameStart = whole.find_last_of(L'\\') + 1;
    return {whole.substr(0, nameStart), whole.substr(nameStart)};
}
