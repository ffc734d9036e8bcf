// Texts of messages in the current language: strings and message boxes.

#include "base/windows_types.h"
#include "host/lang_escapes.h"
#include "host/lang_record_win.h"

namespace {

constexpr wchar_t kStringSection[] = L"StringTable";

// Maximum lengths, in characters without the terminator.
constexpr int kMessageChars = 128;
constexpr int kMessageCaptionChars = 32;

}  // namespace

std::int32_t LoadLocalString(HINSTANCE__* module, std::uint32_t id, HorivoWideChar* buffer,
                             std::int32_t size, const HorivoWideChar* section) noexcept {
    if (buffer == nullptr || size < 1) return 0;
    if (section == nullptr) section = kStringSection;
    const wchar_t* path = LangFile().langFilePath;
    std::int32_t length = 0;
    if (*section != L'\0' && *path != L'\0') {
        const NumberKey key(static_cast<std::int32_t>(id));
        const DWORD read = GetPrivateProfileStringW(section, key.text, L"", buffer,
                                                    static_cast<DWORD>(size), path);
        length = Unescape(buffer, static_cast<std::int32_t>(read));
    }
    // For a null module, LoadStringW would read the program's own strings.
    if (length == 0 && module != nullptr) length = LoadStringW(module, id, buffer, size);
    if (length == 0) buffer[0] = L'\0';
    return length;
}

std::int32_t LocalMessageBox(HWND__* owner, HINSTANCE__* module, std::uint32_t textId,
                             std::uint32_t captionId, const HorivoWideChar* section) noexcept {
    wchar_t text[kMessageChars + 1];
    wchar_t caption[kMessageCaptionChars + 1];
    LoadLocalString(module, textId, text, kMessageChars + 1, section);
    LoadLocalString(module, captionId, caption, kMessageCaptionChars + 1, section);
    return MessageBoxW(owner, text, caption, MB_OK);
}
