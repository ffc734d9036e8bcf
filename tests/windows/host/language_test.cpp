// Languages: the start, the choice, the search for files; strings, message boxes, dialogs and menus
// in the words of a file; the sample host's own files.
#include <gtest/gtest.h>

#include <fstream>

#include "../../../demo/resource_ids.h"
#include "base/windows_types.h"
#include "horivo_host.h"
#include "support/faked_import_win.h"
#include "support/temporary_folder_win.h"

namespace {

class LanguageTest : public testing::Test {
protected:
    LanguageTest() {
        InitLangFile();
        SetDirectory(folder_.c_str());
        SetBaseName(L"texts");
    }

    /// Writes "texts_`code`.ini" in UTF-16 with a byte-order mark.
    void Write(const std::wstring& code, const std::wstring& text) {
        const std::wstring marked = L"\uFEFF" + text;
        std::ofstream(folder_ / (L"texts_" + code + L".ini"), std::ios::binary)
            .write(reinterpret_cast<const char*>(marked.data()),
                   static_cast<std::streamsize>(2 * marked.size()));
    }
    static std::wstring Load(HMODULE module, std::uint32_t id, const wchar_t* section = nullptr,
                             std::int32_t size = 1000) {
        // What lies behind the room that is told must stay as it is.
        std::wstring text(1008, L'#');
        const std::int32_t length = LoadLocalString(module, id, text.data(), size, section);
        EXPECT_EQ(text.substr(static_cast<std::size_t>(size), 8), L"########");
        EXPECT_EQ(text.at(static_cast<std::size_t>(length)), L'\0');
        return text.substr(0, static_cast<std::size_t>(length));
    }

    const TemporaryFolder temporary_;
    const std::filesystem::path& folder_ = temporary_.path;
    const HMODULE english_ = LoadLibraryExW(L"res_en.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE);
};

std::wstring TextOf(HWND window) {
    wchar_t text[3000];
    return {text, static_cast<std::size_t>(GetWindowTextW(window, text, 3000))};
}
std::wstring ItemText(HMENU menu, UINT item, UINT by = MF_BYCOMMAND) {
    wchar_t text[500];
    return {text, static_cast<std::size_t>(GetMenuStringW(menu, item, text, 500, by))};
}
/// The names of the days and of the months, one after the other.
std::wstring Names() {
    std::wstring all;
    for (const auto* name : dayNames) all += std::wstring(name) + L' ';
    for (const auto* name : monthNames) all += std::wstring(name) + L' ';
    return all;
}

TEST_F(LanguageTest, TheSharedStartIsEnglishOnceAndANewBeginningTheUsers) {
    InitLangFile();
    ASSERT_TRUE(StartHostServices());
    EXPECT_STREQ(LangFile().langAbbrev, L"en");
    const wchar_t* const words[] = {L"seconds", L"minutes", L"hours", L"days", L"weeks"};
    for (std::uint32_t i = 0; i < 5; ++i) EXPECT_STREQ(GetUnitWord(i, 2), words[i]);
    SetResources(nullptr, nullptr);
    SetLanguage(L"DEU");
    EXPECT_TRUE(StartHostServices());
    EXPECT_STREQ(LangFile().langAbbrev, L"deu");
    InitLangFile();
    wchar_t program[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    wchar_t abbrev[16] = {};
    GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SABBREVLANGNAME, abbrev, 16);
    EXPECT_EQ(std::wstring(LangFile().directory) + LangFile().baseName + L".exe", program);
    EXPECT_STREQ(LangFile().extension, L".ini");
    EXPECT_STREQ(LangFile().langAbbrev, _wcslwr(abbrev));
    EXPECT_EQ(GetLanguageId(), 0x400U);
    EXPECT_STREQ(GetUnitWord(1, 5), L"m");
}

TEST_F(LanguageTest, FindsTheFilesOfALanguageByItsFields) {
    for (const wchar_t* code : {L"id", L"ja", L"de", L"en"}) Write(code, L"");
    std::filesystem::create_directory(folder_ / L"texts_ru.ini");
    SetLanguage(L"DEU");
    EXPECT_EQ(LangFile().langFilePath, folder_ / L"texts_de.ini");
    EXPECT_STREQ(LangFile().fallbackFilePath, L"") << "only the fields look for it";
    wchar_t path[kLangPathChars + 1];
    const struct {
        const wchar_t *abbrev, *file;
        bool found;
    } cases[] = {
        {L"ind", L"texts_id.ini", true},  {L"JPN", L"texts_ja.ini", true},
        {nullptr, L"texts_de.ini", true}, {L"", L"texts_de.ini", true},
        {L"FRA", L"texts_fr.ini", false}, {L"RUS", L"texts_ru.ini", false},
    };
    for (const wchar_t* end : {L"", L"\\"}) {
        EXPECT_TRUE(SetDirectory((folder_.wstring() + end).c_str()));
        EXPECT_EQ(LangFile().fallbackFilePath, folder_ / L"texts_en.ini");
        for (const auto& c : cases) {
            EXPECT_EQ(FindLanguageFile(c.abbrev, path), c.found) << c.file;
            EXPECT_EQ(path, folder_ / c.file);
        }
    }
    SetLanguage(L"FRA");
    EXPECT_STREQ(LangFile().langFilePath, L"");
    SetLanguage(L"DEU");
    EXPECT_FALSE(SetExtension(L".languages"));
    EXPECT_STREQ(LangFile().langFilePath, L"");
    EXPECT_STREQ(LangFile().extension, L".languag");
    EXPECT_STREQ(LangFile().fallbackFilePath, L"");
    EXPECT_FALSE(SetBaseName(std::wstring(1000, L'b').c_str()));
    EXPECT_EQ(LangFile().baseName, std::wstring(64, L'b'));
    SetDirectory(std::wstring(1000, L'd').c_str());
    EXPECT_EQ(LangFile().directory, std::wstring(260, L'd'));
    EXPECT_FALSE(FindLanguageFile(L"DEU", path));
    EXPECT_STREQ(path, L"") << "too long for any file";
}

TEST_F(LanguageTest, ALanguageBringsItsLocaleAndItsNames) {
    const struct {
        const wchar_t* abbrev;
        LCID id;
        const wchar_t* names;
    } cases[] = {
        {L"rus", 0x419,
         L"воскресенье понедельник вторник среда четверг пятница суббота "
         L"январь февраль март апрель май июнь июль август сентябрь октябрь ноябрь декабрь "},
        {L"ESN", 0xC0A,
         L"domingo lunes martes miércoles jueves viernes sábado "
         L"enero febrero marzo abril mayo junio julio agosto septiembre octubre noviembre "
         L"diciembre "},
    };
    for (const auto& c : cases) {
        SetLanguage(c.abbrev);
        EXPECT_EQ(GetLanguageId(), c.id);
        EXPECT_EQ(GetThreadLocale(), c.id);
        EXPECT_EQ(lstrcmpiW(Names().c_str(), c.names), 0) << Names();
    }
    SetLanguage(L"en");
    EXPECT_EQ(GetLanguageId(), 0x400U) << "no locale has that abbreviation";
    int answer = 0;
    const FakedImport<"GetLocaleInfoW", decltype(GetLocaleInfoW)> odd(
        GetModuleHandleW(nullptr), [&](LCID, LCTYPE, wchar_t* text, int size) {
            if (answer != 0) lstrcpynW(text, L"twenty characters...", size);
            return answer;
        });
    SetLanguage(L"DEU");
    EXPECT_EQ(Names(), std::wstring(19, L' ')) << "Windows gives none";
    InitLangFile();
    EXPECT_STREQ(LangFile().langAbbrev, L"");
    answer = 21;
    SetLanguage(L"DEU");
    EXPECT_STREQ(monthNames[11], L"twenty character");
}

TEST_F(LanguageTest, AStringComesFromTheFileElseFromTheResources) {
    const std::uint32_t ids[] = {IDS_UNIT_SECONDS, IDS_UNIT_MINUTES, 0, IDS_UNIT_DAYS, 999};
    SetResources(english_, ids);
    Write(L"de",
          L"[StringTable]\r\n20=Stadt\\nzwei\\\\\r\n22=\r\n90=nur hier\r\n0=unused\r\n"
          L"258=Minuten;1 Minute\r\n[Box]\r\n63=" +
              std::wstring(300, L'x') + L"\r\n10=" + std::wstring(300, L'y'));
    EXPECT_EQ(Load(english_, IDS_COLUMN_CITY), L"City") << "no language file yet";
    EXPECT_EQ(Load(nullptr, IDS_COLUMN_CITY), L"") << "nor resources";
    SetLanguage(L"DEU");
    EXPECT_EQ(Load(english_, IDS_COLUMN_CITY), L"Stadt\nzwei\\");
    EXPECT_EQ(Load(english_, IDS_COLUMN_CITY, L""), L"City") << "no section, no file";
    EXPECT_EQ(Load(english_, IDS_COLUMN_DATE), L"Date") << "empty in the file";
    EXPECT_EQ(Load(nullptr, IDS_COLUMN_TIME), L"") << "not the program's own strings";
    EXPECT_EQ(Load(english_, IDS_COLUMN_TIME, nullptr, 3), L"Ti") << "missing in the file";
    EXPECT_EQ(Load(english_, 90, nullptr, 5), L"nur ");
    EXPECT_EQ(Load(english_, 90, nullptr, 1), L"");
    EXPECT_EQ(LoadLocalString(english_, 90, nullptr, 9), 0);
    const wchar_t* const words[] = {L"seconds", L"Minuten", L"h", L"days", L"w"};
    for (std::uint32_t i = 0; i < 5; ++i) EXPECT_STREQ(GetUnitWord(i, 2), words[i]);
    const FakedImport<"MessageBoxW", decltype(MessageBoxW)> box(
        GetModuleHandleW(nullptr), [](HWND, const wchar_t* text, const wchar_t* caption, UINT) {
            EXPECT_EQ(text, std::wstring(128, L'x'));
            EXPECT_EQ(caption, std::wstring(32, L'y'));
            return 7;
        });
    EXPECT_EQ(LocalMessageBox(nullptr, english_, IDS_NO_CITIES, IDS_TITLE, L"Box"), 7);
}

TEST_F(LanguageTest, ADialogAndAMenuGetTheirTexts) {
    Write(L"de", L"[About]\r\nCaption=Über" + std::wstring(999, L'c') + L"\r\n1001=Uhr\\n" +
                     std::wstring(60000, L'v') +
                     L"\r\n8=kein Feld\r\n0=null\r\n-1=minus\r\n65535=kurz\r\n[Menu]\r\n"
                     L"File=&Datei\r\n40001=&Neu\tStrg+N" +
                     std::wstring(999, L'n') +
                     L"\r\nRecent_files=Zuletzt\r\n0=Strich\r\n[Deep]\r\n40002=tief\r\n");
    Write(L"en",
          L"[About]\r\nCaption=no\r\n1=Fine\r\n1001=no\r\n[Menu]\r\nFile=no\r\nHelp=Aid\r\n");
    SetDirectory(folder_.c_str());
    const DLGPROC nothing = [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; };
    const HWND dialog =
        CreateDialogParamW(english_, MAKEINTRESOURCEW(IDD_ABOUT), nullptr, nothing, 0);
    std::vector<HWND> kept;
    for (const LONG_PTR id : {8, 0, -1, 0xFFFF})
        kept.push_back(CreateWindowW(id == 8 ? L"Edit" : L"Static", L"before", WS_CHILD, 0, 0, 9, 9,
                                     dialog, reinterpret_cast<HMENU>(id), nullptr, nullptr));
    const HMENU menu = LoadMenuW(english_, MAKEINTRESOURCEW(IDR_MAIN_MENU));
    const HMENU deep = CreatePopupMenu();
    const HMENU file = GetSubMenu(menu, 0);
    AppendMenuW(file, MF_POPUP, reinterpret_cast<UINT_PTR>(deep), L"&Recent files:");
    const auto last = static_cast<UINT>(GetMenuItemCount(file)) - 1;
    SetLanguage(L"FRA");
    EXPECT_FALSE(LocalizeDialog(dialog, L"About") || LocalizeMenu(menu, L"Menu")) << "no file";
    SetLanguage(L"DEU");
    EXPECT_FALSE(LocalizeDialog(dialog, L"") || LocalizeDialog(nullptr, L"About"));
    EXPECT_FALSE(LocalizeMenu(menu, nullptr) || LocalizeMenu(nullptr, L"Menu"));
    EXPECT_FALSE(LocalizeMenu(menu, L"Nothing")) << "no item was given a text";
    EXPECT_TRUE(LocalizeDialog(dialog, L"About"));
    EXPECT_EQ(TextOf(dialog), L"Über" + std::wstring(251, L'c'));
    EXPECT_EQ(TextOf(GetDlgItem(dialog, IDC_ABOUT_NAME)), L"Uhr\\n" + std::wstring(2042, L'v'));
    EXPECT_EQ(TextOf(GetDlgItem(dialog, IDOK)), L"Fine") << "from the file of \"en\"";
    EXPECT_EQ(TextOf(GetDlgItem(dialog, IDC_ABOUT_USE)).substr(0, 6), L"Choose") << "from neither";
    for (const HWND control : kept) EXPECT_EQ(TextOf(control), L"before");
    EXPECT_TRUE(LocalizeMenu(menu, L"Menu"));
    EXPECT_EQ(ItemText(menu, 0, MF_BYPOSITION), L"&Datei");
    EXPECT_EQ(ItemText(menu, 1, MF_BYPOSITION), L"&Map") << "in neither file";
    EXPECT_EQ(ItemText(menu, 3, MF_BYPOSITION), L"Aid") << "from the file of \"en\"";
    EXPECT_EQ(ItemText(menu, IDM_NEW_WINDOW), L"&Neu\tStrg+N" + std::wstring(244, L'n'));
    EXPECT_EQ(ItemText(file, last, MF_BYPOSITION), L"Zuletzt");
    EXPECT_EQ(GetSubMenu(file, static_cast<int>(last)), deep) << "it still opens its submenu";
    EXPECT_TRUE(LocalizeMenu(menu, L"Deep")) << "one item, inside a menu";
    DestroyMenu(menu);
    DestroyWindow(dialog);
    InitLangFile();
    EXPECT_TRUE(*LangFile().langFilePath == L'\0' && *LangFile().fallbackFilePath == L'\0');
}

TEST_F(LanguageTest, TheSampleHostsOwnFilesHaveEveryString) {
    InitLangFile();  // the files lie beside this program
    SetBaseName(L"horivo_demo");
    for (const wchar_t* language : {L"DEU", L"ESN", L"FRA", L"RUS", L"JPN"}) {
        SetLanguage(language);
        for (std::uint32_t id = 1; id < 300; ++id) {
            wchar_t text[4];
            EXPECT_TRUE(LoadStringW(english_, id, text, 4) == 0 || !Load(nullptr, id).empty())
                << language << id;
        }
    }
}

}  // namespace
