#include "texts.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

#include "data/data_folder.h"
#include "horivo_host.h"
#include "horivo_map.h"
#include "resource_ids.h"

namespace {

constexpr std::int32_t kTextSize = 256;  // characters; the longest text has 128

struct ResultText {
    std::uint32_t code;
    std::uint32_t textId;
};

constexpr ResultText kResultTexts[] = {
    {HORIVO_OK, IDS_MAP_WINDOW_REFUSED},  // there is no window, and the library reported no reason
    {HORIVO_BAD_PICTURE, IDS_MAP_PICTURE_BAD},
    {HORIVO_UNFIT_PICTURE, IDS_MAP_PICTURE_UNFIT},
    {HORIVO_COPY_FAILED, IDS_MAP_COPY_FAILED},
    {HORIVO_CLASS_FAILED, IDS_MAP_CLASS_FAILED},
    {HORIVO_NO_PIXEL_FORMAT, IDS_MAP_NO_FORMAT},
    {HORIVO_PIXEL_FORMAT_REFUSED, IDS_MAP_FORMAT_REFUSED},
    {HORIVO_CONTEXT_FAILED, IDS_MAP_CONTEXT_FAILED},
};

/// Replaces the first `placeholder` ("%1", "%2") in `text`.
void Replace(std::wstring& text, std::wstring_view placeholder, const std::wstring& with) {
    const std::size_t at = text.find(placeholder);
    if (at != std::wstring::npos) text.replace(at, placeholder.size(), with);
}

}  // namespace

HINSTANCE TextModule() {
    HINSTANCE module = LangFile().resourceModule;
    return module != nullptr ? module : GetModuleHandleW(nullptr);
}

std::wstring LocalText(std::uint32_t id) {
    wchar_t text[kTextSize] = {};
    LoadLocalString(TextModule(), id, text, kTextSize);
    return text;
}

std::wstring LocalText(std::uint32_t id, const std::wstring& first, const std::wstring& second) {
    std::wstring text = LocalText(id);
    Replace(text, L"%2", second);
    Replace(text, L"%1", first);
    return text;
}

void TellUser(HWND owner, std::uint32_t textId) {
    const std::wstring text = LocalText(textId, MapFolder());
    WriteLogW(text.c_str());
    // Does not call LocalMessageBox, because that function cannot replace "%1" in a text.
    MessageBoxW(owner, text.c_str(), LocalText(IDS_TITLE).c_str(), MB_OK);
}

void TellResult(HWND owner, std::uint32_t code) {
    char numbers[64] = {};
    std::snprintf(numbers, sizeof numbers, "map result 0x%08X, system error %u",
                  static_cast<unsigned>(code), static_cast<unsigned>(GetLastSysError()));
    WriteLog(numbers);
    const auto* const entry = std::ranges::find(kResultTexts, code, &ResultText::code);
    TellUser(owner, entry != std::end(kResultTexts) ? entry->textId : IDS_MAP_UNKNOWN_FAILURE);
}
