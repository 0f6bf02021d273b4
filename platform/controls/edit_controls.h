#pragma once

#include "platform/controls/control.h"

#include <string>
#include <string_view>
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
    /// Raises `Validate`, then `Click`, as the control does for code and user alike. \throws
    /// std::out_of_range
    void SetListIndex(int index);
    std::string Text() const {
        return index_ < 0 ? std::string() : items_[static_cast<std::size_t>(index_)].text;
    }
    /// The first choice with that number; -1 when there is none.
    int IndexOf(std::int32_t itemData) const;

    /// Shows a choice in the name of the record it belongs to: neither `Validate` nor `Click`.
    /// \throws std::out_of_range
    void ShowListIndex(int index);

    /// What the user does, reported by the view; ignored while the control cannot take the focus.
    void ChooseFromView(int index);                ///< \throws std::out_of_range
    void TypeFromView(std::string_view beginning); ///< chooses the next item that begins so, blind to case

    mutable Event<bool&> Validate; ///< the new choice stands; set to true to go back to the old one
    mutable Event<> Click;

private:
    void checkIndex(int index) const;

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
    /// Raises `Validate`, then `Change`.
    void SetValue(Value value);
    /// What the field shows: the text being typed, else the value through the mask.
    std::string Text() const;
    /// The user typed something that has not become the value yet.
    bool HasPendingText() const { return typing_; }

    /// Shows a value in the name of the record it belongs to: neither `Validate` nor `Change`; what was being
    /// typed is forgotten.
    void ShowValue(Value value);

    /// What the user does, reported by the view.
    void TypeFromView(std::string text); ///< raises `Typed` when the text is another one
    /// The typed text becomes the value: `Validate`, then `Change` when it is another number.
    /// \return false when the text is no number or the value was refused; the text then stays as it was
    /// typed.
    bool LeaveFromView();

    mutable Event<> Typed;
    mutable Event<const std::string&> NotANumber; ///< what was typed, when the field is left with it
    mutable Event<bool&> Validate; ///< the new value stands; set to true to go back to the old one
    mutable Event<> Change;

private:
    bool accept(Value value);

    std::string mask_;
    Value value_;
    std::string typed_;
    bool typing_ = false;
};

} // namespace veldran::controls
