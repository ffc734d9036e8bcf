// Language files that somebody damaged, or made to do damage: nothing but the texts that they hold
// may differ.
#include <random>

#include "language_folder_win.h"

namespace {

/// Every way into the file, with room that ends where it is said to end.
void UseEverything(HMODULE resources) {
    for (const std::int32_t size : {1, 2, 3, 32, 3072, 70000}) {
        std::wstring room(static_cast<std::size_t>(size) + 8, L'#');
        for (const std::uint32_t id : {20U, 21U, 22U, 260U, 0xFFFFFFFFU}) {
            const std::int32_t length = LoadLocalString(resources, id, room.data(), size);
            ASSERT_TRUE(length >= 0 && length < size);
            ASSERT_EQ(room[static_cast<std::size_t>(length)], L'\0');
            ASSERT_EQ(room.substr(static_cast<std::size_t>(size)), L"########");
        }
    }
    for (std::uint32_t table = 0; table < kUnitTables; ++table) {
        for (std::uint32_t number = 0; number < 100; ++number) {
            ASSERT_LT(std::wstring(GetUnitWord(table, number)).size(), kUnitChars);
        }
    }
}

class HostileFileTest : public LanguageTest {
protected:
    void Use() {
        const std::uint32_t ids[] = {257, 258, 259, 260, 261};
        SetResources(Resources(), ids);
        SetLanguage(L"DEU");
        ASSERT_STRNE(LangFile().langFilePath, L"");
        UseEverything(Resources());
        HMENU menu = LoadMenuW(Resources(), MAKEINTRESOURCEW(IDR_MAIN_MENU));
        HWND dialog = CreateDialogParamW(
            Resources(), MAKEINTRESOURCEW(IDD_ABOUT), nullptr,
            [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return 0; }, 0);
        LocalizeMenu(menu, L"Menu");
        LocalizeDialog(dialog, L"About");
        menuText_ = ItemText(menu, IDM_NEW_WINDOW, MF_BYCOMMAND);
        controlText_ = TextOf(GetDlgItem(dialog, IDC_ABOUT_NAME));
        EXPECT_EQ(ItemText(menu, IDM_EXIT, MF_BYCOMMAND), L"E&xit\tAlt+F4");
        EXPECT_EQ(TextOf(GetDlgItem(dialog, IDOK)), L"OK");
        EXPECT_EQ(Load(Resources(), IDS_COLUMN_OFFSET), L"Offset");
        EXPECT_EQ(GetUnitWord(4, 1), std::wstring(L"week"));
        DestroyWindow(dialog);
        DestroyMenu(menu);
    }

    std::wstring menuText_;
    std::wstring controlText_;
};

TEST_F(HostileFileTest, ValuesOfSixtyThousandCharacters) {
    const std::wstring value(60000, L'v');
    const std::wstring escapes = [] {
        std::wstring text;
        while (text.size() < 60000) text += L"\\t\\x\\";
        return text;
    }();
    Write(L"de", L"[StringTable]\r\n20=" + value + L"\r\n21=" + escapes + L"\r\n260=" + value +
                     L";1 " + value + L"\r\n[About]\r\nCaption=" + value + L"\r\n1001=" + value +
                     L"\r\n[Menu]\r\n40001=" + value + L"\r\n");
    Use();
    EXPECT_EQ(menuText_, std::wstring(255, L'v'));
    EXPECT_EQ(controlText_, std::wstring(2047, L'v'));
    EXPECT_EQ(GetUnitWord(3, 1), std::wstring(1023, L'v'));
}

TEST_F(HostileFileTest, BrokenUnitTablesAndEscapesAtTheVeryEnd) {
    const struct {
        const wchar_t *table, *escape;
    } cases[] = {
        {L";", L"a\\"},
        {L"x;", L"a\\\\\\"},
        {L"x;1", L"a\\t"},
        {L"x;1-", L"\\"},
        {L"x;1,", L"%n%s\\x"},
        {L"x;-", L"\"\\"},
        {L"x;1 ", L"\\t\\"},
        {L"x;;;; ;", L"\\r\\"},
        {L"x;0-99 ;0-99", L"\\\"\\"},
        {L"x;99999999999 y", L"'"},
        {L"%s%n;1 %s%n", L"\\%"},
    };
    for (const auto& c : cases) {
        Write(L"de", L"[StringTable]\r\n20=" + std::wstring(c.escape) + L"\r\n260=" + c.table);
        Use();
    }
}

TEST_F(HostileFileTest, BinaryFiles) {
    std::mt19937 random(5);
    for (int round = 0; round < 12; ++round) {
        const char* mark = round % 2 == 0 ? "\xFF\xFE" : "";
        std::string bytes = round % 4 < 2 ? mark : std::string(mark) + "[StringTable]\r\n20=";
        for (int i = 0; i < 1999 + round; ++i) bytes += static_cast<char>(random());
        WriteBytes(L"de", bytes);
        Use();
    }
}

}  // namespace
