// Choosing a language and finding its files.
#include "language_folder_win.h"

namespace {

TEST_F(LanguageTest, BeginsWithTheProgramAndTheUsersLanguage) {
    Write(L"en", L"");
    SetDirectory(folder_.c_str());
    RegisterResources();
    SetLanguage(L"en");
    InitLangFile();
    wchar_t program[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    wchar_t abbrev[16] = {};
    GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SABBREVLANGNAME, abbrev, 16);
    const CLangFile& file = LangFile();
    EXPECT_EQ(std::wstring(file.directory) + file.baseName + L".exe", program);
    EXPECT_STREQ(file.extension, L".ini");
    EXPECT_STREQ(file.langAbbrev, _wcslwr(abbrev));
    EXPECT_EQ(GetLanguageId(), 0x400U);
    EXPECT_STREQ(file.langFilePath, L"");
    EXPECT_STREQ(file.fallbackFilePath, L"");
    EXPECT_STREQ(GetUnitWord(1, 5), L"m");
}

TEST_F(LanguageTest, FindsTheFileOfALanguage) {
    for (const wchar_t* code : {L"id", L"ja", L"en", L"xy", L""}) Write(code, L"");
    std::filesystem::create_directory(folder_ / L"texts_ru.ini");
    const struct {
        const wchar_t* abbrev;
        const wchar_t* file;
        bool found;
    } cases[] = {
        {L"ind", L"texts_id.ini", true},  {L"JPN", L"texts_ja.ini", true},
        {L"", L"texts_en.ini", true},     {nullptr, L"texts_xy.ini", true},
        {L"x", L"texts_.ini", true},      {L"FRA", L"texts_fr.ini", false},
        {L"RUS", L"texts_ru.ini", false},
    };
    SetLanguage(L"XYZ");
    for (const std::wstring& directory : {folder_.wstring(), folder_.wstring() + L"\\"}) {
        SetDirectory(directory.c_str());
        for (const auto& c : cases) {
            wchar_t path[kLangPathChars + 1];
            EXPECT_EQ(FindLanguageFile(c.abbrev, path), c.found) << c.file;
            EXPECT_EQ(path, folder_ / c.file);
        }
    }
    EXPECT_STREQ(LangFile().langFilePath, (folder_ / L"texts_xy.ini").c_str());
    EXPECT_FALSE(FindLanguageFile(L"DEU", nullptr));
}

TEST_F(LanguageTest, PathsThatCannotBeAreNoFiles) {
    wchar_t path[kLangPathChars + 1];
    SetDirectory(std::wstring(1000, L'd').c_str());
    EXPECT_EQ(std::wstring(LangFile().directory), std::wstring(260, L'd'));
    EXPECT_FALSE(FindLanguageFile(L"DEU", path));
    EXPECT_STREQ(path, L"");
    SetBaseName(std::wstring(1000, L'b').c_str());
    EXPECT_EQ(std::wstring(LangFile().baseName), std::wstring(64, L'b'));
    SetExtension(L".languages");
    EXPECT_STREQ(LangFile().extension, L".languag");
    SetBaseName(nullptr);
    SetDirectory(nullptr);
    EXPECT_FALSE(FindLanguageFile(L"DEU", path)) << "no base name";
    EXPECT_STREQ(LangFile().directory, L"");
}

TEST_F(LanguageTest, FieldsRefreshBothFilesAndALanguageOnlyItsOwn) {
    Write(L"de", L"");
    Write(L"en", L"");
    SetLanguage(L"DEU");
    EXPECT_EQ(LangFile().langFilePath, folder_ / L"texts_de.ini");
    EXPECT_STREQ(LangFile().fallbackFilePath, L"") << "only the fields look for it";
    EXPECT_TRUE(SetDirectory(folder_.c_str()));
    EXPECT_EQ(LangFile().fallbackFilePath, folder_ / L"texts_en.ini");
    EXPECT_FALSE(SetExtension(L".txt"));
    EXPECT_STREQ(LangFile().langFilePath, L"");
    EXPECT_STREQ(LangFile().fallbackFilePath, L"");
    EXPECT_TRUE(SetExtension(L".ini"));
    EXPECT_EQ(LangFile().langFilePath, folder_ / L"texts_de.ini");
    SetLanguage(L"FRA");
    EXPECT_STREQ(LangFile().langFilePath, L"");
    EXPECT_FALSE(SetBaseName(L"others"));
}

TEST_F(LanguageTest, ALanguageBringsItsLocaleAndItsNames) {
    const struct {
        const wchar_t* abbrev;
        LCID id;
        const wchar_t *sunday, *monday, *march;
    } cases[] = {
        {L"DEU", 0x407, L"Sonntag", L"Montag", L"März"},
        {L"rus", 0x419, L"воскресенье", L"понедельник", L"март"},
        {L"ESN", 0xC0A, L"domingo", L"lunes", L"marzo"},
    };
    for (const auto& c : cases) {
        SetLanguage(c.abbrev);
        EXPECT_EQ(GetLanguageId(), c.id);
        EXPECT_EQ(GetThreadLocale(), c.id);
        for (const auto& [name, expected] :
             {std::pair<const wchar_t*, const wchar_t*>{dayNames[0], c.sunday},
              {dayNames[1], c.monday},
              {monthNames[2], c.march}}) {
            EXPECT_EQ(CompareStringW(c.id, NORM_IGNORECASE, name, -1, expected, -1), CSTR_EQUAL)
                << c.id;
        }
    }
    for (const wchar_t* abbrev : {L"en", L"", static_cast<const wchar_t*>(nullptr)}) {
        SetLanguage(abbrev);
        EXPECT_EQ(GetLanguageId(), 0x400U) << "no locale has that abbreviation";
    }
}

TEST_F(LanguageTest, TheSharedStartRegistersTheModuleOnce) {
    InitLangFile();
    ASSERT_TRUE(StartHostServices());
    EXPECT_STREQ(LangFile().langAbbrev, L"en");
    EXPECT_STREQ(GetUnitWord(3, 2), L"days");
    SetLanguage(L"DEU");
    SetResources(nullptr, nullptr);
    EXPECT_TRUE(StartHostServices());
    EXPECT_STREQ(LangFile().langAbbrev, L"deu");
    EXPECT_EQ(LangFile().resourceModule, nullptr);
}

}  // namespace
