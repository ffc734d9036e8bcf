#include "user_messages.h"

#include "horivo_host.h"
#include "resource_ids.h"
#include "texts.h"

namespace {

constexpr struct {
    std::uint32_t code;
    std::uint32_t textId;
} kResultTexts[] = {
    {HORIVO_OK, IDS_MAP_WINDOW_REFUSED},
    {HORIVO_BAD_PICTURE, IDS_MAP_PICTURE_BAD},
    {HORIVO_UNFIT_PICTURE, IDS_MAP_PICTURE_UNFIT},
    {HORIVO_COPY_FAILED, IDS_MAP_COPY_FAILED},
    {HORIVO_CLASS_FAILED, IDS_MAP_CLASS_FAILED},
    {HORIVO_NO_PIXEL_FORMAT, IDS_MAP_NO_FORMAT},
    {HORIVO_PIXEL_FORMAT_REFUSED, IDS_MAP_FORMAT_REFUSED},
    {HORIVO_CONTEXT_FAILED, IDS_MAP_CONTEXT_FAILED},
};

}  // namespace

void TellUser(HWND owner, std::uint32_t textId) {
    LocalMessageBox(owner, TextModule(), textId, IDS_TITLE);
}

std::uint32_t ResultTextId(std::uint32_t code) {
    for (const auto& entry : kResultTexts) {
        if (entry.code == code) return entry.textId;
    }
    return IDS_MAP_UNKNOWN_FAILURE;
}
