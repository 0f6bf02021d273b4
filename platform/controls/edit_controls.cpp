#include "platform/controls/edit_controls.h"

#include "platform/number_format.h"
#include "platform/text.h"

#include <stdexcept>
#include <utility>

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

void ComboBox::checkIndex(int index) const {
    if (index < -1 || index >= static_cast<int>(items_.size())) {
        throw std::out_of_range("list item " + std::to_string(index) + " of " +
                                std::to_string(items_.size()));
    }
}

int ComboBox::IndexOf(std::int32_t itemData) const {
    for (std::size_t index = 0; index < items_.size(); ++index) {
        if (items_[index].itemData == itemData) {
            return static_cast<int>(index);
        }
    }
    return -1;
}

void ComboBox::SetListIndex(int index) {
    checkIndex(index);
    if (index == index_) {
        return;
    }
    const auto life = lifeline();
    const int before = std::exchange(index_, index);
    bool cancel = false;
    Validate.raise(cancel);
    if (life.expired()) {
        return;
    }
    if (cancel && index_ == index) {
        index_ = before;
    }
    Changed.raise();
    if (!cancel && !life.expired()) {
        Click.raise();
    }
}

void ComboBox::ShowListIndex(int index) {
    checkIndex(index);
    if (index != index_) {
        index_ = index;
        Changed.raise();
    }
}

void ComboBox::ChooseFromView(int index) {
    checkIndex(index);
    if (CanTakeFocus()) {
        SetListIndex(index);
    }
}

void ComboBox::TypeFromView(std::string_view beginning) {
    const int count = static_cast<int>(items_.size());
    for (int step = 1; step <= count; ++step) {
        const int index = (index_ + step) % count;
        const std::string_view text = items_[static_cast<std::size_t>(index)].text;
        if (!beginning.empty() && equalsIgnoringAsciiCase(text.substr(0, beginning.size()), beginning)) {
            ChooseFromView(index);
            return;
        }
    }
}

void NumericField::SetFormatMask(std::string mask) {
    if (mask != mask_) {
        mask_ = std::move(mask);
        Changed.raise();
    }
}

std::string NumericField::Text() const {
    return typing_ ? typed_ : mask_.empty() ? value_.toText() : formatNumber(value_, mask_);
}

void NumericField::SetValue(Value value) {
    if (value == value_) {
        return;
    }
    typing_ = false;
    accept(std::move(value));
}

void NumericField::ShowValue(Value value) {
    if (value != value_ || typing_) {
        value_ = std::move(value);
        typing_ = false;
        Changed.raise();
    }
}

void NumericField::TypeFromView(std::string text) {
    if (text == Text()) {
        return;
    }
    const auto life = lifeline();
    typed_ = std::move(text);
    typing_ = true;
    Changed.raise();
    if (!life.expired()) {
        Typed.raise();
    }
}

bool NumericField::LeaveFromView() {
    if (!typing_) {
        return true;
    }
    const auto life = lifeline();
    const bool empty = withoutTrailingBlanks(typed_).empty();
    const auto number = typedNumber(typed_);
    if (!empty && !number) {
        const std::string refused = typed_;
        NotANumber.raise(refused);
        return false;
    }
    Value value = empty ? Value() : Value(*number);
    typing_ = false;
    if (value == value_) {
        Changed.raise();
        return true;
    }
    const bool accepted = accept(std::move(value));
    if (!accepted && !life.expired()) {
        typing_ = true;
        Changed.raise();
    }
    return accepted;
}

bool NumericField::accept(Value value) {
    const auto life = lifeline();
    const Value before = std::exchange(value_, std::move(value));
    bool cancel = false;
    Validate.raise(cancel);
    if (life.expired()) {
        return !cancel;
    }
    if (cancel) {
        value_ = before;
    }
    Changed.raise();
    if (!cancel && !life.expired()) {
        Change.raise();
    }
    return !cancel;
}

} // namespace veldran::controls
