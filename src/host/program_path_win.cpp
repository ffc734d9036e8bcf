#include "host/program_path_win.h"

#include "base/windows_types.h"

namespace {

constexpr DWORD kPathRoom = 1001;  // characters; more than the record of the language state takes

struct PathText {
    PathText() noexcept {
        length = GetModuleFileNameW(nullptr, text, kPathRoom);
        if (length >= kPathRoom) length = 0;  // cut short
    }
    wchar_t text[kPathRoom];
    DWORD length;
};

}  // namespace

ProgramPath FindProgramPath() noexcept {
    static const PathText path;
    const std::wstring_view whole(path.text, path.length);
    // Without a backslash (find_last_of gives npos, and npos + 1 is 0) the folder is empty.
    const std::size_t nameStart = whole.find_last_of(L'\\') + 1;
    return {whole.substr(0, nameStart), whole.substr(nameStart)};
}
