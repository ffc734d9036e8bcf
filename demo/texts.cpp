#include "texts.h"

#include "horivo_host.h"

namespace {

constexpr std::int32_t kTextSize = 256;  // characters; the longest text has 128

void Replace(std::wstring& text, const wchar_t* place, const std::wstring& with) {
    const std::size_t at = text.find(place);
    if (at != std::wstring::npos) text.replace(at, 2, with);
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
