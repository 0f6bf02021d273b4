#pragma once

#include "platform/event.h"
#include "platform/value.h"

#include <memory>
#include <string>
#include <vector>

namespace veldran::controls {
class ComboBox;
class Control;
class Label;
class LookupField;
class NumericField;
} // namespace veldran::controls

namespace veldran::frames {

class FieldBinding;

/// The frame as a bound control sees it.
class BindingOwner {
public:
    /// The user began to type. \return false when the record cannot be edited.
    virtual bool userTypes(FieldBinding& binding) = 0;
    /// The control has a new value. \return false to refuse it; the user was told why.
    virtual bool userSets(FieldBinding& binding, const Value& value) = 0;
    virtual void userTypedNoNumber(FieldBinding& binding, const std::string& text) = 0;

protected:
    ~BindingOwner() = default;
};

/// Ties one control to one column of a frame's record.
class FieldBinding {
public:
    virtual ~FieldBinding() = default;
    FieldBinding(const FieldBinding&) = delete;
    FieldBinding& operator=(const FieldBinding&) = delete;

    const std::string& column() const { return column_; }
    virtual controls::Control& control() = 0;
    /// Shows the record's value; what was being typed is forgotten. No event reaches the owner.
    /// \throws what the control's lookup service throws, with the value shown.
    virtual void show(const Value& value) = 0;
    /// Something was typed that the owner has not been given yet.
    virtual bool hasPendingText() const { return false; }
    /// Gives the owner what was typed. \return false when it cannot be a value.
    virtual bool takePendingText() { return true; }
    virtual std::string text() const = 0;

protected:
    FieldBinding(BindingOwner& owner, std::string column) : owner_(owner), column_(std::move(column)) {}
    BindingOwner& owner() const { return owner_; }
    void keep(Subscription subscription) { kept_.push_back(std::move(subscription)); }

private:
    BindingOwner& owner_;
    std::string column_;
    std::vector<Subscription> kept_;
};

/// Owner, control and description outlive the binding. The description, when there is one, shows the field's
/// description and makes the field look it up for every record shown.
std::unique_ptr<FieldBinding> bindingOf(BindingOwner& owner, controls::LookupField& field, std::string column,
                                        controls::Label* description);
std::unique_ptr<FieldBinding> bindingOf(BindingOwner& owner, controls::ComboBox& combo, std::string column);
std::unique_ptr<FieldBinding> bindingOf(BindingOwner& owner, controls::NumericField& field,
                                        std::string column);

} // namespace veldran::frames
