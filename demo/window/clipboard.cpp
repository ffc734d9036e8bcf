#include "window/clipboard.h"

void CopyText(HWND owner, const std::wstring& text) {
    if (!OpenClipboard(owner)) return;
    EmptyClipboard();
    HGLOBAL memory = GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
    if (memory != nullptr) {
        lstrcpyW(static_cast<wchar_t*>(GlobalLock(memory)), text.c_str());
        GlobalUnlock(memory);
        // When this call succeeds, the clipboard owns the memory.
        if (SetClipboardData(CF_UNICODETEXT, memory) == nullptr) GlobalFree(memory);
    }
    CloseClipboard();
}
