// Strings, unit words, message boxes, a dialog and a menu in the words of a language file.
#include "language_folder_win.h"

namespace {

TEST_F(LanguageTest, AStringComesFromTheFileElseFromTheResources) {
    Write(L"de",
          L"[StringTable]\r\n20=Stadt\\nzwei\\\\\r\n22=\r\n90=nur hier\r\n[Other]\r\n20=Ort\r\n");
    EXPECT_EQ(Load(Resources(), IDS_COLUMN_CITY), L"City") << "no language file yet";
    SetLanguage(L"DEU");
    EXPECT_EQ(Load(Resources(), IDS_COLUMN_CITY), L"Stadt\nzwei\\");
    EXPECT_EQ(Load(Resources(), IDS_COLUMN_CITY, L"Other"), L"Ort");
    EXPECT_EQ(Load(Resources(), IDS_COLUMN_CITY, L""), L"City") << "no section, no file";
    EXPECT_EQ(Load(Resources(), IDS_COLUMN_TIME), L"Time") << "missing in the file";
    EXPECT_EQ(Load(Resources(), IDS_COLUMN_DATE), L"Date") << "empty in the file";
    EXPECT_EQ(Load(Resources(), 90), L"nur hier");
    EXPECT_EQ(Load(Resources(), 91), L"");
    EXPECT_EQ(Load(nullptr, IDS_COLUMN_TIME), L"") << "not the program's own strings";
    EXPECT_EQ(Load(Resources(), IDS_COLUMN_TIME, nullptr, 3), L"Ti");
    EXPECT_EQ(Load(Resources(), 90, nullptr, 5), L"nur ");
    EXPECT_EQ(Load(Resources(), 90, nullptr, 1), L"");
    wchar_t untouched = L'#';
    EXPECT_EQ(LoadLocalString(Resources(), 90, &untouched, 0), 0);
    EXPECT_EQ(LoadLocalString(Resources(), 90, nullptr, 9), 0);
    EXPECT_EQ(untouched, L'#');
}

TEST_F(LanguageTest, UnitTablesOfTheFileReplaceThoseOfTheResources) {
    const std::uint32_t ids[] = {IDS_UNIT_SECONDS, IDS_UNIT_MINUTES, 0, IDS_UNIT_DAYS, 999};
    SetResources(Resources(), ids);
    Write(L"de", L"[StringTable]\r\n258=Minuten;1 Minute\r\n0=unused\r\n");
    SetLanguage(L"DEU");
    const struct {
        std::uint32_t table, number;
        const wchar_t* word;
    } cases[] = {{0, 2, L"seconds"}, {1, 1, L"Minute"}, {1, 2, L"Minuten"}, {2, 1, L"h"},
                 {3, 101, L"day"},   {3, 111, L"days"}, {4, 2, L"w"}};
    for (const auto& c : cases) EXPECT_STREQ(GetUnitWord(c.table, c.number), c.word);
    EXPECT_EQ(GetUnitWord(5, 1), nullptr);
}

/// What a message box showed before it was answered.
struct SeenBox {
    std::wstring text, caption;
} seenBox;

BOOL CALLBACK AnswerBox(HWND box, LPARAM) {
    wchar_t text[500] = {};
    if (GetDlgItem(box, IDOK) == nullptr && GetDlgItem(box, IDCANCEL) == nullptr) return TRUE;
    GetWindowTextW(box, text, 500);
    seenBox.caption = text;
    GetDlgItemTextW(box, 0xFFFF, text, 500);
    seenBox.text = text;
    PostMessageW(box, WM_COMMAND, IDOK, 0);
    return FALSE;
}

void CALLBACK LookForBox(HWND, UINT, UINT_PTR, DWORD) {
    EnumThreadWindows(GetCurrentThreadId(), AnswerBox, 0);
}

TEST_F(LanguageTest, AMessageBoxShowsTextAndCaption) {
    Write(L"de", L"[Box]\r\n63=" + std::wstring(300, L'x') + L"\r\n10=" + std::wstring(300, L'y'));
    SetLanguage(L"DEU");
    const UINT_PTR timer = SetTimer(nullptr, 0, 20, LookForBox);
    EXPECT_EQ(LocalMessageBox(nullptr, Resources(), IDS_NO_CITIES, IDS_TITLE), IDOK);
    EXPECT_EQ(seenBox.text, L"There are no cities in cities.tsv beside the program.");
    EXPECT_EQ(seenBox.caption, L"Horivo World Clock");
    EXPECT_EQ(LocalMessageBox(nullptr, Resources(), IDS_NO_CITIES, IDS_TITLE, L"Box"), IDOK);
    EXPECT_EQ(seenBox.text, std::wstring(128, L'x'));
    EXPECT_EQ(seenBox.caption, std::wstring(32, L'y'));
    KillTimer(nullptr, timer);
}

INT_PTR CALLBACK NoProc(HWND, UINT, WPARAM, LPARAM) { return FALSE; }

TEST_F(LanguageTest, ADialogGetsTitleLabelsAndButtons) {
    Write(L"de",
          L"[About]\r\nCaption=Über\r\n1001=Weltuhr\\n\r\n7=innen\r\n8=kein Feld\r\n"
          L"0=null\r\n-1=minus\r\n65535=kurz\r\n");
    Write(L"en", L"[About]\r\nCaption=never\r\n1=Fine\r\n1001=never\r\n");
    SetDirectory(folder_.c_str());
    HWND dialog = CreateDialogParamW(Resources(), MAKEINTRESOURCEW(IDD_ABOUT), nullptr, NoProc, 0);
    ASSERT_NE(dialog, nullptr);
    const auto add = [](HWND parent, const wchar_t* className, LONG_PTR id) {
        return CreateWindowExW(0, className, L"before", WS_CHILD, 0, 0, 9, 9, parent,
                               reinterpret_cast<HMENU>(id), nullptr, nullptr);
    };
    const HWND group = add(dialog, L"BUTTON", 900);
    const HWND inner = add(group, L"static", 7);
    const HWND edit = add(dialog, L"Edit", 8);
    const HWND unnamed[] = {add(dialog, L"Static", 0), add(dialog, L"Static", -1),
                            add(dialog, L"Static", 0xFFFFFFFF), add(dialog, L"Static", 0xFFFF)};
    SetLanguage(L"FRA");
    EXPECT_FALSE(LocalizeDialog(dialog, L"About")) << "no language file";
    SetLanguage(L"DEU");
    EXPECT_FALSE(LocalizeDialog(dialog, nullptr));
    EXPECT_FALSE(LocalizeDialog(dialog, L""));
    EXPECT_FALSE(LocalizeDialog(nullptr, L"About"));
    EXPECT_TRUE(LocalizeDialog(dialog, L"About"));
    EXPECT_EQ(TextOf(dialog), L"Über");
    EXPECT_EQ(TextOf(GetDlgItem(dialog, IDC_ABOUT_NAME)), L"Weltuhr\\n") << "no escapes here";
    EXPECT_EQ(TextOf(GetDlgItem(dialog, IDOK)), L"Fine") << "from the file of \"en\"";
    EXPECT_EQ(TextOf(GetDlgItem(dialog, IDC_ABOUT_USE)).substr(0, 6), L"Choose") << "from neither";
    EXPECT_EQ(TextOf(inner), L"innen") << "inside another control";
    EXPECT_EQ(TextOf(edit), L"before");
    for (HWND control : unnamed) EXPECT_EQ(TextOf(control), L"before");
    EXPECT_TRUE(LocalizeDialog(dialog, L"Nothing of that name")) << "it was tried";
    DestroyWindow(dialog);
}

TEST_F(LanguageTest, AMenuAndItsSubmenusGetTheirTexts) {
    Write(L"de",
          L"[Menu]\r\nFile=&Datei\r\n40001=&Neu\tStrg+N\r\nRecent_files=Zuletzt\r\n"
          L"77=tief\r\n0=Strich\r\n[Deep]\r\n77=ganz tief\r\n");
    Write(L"en", L"[Menu]\r\nFile=never\r\nHelp=From the fallback\r\n");
    SetDirectory(folder_.c_str());
    HMENU menu = LoadMenuW(Resources(), MAKEINTRESOURCEW(IDR_MAIN_MENU));
    HMENU deep = CreatePopupMenu();
    AppendMenuW(deep, MF_STRING, 77, L"deep");
    HMENU file = GetSubMenu(menu, 0);
    AppendMenuW(file, MF_POPUP, reinterpret_cast<UINT_PTR>(deep), L"&Recent files:");
    SetLanguage(L"FRA");
    EXPECT_FALSE(LocalizeMenu(menu, L"Menu")) << "no language file";
    SetLanguage(L"DEU");
    EXPECT_FALSE(LocalizeMenu(menu, nullptr));
    EXPECT_FALSE(LocalizeMenu(menu, L"Nothing")) << "no item was given a text";
    EXPECT_FALSE(LocalizeMenu(nullptr, L"Menu"));
    EXPECT_TRUE(LocalizeMenu(menu, L"Menu"));
    EXPECT_EQ(ItemText(menu, 0, MF_BYPOSITION), L"&Datei");
    EXPECT_EQ(ItemText(menu, 1, MF_BYPOSITION), L"&Map") << "in neither file";
    EXPECT_EQ(ItemText(menu, 3, MF_BYPOSITION), L"From the fallback");
    EXPECT_EQ(ItemText(menu, IDM_NEW_WINDOW, MF_BYCOMMAND), L"&Neu\tStrg+N");
    EXPECT_EQ(ItemText(menu, 77, MF_BYCOMMAND), L"tief");
    const UINT last = static_cast<UINT>(GetMenuItemCount(file)) - 1;
    EXPECT_EQ(ItemText(file, last, MF_BYPOSITION), L"Zuletzt");
    EXPECT_EQ(GetSubMenu(file, static_cast<int>(last)), deep) << "it still opens its submenu";
    EXPECT_NE(GetMenuState(file, 2, MF_BYPOSITION) & MF_SEPARATOR, 0U);
    EXPECT_TRUE(LocalizeMenu(menu, L"Deep")) << "one item, two levels down";
    EXPECT_EQ(ItemText(menu, 77, MF_BYCOMMAND), L"ganz tief");
    DestroyMenu(menu);
}

}  // namespace
