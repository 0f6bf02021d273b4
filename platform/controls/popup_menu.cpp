#include "platform/controls/popup_menu.h"

#include "platform/controls/form.h"

#include <algorithm>

namespace veldran::controls {

void PopupMenu::AddItem(std::string caption, std::string key, bool disabled) {
    items_.push_back({std::move(caption), std::move(key), disabled});
}

void PopupMenu::ShowAt(int screenX, int screenY) {
    show({nullptr, screenX, screenY});
}

void PopupMenu::ShowAt(const Control& anchor) {
    show({&anchor, 0, 0});
}

void PopupMenu::show(const PopupPlace& place) {
    if (!items_.empty()) {
        form_.PopupRequested.raise(*this, place);
    }
}

void PopupMenu::ClickFromView(std::string_view key) {
    const auto found = std::find_if(items_.begin(), items_.end(), [&](const PopupItem& item) {
        return item.key == key && !item.IsSeparator();
    });
    if (found != items_.end() && !found->disabled) {
        const std::string clicked = found->key; // a handler may refill the menu
        AfterItemClick.raise(clicked);
    }
}

} // namespace veldran::controls
