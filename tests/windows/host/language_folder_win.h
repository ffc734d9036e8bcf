#pragma once
// A folder of language files of their own and the sample host's resources, for one test.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include "../../../demo/resource_ids.h"
#include "base/windows_types.h"
#include "horivo_host.h"

class LanguageTest : public testing::Test {
protected:
    LanguageTest() {
        std::filesystem::create_directories(folder_);
        InitLangFile();
        SetDirectory(folder_.c_str());
        SetBaseName(L"texts");
    }
    ~LanguageTest() override {
        InitLangFile();
        SetThreadLocale(LOCALE_USER_DEFAULT);
        std::error_code ignored;
        std::filesystem::remove_all(folder_, ignored);
    }

    /// Writes bytes; the file's name is texts_`code`.ini.
    void WriteBytes(const std::wstring& code, const std::string& bytes) {
        std::ofstream(folder_ / (L"texts_" + code + L".ini"), std::ios::binary) << bytes;
    }
    /// Writes UTF-16 with a byte-order mark.
    void Write(const std::wstring& code, const std::wstring& text) {
        const std::wstring marked = L"\uFEFF" + text;
        WriteBytes(code, {reinterpret_cast<const char*>(marked.data()), 2 * marked.size()});
    }

    /// The module that the build makes, beside the test program.
    static HMODULE Resources() {
        static HMODULE module = LoadLibraryExW(L"res_en.dll", nullptr, LOAD_LIBRARY_AS_DATAFILE);
        return module;
    }
    static void RegisterResources() {
        const std::uint32_t ids[] = {257, 258, 259, 260, 261};
        SetResources(Resources(), ids);
    }
    static HMENU OpenMenu() { return LoadMenuW(Resources(), MAKEINTRESOURCEW(IDR_MAIN_MENU)); }
    static HWND OpenDialog(int id) {
        return CreateDialogParamW(
            Resources(), MAKEINTRESOURCEW(id), nullptr,
            [](HWND, UINT, WPARAM, LPARAM) -> INT_PTR { return FALSE; }, 0);
    }

    static std::wstring Load(HMODULE module, std::uint32_t id, const wchar_t* section = nullptr,
                             std::int32_t size = 200) {
        // What lies behind the room that is told must stay as it is.
        std::wstring text(static_cast<std::size_t>(size) + 8, L'#');
        const std::int32_t length = LoadLocalString(module, id, text.data(), size, section);
        EXPECT_LT(length, size);
        EXPECT_EQ(text.substr(static_cast<std::size_t>(size)), L"########");
        EXPECT_EQ(text.at(static_cast<std::size_t>(length)), L'\0');
        return text.substr(0, static_cast<std::size_t>(length));
    }

    const std::filesystem::path folder_ = std::filesystem::temp_directory_path() /
                                          (L"horivo-lang-" + std::to_wstring(GetTickCount64()) +
                                           std::to_wstring(GetCurrentProcessId()));
};

inline std::wstring TextOf(HWND window) {
    wchar_t text[3000] = {};
    GetWindowTextW(window, text, 3000);
    return text;
}
inline std::wstring ItemText(HMENU menu, UINT item, UINT by) {
    wchar_t text[500] = {};
    GetMenuStringW(menu, item, text, 500, by);
    return text;
}
