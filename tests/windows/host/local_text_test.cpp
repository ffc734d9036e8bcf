// Strings, unit words, message boxes, a dialog and a menu in the words of a language file, and of
// files that somebody damaged.
#include <random>

#include "language_folder_win.h"

namespace {

TEST_F(LanguageTest, AStringComesFromTheFileElseFromTheResources) {
    Write(L"de",
          L"[StringTable]\r\n20=Stadt\\nzwei\\\\\r\n22=\r\n90=nur hier\r\n[Other]\r\n20=Ort\r\n");
    EXPECT_EQ(Load(Resources(), IDS_COLUMN_CITY), L"City") << "no language file yet";
    EXPECT_EQ(Load(nullptr, IDS_COLUMN_CITY), L"") << "nor resources";
    SetLanguage(L"DEU");
    EXPECT_EQ(Load(Resources(), IDS_COLUMN_CITY), L"Stadt\nzwei\\");
    EXPECT_EQ(Load(Resources(), IDS_COLUMN_CITY, L"Other"), L"Ort");
    EXPECT_EQ(Load(Resources(), IDS_COLUMN_CITY, L""), L"City") << "no section, no file";
    EXPECT_EQ(Load(Resources(), IDS_COLUMN_DATE), L"Date") << "empty in the file";
    EXPECT_EQ(Load(nullptr, IDS_COLUMN_TIME), L"") << "not the program's own strings";
    EXPECT_EQ(Load(Resources(), IDS_COLUMN_TIME, nullptr, 3), L"Ti") << "missing in the file";
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
    EXPECT_STREQ(GetUnitWord(0, 2), L"seconds");
    EXPECT_STREQ(GetUnitWord(1, 1), L"Minute");
    EXPECT_STREQ(GetUnitWord(1, 2), L"Minuten");
    EXPECT_STREQ(GetUnitWord(2, 1), L"h") << "no identifier";
    EXPECT_STREQ(GetUnitWord(4, 2), L"w") << "no such string";
}

/// What a message box showed before it was answered.
struct {
    std::wstring text, caption;
} seenBox;

void CALLBACK AnswerBox(HWND, UINT, UINT_PTR, DWORD) {
    const HWND box = GetActiveWindow();
    if (box == nullptr) return;
    seenBox = {TextOf(GetDlgItem(box, 0xFFFF)), TextOf(box)};
    PostMessageW(box, WM_COMMAND, IDOK, 0);
}

TEST_F(LanguageTest, AMessageBoxShowsTextAndCaption) {
    Write(L"de", L"[Box]\r\n63=" + std::wstring(300, L'x') + L"\r\n10=" + std::wstring(300, L'y'));
    SetLanguage(L"DEU");
    const UINT_PTR timer = SetTimer(nullptr, 0, 20, AnswerBox);
    EXPECT_EQ(LocalMessageBox(nullptr, Resources(), IDS_NO_CITIES, IDS_TITLE), IDOK);
    EXPECT_EQ(seenBox.text, L"There are no cities in cities.tsv beside the program.");
    EXPECT_EQ(seenBox.caption, L"Horivo World Clock");
    EXPECT_EQ(LocalMessageBox(nullptr, Resources(), IDS_NO_CITIES, IDS_TITLE, L"Box"), IDOK);
    EXPECT_EQ(seenBox.text, std::wstring(128, L'x'));
    EXPECT_EQ(seenBox.caption, std::wstring(32, L'y'));
    KillTimer(nullptr, timer);
}

TEST_F(LanguageTest, ADialogGetsTitleLabelsAndButtons) {
    Write(L"de",
          L"[About]\r\nCaption=Über\r\n1001=Weltuhr\\n\r\n7=innen\r\n8=kein Feld\r\n"
          L"0=null\r\n-1=minus\r\n65535=kurz\r\n");
    Write(L"en", L"[About]\r\nCaption=never\r\n1=Fine\r\n1001=never\r\n");
    SetDirectory(folder_.c_str());
    const HWND dialog = OpenDialog(IDD_ABOUT);
    const auto add = [](HWND parent, const wchar_t* className, LONG_PTR id) {
        return CreateWindowExW(0, className, L"before", WS_CHILD, 0, 0, 9, 9, parent,
                               reinterpret_cast<HMENU>(id), nullptr, nullptr);
    };
    const HWND inner = add(add(dialog, L"BUTTON", 900), L"static", 7);
    const HWND kept[] = {add(dialog, L"Edit", 8), add(dialog, L"Static", 0),
                         add(dialog, L"Static", -1), add(dialog, L"Static", 0xFFFF)};
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
    for (const HWND control : kept) EXPECT_EQ(TextOf(control), L"before");
    EXPECT_TRUE(LocalizeDialog(dialog, L"Nothing of that name")) << "it was tried";
    DestroyWindow(dialog);
}

TEST_F(LanguageTest, AMenuAndItsSubmenusGetTheirTexts) {
    Write(L"de",
          L"[Menu]\r\nFile=&Datei\r\n40001=&Neu\tStrg+N\r\nRecent_files=Zuletzt\r\n"
          L"0=Strich\r\n[Deep]\r\n77=ganz tief\r\n");
    Write(L"en", L"[Menu]\r\nFile=never\r\nHelp=From the fallback\r\n");
    SetDirectory(folder_.c_str());
    const HMENU menu = OpenMenu();
    const HMENU deep = CreatePopupMenu();
    AppendMenuW(deep, MF_STRING, 77, L"deep");
    const HMENU file = GetSubMenu(menu, 0);
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
    const UINT last = static_cast<UINT>(GetMenuItemCount(file)) - 1;
    EXPECT_EQ(ItemText(file, last, MF_BYPOSITION), L"Zuletzt");
    EXPECT_EQ(GetSubMenu(file, static_cast<int>(last)), deep) << "it still opens its submenu";
    EXPECT_NE(GetMenuState(file, 2, MF_BYPOSITION) & MF_SEPARATOR, 0U);
    EXPECT_TRUE(LocalizeMenu(menu, L"Deep")) << "one item, two levels down";
    EXPECT_EQ(ItemText(menu, 77, MF_BYCOMMAND), L"ganz tief");
    DestroyMenu(menu);
}

class HostileFileTest : public LanguageTest {
protected:
    /// Takes every way into the file; what it does not name keeps its text.
    void Use() {
        RegisterResources();
        SetLanguage(L"DEU");
        ASSERT_STRNE(LangFile().langFilePath, L"");
        for (const std::int32_t size : {1, 2, 3, 32, 3072, 70000}) {
            for (const std::uint32_t id : {20U, 21U, 260U, 0xFFFFFFFFU}) {
                Load(Resources(), id, nullptr, size);
            }
        }
        const HMENU menu = OpenMenu();
        const HWND dialog = OpenDialog(IDD_ABOUT);
        LocalizeMenu(menu, L"Menu");
        LocalizeDialog(dialog, L"About");
        menuText_ = ItemText(menu, IDM_NEW_WINDOW, MF_BYCOMMAND);
        controlText_ = TextOf(GetDlgItem(dialog, IDC_ABOUT_NAME));
        EXPECT_EQ(ItemText(menu, IDM_EXIT, MF_BYCOMMAND), L"E&xit");
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
    std::wstring escapes;
    while (escapes.size() < 60000) escapes += L"\\t\\x\\";
    Write(L"de", L"[StringTable]\r\n20=" + value + L"\r\n21=" + escapes + L"\r\n260=" + value +
                     L";1 " + value + L"\r\n[About]\r\nCaption=" + value + L"\r\n1001=" + value +
                     L"\r\n[Menu]\r\n40001=" + value + L"\r\n");
    Use();
    EXPECT_EQ(menuText_, std::wstring(255, L'v'));
    EXPECT_EQ(controlText_, std::wstring(2047, L'v'));
    EXPECT_EQ(GetUnitWord(3, 1), std::wstring(1023, L'v'));
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
