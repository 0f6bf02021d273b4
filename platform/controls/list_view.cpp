#include "platform/controls/list_view.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace veldran::controls {

const std::string& ListItem::SubItem(std::size_t index) const {
    static const std::string none;
    return index < subItems_.size() ? subItems_[index] : none;
}

void ListItem::SetText(std::string text) {
    if (text != text_) {
        text_ = std::move(text);
        if (list_ != nullptr) {
            list_->ItemsChanged.raise();
        }
    }
}

void ListItem::SetSubItem(std::size_t index, std::string text) {
    if (text == SubItem(index)) {
        return;
    }
    if (index >= subItems_.size()) {
        subItems_.resize(index + 1);
    }
    subItems_[index] = std::move(text);
    if (list_ != nullptr) {
        list_->ItemsChanged.raise();
    }
}

ListView::~ListView() {
    for (const Item& item : items_) {
        item->list_ = nullptr;
    }
}

void ListView::AddColumn(std::string key, std::string caption, int width) {
    columns_.push_back({std::move(key), std::move(caption), width});
    Changed.raise();
}

void ListView::SetColumnWidth(std::size_t column, int twips) {
    Column& changed = columns_.at(column);
    if (changed.width != twips) {
        changed.width = twips;
        Changed.raise();
    }
}

ListView::Item ListView::Add(std::string key, std::string text) {
    if (Find(key) != nullptr) {
        throw std::invalid_argument("the list already has a row with the key \"" + key + "\"");
    }
    Item item(new ListItem(*this, std::move(key), std::move(text)));
    items_.push_back(item);
    ItemsChanged.raise();
    return item;
}

ListView::Item ListView::Find(std::string_view key) const {
    const auto found =
        std::find_if(items_.begin(), items_.end(), [&](const Item& item) { return item->Key() == key; });
    return found == items_.end() ? nullptr : *found;
}

void ListView::Remove(std::string_view key) {
    const Item item = Find(key);
    if (item == nullptr) {
        return;
    }
    item->list_ = nullptr;
    std::erase(items_, item);
    const bool wasSelected = item == selected_;
    if (wasSelected) {
        selected_.reset();
    }
    const auto life = lifeline();
    ItemsChanged.raise();
    if (wasSelected && !life.expired()) {
        SelectionChanged.raise();
    }
}

void ListView::Clear() {
    const bool hadSelection = selected_ != nullptr;
    selected_.reset();
    for (const Item& item : std::exchange(items_, {})) {
        item->list_ = nullptr;
    }
    const auto life = lifeline();
    ItemsChanged.raise();
    if (hadSelection && !life.expired()) {
        SelectionChanged.raise();
    }
}

void ListView::SetSelectedItem(const Item& item) {
    if (item != nullptr && item->list_ != this) {
        throw std::invalid_argument("the row \"" + item->Key() + "\" is not of the list " + Name());
    }
    if (item != selected_) {
        select(item);
    }
}

void ListView::SelectFromView(std::size_t index) {
    if (index < items_.size() && CanTakeFocus()) {
        select(items_[index]);
    }
}

void ListView::select(const Item& item) {
    const auto life = lifeline();
    // A handler may remove it, and with it what the parameter refers to.
    const Item kept = item; // NOLINT(performance-unnecessary-copy-initialization)
    if (kept != selected_) {
        selected_ = kept;
        SelectionChanged.raise();
    }
    if (kept != nullptr && !life.expired() && kept->list_ == this) {
        ItemClick.raise(*kept);
    }
}

ListView::Item ListView::ItemAt(int x, int y) const {
    const ListHit hit = HitTest(x, y);
    const bool onItem = (hit.flags & listHitItem) != 0;
    return onItem && hit.index >= 0 && hit.index < static_cast<int>(items_.size())
               ? items_[static_cast<std::size_t>(hit.index)]
               : nullptr;
}

} // namespace veldran::controls
