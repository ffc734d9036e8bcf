#include "window/host_menu.h"

#include "horivo_host.h"
#include "resource_ids.h"
#include "texts.h"

namespace {

struct MapKey {
    std::uint32_t command;
    int key;
    int repeats;
};

// One press of a zoom key is a small step, because people hold the key down. A menu command repeats
// it until the step shows.
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

const MapKey* Find(std::uint32_t command) {
    for (const MapKey& entry : kMapKeys) {
        if (entry.command == command) return &entry;
    }
    return nullptr;
}

}  // namespace

void SetLocalizedMenu(HWND window, std::uint32_t languageCommand, bool photos) {
    HMENU menu = LoadMenuW(TextModule(), MAKEINTRESOURCEW(IDR_MAIN_MENU));
    if (menu == nullptr) return;
    LocalizeMenu(menu, MENU_SECTION);
    CheckMenuRadioItem(menu, IDM_LANGUAGE_ENGLISH, IDM_LANGUAGE_JAPANESE, languageCommand,
                       MF_BYCOMMAND);
    if (!photos) EnableMenuItem(menu, IDM_OPEN_PHOTO_FOLDER, MF_BYCOMMAND | MF_GRAYED);
    HMENU before = GetMenu(window);
    SetMenu(window, menu);
    if (before != nullptr) DestroyMenu(before);
}

int MapKeyOf(std::uint32_t command) {
    const MapKey* entry = Find(command);
    return entry != nullptr ? entry->key : 0;
}

int MapKeyRepeats(std::uint32_t command) {
    const MapKey* entry = Find(command);
    return entry != nullptr ? entry->repeats : 0;
}
