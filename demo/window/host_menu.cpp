#include "window/host_menu.h"

#include <algorithm>
#include <iterator>

#include "horivo_host.h"
#include "resource_ids.h"
#include "texts.h"

namespace {

struct MapKey {
    std::uint32_t command;
    int key;
    int repeats;
};

// Number of key presses that a zoom command of the menu sends. One press zooms by a small step,
// because users hold the key down; several presses change the map visibly.
constexpr int kZoomStep = 5;
constexpr MapKey kMapKeys[] = {
    {IDM_HOME_VIEW, VK_HOME, 1},
    {IDM_ZOOM_IN, VK_ADD, kZoomStep},
    {IDM_ZOOM_OUT, VK_SUBTRACT, kZoomStep},
    {IDM_FINER_DETAIL, 'H', 1},
    {IDM_COARSER_DETAIL, 'L', 1},
    {IDM_FRAME_RATE, 'F', 1},
    {IDM_INFORMATION, 'I', 1},
};

}  // namespace

void SetLocalizedMenu(HWND window, std::uint32_t languageCommand, bool photos) {
    HMENU menu = LoadMenuW(TextModule(), MAKEINTRESOURCEW(IDR_MAIN_MENU));
    if (menu == nullptr) return;
    LocalizeMenu(menu, MENU_SECTION);
    CheckMenuRadioItem(menu, IDM_LANGUAGE_ENGLISH, IDM_LANGUAGE_WINDOWS, languageCommand,
                       MF_BYCOMMAND);
    if (!photos) EnableMenuItem(menu, IDM_OPEN_PHOTO_FOLDER, MF_BYCOMMAND | MF_GRAYED);
    HMENU before = GetMenu(window);
    SetMenu(window, menu);
    if (before != nullptr) DestroyMenu(before);
}

void PressMapKeys(HWND map, std::uint32_t command) {
    const auto* const entry = std::ranges::find(kMapKeys, command, &MapKey::command);
    const int presses = entry != std::end(kMapKeys) ? entry->repeats : 0;
    for (int i = 0; i < presses; ++i) {
        SendMessageW(map, WM_KEYDOWN, static_cast<WPARAM>(entry->key), 1);
    }
}
