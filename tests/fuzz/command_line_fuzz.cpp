// Feeds command lines of any shape to FolderOfCommandLine: whatever comes out must be a piece of
// the line that ends with a backslash and fits a Windows path.

#include <cstdint>
#include <cstdlib>

#include "interface/command_line_folder.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::wstring line;  // a character of Windows' 16 bits from each two bytes
    for (std::size_t i = 0; i + 1 < size; i += 2) {
        line += static_cast<wchar_t>(data[i] | unsigned{data[i + 1]} << 8);
    }
    const std::wstring folder = FolderOfCommandLine(line);
    if (folder.empty()) return 0;
    const bool quoted = line.front() == L'"';
    const bool isPiece = line.compare(quoted ? 1 : 0, folder.size(), folder) == 0;
    const bool endsInTime = !quoted || folder.find(L'"') == std::wstring::npos;
    if (folder.size() > 259 || folder.back() != L'\\' || !isPiece || !endsInTime) std::abort();
    return 0;
}
