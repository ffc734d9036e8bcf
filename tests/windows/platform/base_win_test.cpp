// Texts on their way into byte strings and glyph lists, the library's data folder, and the guard of
// the stack.
#include <gtest/gtest.h>

#include <cstring>
#include <fstream>

#include "api/map_data_folder_win.h"
#include "base/narrow_text.h"
#include "render/gl_font.h"
#include "support/temporary_folder_win.h"

namespace {

namespace fs = std::filesystem;

TEST(NarrowText, ConvertsWholeTextsAndCutsLongOnesBetweenCharacters) {
    const struct {
        const char* why;
        UINT codePage;
        const wchar_t* text;
        int length, capacity;
        const char* bytes;
    } cases[] = {
        {"fits with its terminator to the byte", 1252, L"Paris", -1, 6, "Paris"},
        {"a length and a cut", 1252, L"Paris", 4, 3, "Pa"},
        {"null", 1252, nullptr, -1, 8, ""},
        {"no half of a two-byte character", 932, L"A\u6771\u4EAC", -1, 5, "A\x93\x8C"},
        {"a surrogate pair is one character", CP_UTF8, L"\xD83C\xDF0Dx", -1, 5, "\xF0\x9F\x8C\x8D"},
        {"and is not cut in two", CP_UTF8, L"a\xD83C\xDF0D", -1, 5, "a"},
    };
    for (const auto& c : cases) {
        char buffer[16] = "###############";
        const int written = NarrowTextIn(c.codePage, c.text, c.length, buffer, c.capacity);
        EXPECT_STREQ(buffer, c.bytes) << c.why;
        EXPECT_EQ(written, lstrlenA(c.bytes)) << c.why;
        EXPECT_EQ(buffer[c.capacity], '#') << c.why;
    }
}

TEST(CharacterOfCode, FollowsSingleByteCodePagesOnly) {
    EXPECT_EQ(CharacterOfCode(1251, 0xFE), L'\u044E') << "the last code with a list";
    EXPECT_EQ(CharacterOfCode(1251, 0xFF), L'\u00FF') << "255 has none";
    EXPECT_EQ(CharacterOfCode(874, 0xB0), L'\u00B0') << "the degree sign of the readout stays";
    EXPECT_EQ(CharacterOfCode(932, 0xB1), L'\u00B1') << "Japanese has two bytes a character";
}

TEST(DataFolder, HasTwoLevelsOrIsEmptyWhereNoFolderCanBe) {
    const TemporaryFolder base;
    const std::wstring expected = base.path.wstring() + L"\\Zelmo\\Horivo\\";
    EXPECT_EQ(DataDirectoryBelow(base.path), expected);
    EXPECT_TRUE(fs::is_directory(expected));
    EXPECT_EQ(DataDirectoryBelow(base.path), expected) << "found";
    EXPECT_EQ(DataDirectoryBelow(L""), L"") << "never a folder of the current directory";
    EXPECT_EQ(DataDirectoryBelow(base.path / "missing\\deeper"), L"");
    for (const char* file : {"Zelmo\\Horivo", "Zelmo"}) {
        fs::remove(base.path / file);
        std::ofstream(base.path / file) << "a file in the way";
        EXPECT_EQ(DataDirectoryBelow(base.path), L"");
        EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_ALREADY_EXISTS));
        fs::remove(base.path / file);
    }
    // What is added has 14 characters: 260 would leave no room for a terminator.
    std::wstring folder = base.path.wstring() + L'\\' + std::wstring(120, L'd') + L'\\';
    folder += std::wstring(246 - folder.size(), L'd');
    fs::create_directories(folder);
    EXPECT_EQ(DataDirectoryBelow(folder), L"");
}

/// Writes over the end of its own buffer, in a way that the compiler cannot foresee.
[[gnu::noinline]] int Overrun(std::size_t length) {
    char buffer[16] = {};
    char* volatile start = buffer;
    std::memset(start, 'x', length);
    return buffer[0];
}

TEST(StackGuard, EndsTheProcessBeforeAnOverwrittenAddressIsUsed) {
    const testing::ExitedWithCode stopped(static_cast<int>(STATUS_STACK_BUFFER_OVERRUN));
    EXPECT_EXIT(Overrun(256), stopped, "");
}

}  // namespace
