#pragma once

#include "platform/controls/control.h"

#include <vector>

namespace veldran::controls {

/// A drop-down list of fixed choices, each with a number of its own.
class ComboBox final : public Control {
public:
    struct Item {
        std::string text;
        std::int32_t itemData = 0;
    };
    using Control::Control;

    const std::vector<Item>& Items() const { return items_; }
    void Clear();
    void AddItem(std::string text, std::int32_t itemData);
    int ListIndex() const { return index_; } ///< 0-based; -1 while nothing is chosen
    /// Raises `Click`, as the control does for code and user alike. \throws std::out_of_range
    void SetListIndex(int index);
    std::string Text() const {
        return index_ < 0 ? std::string() : items_[static_cast<std::size_t>(index_)].text;
    }

    mutable Event<> Click;

private:
    std::vector<Item> items_;
    int index_ = -1;
};

/// A number typed with comma or point and shown through a mask such as "##0.00;-##0.00;;".
class NumericField final : public Control {
public:
    using Control::Control;

    const std::string& FormatMask() const { return mask_; }
    void SetFormatMask(std::string mask);
    const Value& GetValue() const { return value_; } ///< NULL while the field is empty
    void SetValue(Value value);

    mutable Event<> Change;

private:
    std::string mask_;
    Value value_;
};

} // namespace veldran::controls
