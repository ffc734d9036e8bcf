#include "texts.h"

#include "horivo_host.h"
#include "horivo_map.h"
#include "resource_ids.h"

namespace {

constexpr std::int32_t kTextSize = 256;  // characters; the longest text has 128

constexpr struct {
    std::uint32_t code;
    std::uint32_t textId;
} kResultTexts[] = {
    {HORIVO_OK, IDS_MAP_WINDOW_REFUSED},  // no window, and the library knows no reason
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
    LocalMessageBox(owner, TextModule(), textId, IDS_TITLE);
}

std::uint32_t ResultTextId(std::uint32_t code) {
    for (const auto& entry : kResultTexts) {
        if (entry.code == code) return entry.textId;
    }
    return IDS_MAP_UNKNOWN_FAILURE;
}
