// Feeds command lines of any shape to FolderOfCommandLine: whatever comes out must be a piece of
// the line that ends with a backslash and fits a Windows path.

#include <cstdint>

#include "api/command_line_folder.h"
#include "fuzz/check.h"

namespace {

constexpr std::size_t kMaxBytes = 1U << 16U;  // Windows' command lines have 32767 characters

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size > kMaxBytes) return 0;
    std::wstring line;  // a character of Windows' 16 bits from each two bytes
    for (std::size_t i = 0; i + 1 < size; i += 2) {
        line += static_cast<wchar_t>(data[i] | unsigned{data[i + 1]} << 8);
    }
    const std::wstring folder = FolderOfCommandLine(line);
    if (folder.empty()) return 0;
    const bool quoted = line.front() == L'"';
    Check(folder.size() <= 259 && folder.back() == L'\\');
    Check(line.compare(quoted ? 1 : 0, folder.size(), folder) == 0);
    Check(!quoted || folder.find(L'"') == std::wstring::npos);
    return 0;
}
