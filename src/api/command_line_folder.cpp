#include "api/command_line_folder.h"

#include <cstddef>

namespace {

constexpr std::size_t kMaxPath = 260;  // characters with terminator; the value of MAX_PATH

}  // namespace

std::wstring FolderOfCommandLine(std::wstring_view commandLine) {
    std::wstring_view program = commandLine;
    if (!program.empty() && program.front() == L'"') {
        program.remove_prefix(1);
        program = program.substr(0, program.find(L'"'));
    }
    const std::size_t backslash = program.rfind(L'\\');
    // When the only backslash is the first character, no folder name is before it.
    if (backslash == std::wstring_view::npos || backslash == 0) return {};
    if (backslash + 1 >= kMaxPath) return {};
    return std::wstring(program.substr(0, backslash + 1));
}
