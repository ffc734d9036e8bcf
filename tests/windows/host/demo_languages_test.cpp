// The sample host's own language files: complete, within the limits, with room for every text.
#include "language_folder_win.h"

namespace {

constexpr wchar_t kUntouched[] = L"?";  // marks what must get a text

struct Language {
    const wchar_t *abbrev, *code;
    const wchar_t *oneDay, *twoDays, *fiveDays, *twentyOneDays;
};

constexpr Language kLanguages[] = {{L"ENU", L"en", L"day", L"days", L"days", L"days"},
                                   {L"DEU", L"de", L"Tag", L"Tage", L"Tage", L"Tage"},
                                   {L"ESN", L"es", L"día", L"días", L"días", L"días"},
                                   {L"FRA", L"fr", L"jour", L"jours", L"jours", L"jours"},
                                   {L"RUS", L"ru", L"день", L"дня", L"дней", L"день"},
                                   {L"JPN", L"ja", L"日", L"日", L"日", L"日"}};

class DemoLanguageTest : public LanguageTest, public testing::WithParamInterface<Language> {
protected:
    DemoLanguageTest() {
        InitLangFile();  // the files lie beside this program
        SetBaseName(L"horivo_demo");
        RegisterResources();
        SetLanguage(GetParam().abbrev);
    }
    static bool IsEnglish() { return std::wstring(GetParam().code) == L"en"; }
};

TEST_P(DemoLanguageTest, HasEveryStringAndCountsDays) {
    const Language& words = GetParam();
    const std::wstring file = std::wstring(L"horivo_demo_") + words.code + L".ini";
    ASSERT_TRUE(std::wstring(LangFile().langFilePath).ends_with(file));
    for (std::uint32_t id = 1; id < 300; ++id) {
        wchar_t english[4] = {};
        if (LoadStringW(Resources(), id, english, 4) == 0) continue;
        // English has its strings in the resources, every other language in its file alone.
        const std::wstring text = Load(IsEnglish() ? Resources() : nullptr, id, nullptr, 1000);
        EXPECT_NE(text, L"") << id;
        // What a message box shows.
        const std::size_t most = id == IDS_TITLE ? 32 : id < IDS_UNIT_SECONDS ? 128 : 1000;
        EXPECT_LE(text.size(), most) << id;
    }
    EXPECT_STREQ(GetUnitWord(3, 1), words.oneDay);
    EXPECT_STREQ(GetUnitWord(3, 2), words.twoDays);
    EXPECT_STREQ(GetUnitWord(3, 5), words.fiveDays);
    EXPECT_STREQ(GetUnitWord(3, 11), words.fiveDays);
    EXPECT_STREQ(GetUnitWord(3, 21), words.twentyOneDays);
}

TEST_P(DemoLanguageTest, HasEveryMenuItem) {
    const HMENU english = OpenMenu();
    const HMENU menu = OpenMenu();
    const auto forEachCommand = [menu](auto act) {
        for (int top = 0; top < GetMenuItemCount(menu); ++top) {
            const HMENU submenu = GetSubMenu(menu, top);
            for (int i = 0; i < GetMenuItemCount(submenu); ++i) {
                if (const UINT id = GetMenuItemID(submenu, i); id != 0) act(top, id);
            }
        }
    };
    forEachCommand([menu](int, UINT id) { ModifyMenuW(menu, id, MF_BYCOMMAND, id, kUntouched); });
    ASSERT_TRUE(LocalizeMenu(menu, MENU_SECTION));
    std::wstring accessKeys[4];
    forEachCommand([&](std::size_t top, UINT id) {
        const std::wstring text = ItemText(menu, id, MF_BYCOMMAND);
        EXPECT_NE(text, kUntouched) << id;
        EXPECT_EQ(text.find(L'\t') == std::wstring::npos,
                  ItemText(english, id, MF_BYCOMMAND).find(L'\t') == std::wstring::npos)
            << id;
        wchar_t key[] = {text.at(text.find(L'&') + 1), L'\0'};
        CharLowerW(key);
        EXPECT_EQ(accessKeys[top].find(key), std::wstring::npos) << "access key taken twice";
        accessKeys[top] += key;
    });
    for (UINT top = 0; top < std::size(accessKeys); ++top) {
        const bool same =
            ItemText(menu, top, MF_BYPOSITION) == ItemText(english, top, MF_BYPOSITION);
        EXPECT_EQ(same, IsEnglish()) << "title " << top;
    }
    DestroyMenu(menu);
    DestroyMenu(english);
}

BOOL CALLBACK MarkControl(HWND control, LPARAM) { return SetWindowTextW(control, kUntouched); }

BOOL CALLBACK CheckControl(HWND control, LPARAM) {
    const std::wstring text = TextOf(control);
    EXPECT_NE(text, kUntouched) << GetDlgCtrlID(control);
    RECT room{};
    GetClientRect(control, &room);
    RECT needed = {0, 0, room.right, 0};
    HDC dc = GetDC(control);
    HGDIOBJ before =
        SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)));
    DrawTextW(dc, text.c_str(), -1, &needed, DT_CALCRECT | DT_WORDBREAK);
    SelectObject(dc, before);
    ReleaseDC(control, dc);
    EXPECT_TRUE(needed.bottom <= room.bottom && needed.right <= room.right)
        << GetDlgCtrlID(control);
    return TRUE;
}

TEST_P(DemoLanguageTest, HasRoomForEveryLabel) {
    for (const auto& [id, section] :
         {std::pair{IDD_ABOUT, ABOUT_SECTION}, {IDD_KEYS, KEYS_SECTION}}) {
        const HWND dialog = OpenDialog(id);
        EnumChildWindows(dialog, MarkControl, 0);
        SetWindowTextW(dialog, kUntouched);
        ASSERT_TRUE(LocalizeDialog(dialog, section));
        EXPECT_NE(TextOf(dialog), kUntouched);
        EnumChildWindows(dialog, CheckControl, 0);
        DestroyWindow(dialog);
    }
}

INSTANTIATE_TEST_SUITE_P(All, DemoLanguageTest, testing::ValuesIn(kLanguages),
                         [](const auto& chosen) {
                             const std::wstring code = chosen.param.code;
                             return std::string(code.begin(), code.end());
                         });

}  // namespace
