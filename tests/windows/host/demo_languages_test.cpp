// The sample host's own language files: complete, within the limits, with room for every text.
#include "language_folder_win.h"

namespace {

constexpr std::int32_t kLongestMessage = 128;  // characters that a message box shows
constexpr std::int32_t kLongestTitle = 32;

struct Language {
    const wchar_t *abbrev, *code, *oneDay, *twoDays, *fiveDays, *twentyOneDays;
};

class DemoLanguageTest : public LanguageTest, public testing::WithParamInterface<Language> {
protected:
    DemoLanguageTest() {
        InitLangFile();  // the files lie beside this program
        SetBaseName(L"horivo_demo");
        const std::uint32_t ids[] = {257, 258, 259, 260, 261};
        SetResources(Resources(), ids);
        SetLanguage(GetParam().abbrev);
    }
    static bool IsEnglish() { return std::wstring(GetParam().code) == L"en"; }
};

TEST_P(DemoLanguageTest, HasEveryStringAndCountsDays) {
    const std::wstring file = std::wstring(L"horivo_demo_") + GetParam().code + L".ini";
    ASSERT_TRUE(std::wstring(LangFile().langFilePath).ends_with(file));
    for (std::uint32_t id = 1; id < 300; ++id) {
        wchar_t english[4] = {};
        if (LoadStringW(Resources(), id, english, 4) == 0) continue;
        // English has its strings in the resources, every other language in its file alone.
        const std::wstring text = Load(IsEnglish() ? Resources() : nullptr, id, nullptr, 1000);
        EXPECT_NE(text, L"") << id;
        const std::int32_t most = id == IDS_TITLE         ? kLongestTitle
                                  : id < IDS_UNIT_SECONDS ? kLongestMessage
                                                          : 1000;
        EXPECT_LE(static_cast<std::int32_t>(text.size()), most) << id;
    }
    const Language& words = GetParam();
    EXPECT_STREQ(GetUnitWord(3, 1), words.oneDay);
    EXPECT_STREQ(GetUnitWord(3, 2), words.twoDays);
    EXPECT_STREQ(GetUnitWord(3, 5), words.fiveDays);
    EXPECT_STREQ(GetUnitWord(3, 11), words.fiveDays);
    EXPECT_STREQ(GetUnitWord(3, 21), words.twentyOneDays);
}

constexpr wchar_t kUntouched[] = L"?";

/// Puts a mark in place of every command's text, so that a missing one shows.
void MarkCommands(HMENU menu) {
    for (int i = 0; i < GetMenuItemCount(menu); ++i) {
        MENUITEMINFOW item = {};
        item.cbSize = sizeof item;
        item.fMask = MIIM_STRING;
        item.dwTypeData = const_cast<wchar_t*>(kUntouched);
        if (HMENU submenu = GetSubMenu(menu, i); submenu != nullptr) {
            MarkCommands(submenu);
        } else if (GetMenuItemID(menu, i) != 0) {
            SetMenuItemInfoW(menu, static_cast<UINT>(i), TRUE, &item);
        }
    }
}

TEST_P(DemoLanguageTest, HasEveryMenuItem) {
    HMENU english = LoadMenuW(Resources(), MAKEINTRESOURCEW(IDR_MAIN_MENU));
    HMENU menu = LoadMenuW(Resources(), MAKEINTRESOURCEW(IDR_MAIN_MENU));
    MarkCommands(menu);
    ASSERT_TRUE(LocalizeMenu(menu, MENU_SECTION));
    for (UINT top = 0; top < 4; ++top) {
        const bool same =
            ItemText(menu, top, MF_BYPOSITION) == ItemText(english, top, MF_BYPOSITION);
        EXPECT_EQ(same, IsEnglish()) << "title " << top;
        HMENU submenu = GetSubMenu(menu, static_cast<int>(top));
        std::wstring accessKeys;
        for (int i = 0; i < GetMenuItemCount(submenu); ++i) {
            const std::wstring text = ItemText(submenu, static_cast<UINT>(i), MF_BYPOSITION);
            if (GetMenuItemID(submenu, i) == 0) continue;
            EXPECT_NE(text, kUntouched) << GetMenuItemID(submenu, i);
            const std::wstring before = ItemText(english, GetMenuItemID(submenu, i), MF_BYCOMMAND);
            EXPECT_EQ(text.find(L'\t') == std::wstring::npos,
                      before.find(L'\t') == std::wstring::npos)
                << GetMenuItemID(submenu, i);
            const std::size_t ampersand = text.find(L'&');
            ASSERT_LT(ampersand + 1, text.size());
            wchar_t key[] = {text[ampersand + 1], L'\0'};
            CharLowerW(key);
            EXPECT_EQ(accessKeys.find(key), std::wstring::npos) << "access key taken twice";
            accessKeys += key;
        }
    }
    DestroyMenu(menu);
    DestroyMenu(english);
}

BOOL CALLBACK MarkControl(HWND control, LPARAM) {
    SetWindowTextW(control, kUntouched);
    return TRUE;
}

BOOL CALLBACK CheckControl(HWND control, LPARAM) {
    wchar_t text[500] = {};
    const int length = GetWindowTextW(control, text, 500);
    EXPECT_STRNE(text, kUntouched) << GetDlgCtrlID(control);
    RECT room{};
    GetClientRect(control, &room);
    RECT needed = {0, 0, room.right, 0};
    HDC dc = GetDC(control);
    HGDIOBJ before =
        SelectObject(dc, reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0)));
    DrawTextW(dc, text, length, &needed, DT_CALCRECT | DT_WORDBREAK);
    SelectObject(dc, before);
    ReleaseDC(control, dc);
    EXPECT_LE(needed.bottom, room.bottom) << GetDlgCtrlID(control);
    EXPECT_LE(needed.right, room.right) << GetDlgCtrlID(control);
    return TRUE;
}

TEST_P(DemoLanguageTest, HasRoomForEveryLabel) {
    const struct {
        int dialog;
        const wchar_t* section;
    } cases[] = {{IDD_ABOUT, ABOUT_SECTION}, {IDD_KEYS, KEYS_SECTION}};
    for (const auto& c : cases) {
        HWND dialog = CreateDialogParamW(
            Resources(), MAKEINTRESOURCEW(c.dialog), nullptr,
            [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; }, 0);
        EnumChildWindows(dialog, MarkControl, 0);
        SetWindowTextW(dialog, kUntouched);
        ASSERT_TRUE(LocalizeDialog(dialog, c.section));
        EXPECT_NE(TextOf(dialog), kUntouched);
        EnumChildWindows(dialog, CheckControl, 0);
        DestroyWindow(dialog);
    }
}

INSTANTIATE_TEST_SUITE_P(All, DemoLanguageTest,
                         testing::Values(Language{L"ENU", L"en", L"day", L"days", L"days", L"days"},
                                         Language{L"DEU", L"de", L"Tag", L"Tage", L"Tage", L"Tage"},
                                         Language{L"ESN", L"es", L"día", L"días", L"días", L"días"},
                                         Language{L"FRA", L"fr", L"jour", L"jours", L"jours",
                                                  L"jours"},
                                         Language{L"RUS", L"ru", L"день", L"дня", L"дней", L"день"},
                                         Language{L"JPN", L"ja", L"日", L"日", L"日", L"日"}),
                         [](const auto& chosen) {
                             const std::wstring code = chosen.param.code;
                             return std::string(code.begin(), code.end());
                         });

}  // namespace
