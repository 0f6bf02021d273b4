#include "platform/controls/edit_controls.h"

#include <stdexcept>

namespace veldran::controls {

void ComboBox::Clear() {
    items_.clear();
    index_ = -1;
    Changed.raise();
}

void ComboBox::AddItem(std::string text, std::int32_t itemData) {
    items_.push_back({std::move(text), itemData});
    Changed.raise();
}

void ComboBox::SetListIndex(int index) {
    if (index < -1 || index >= static_cast<int>(items_.size())) {
        throw std::out_of_range("list item " + std::to_string(index) + " of " +
                                std::to_string(items_.size()));
    }
    if (index == index_) {
        return;
    }
    const auto life = lifeline();
    index_ = index;
    Changed.raise();
    if (!life.expired()) {
        Click.raise();
    }
}

void NumericField::SetFormatMask(std::string mask) {
    if (mask != mask_) {
        mask_ = std::move(mask);
        Changed.raise();
    }
}

void NumericField::SetValue(Value value) {
    if (value == value_) {
        return;
    }
    const auto life = lifeline();
    value_ = std::move(value);
    Changed.raise();
    if (!life.expired()) {
        Change.raise();
    }
}

} // namespace veldran::controls
