#include "platform/frames/field_binding.h"

#include "platform/controls/edit_controls.h"
#include "platform/controls/lookup_field.h"
#include "platform/controls/simple_controls.h"

#include <utility>

namespace veldran::frames {

namespace {

class LookupBinding final : public FieldBinding {
public:
    LookupBinding(BindingOwner& owner, controls::LookupField& field, std::string column,
                  controls::Label* description)
        : FieldBinding(owner, std::move(column)), field_(field), described_(description != nullptr) {
        keep(field.Change.subscribe([this] {
            if (field_.HasPendingText()) {
                this->owner().userTypes(*this);
            }
        }));
        keep(field.Validate.subscribe([this](bool& cancel) {
            const Value value = field_.Text().empty() ? Value() : Value(field_.Text());
            cancel = cancel || !this->owner().userSets(*this, value);
        }));
        if (description != nullptr) {
            const auto describe = [this, description] { description->SetCaption(field_.Description()); };
            keep(field.Changed.subscribe(describe));
            describe();
        }
    }

    controls::Control& control() override { return field_; }
    void show(const Value& value) override {
        try {
            field_.ShowCode(nullSafeText(value), described_);
        } catch (const std::exception& failure) {
            if (!field_.Failed.hasHandlers()) {
                throw;
            }
            field_.Failed.raise(failure);
        }
    }
    bool hasPendingText() const override { return field_.HasPendingText(); }
    bool takePendingText() override {
        field_.LeaveFromView();
        return !field_.HasPendingText();
    }
    std::string text() const override { return field_.Text(); }

private:
    controls::LookupField& field_;
    bool described_;
};

class ComboBinding final : public FieldBinding {
public:
    ComboBinding(BindingOwner& owner, controls::ComboBox& combo, std::string column)
        : FieldBinding(owner, std::move(column)), combo_(combo) {
        keep(combo.Validate.subscribe([this](bool& cancel) {
            const int index = combo_.ListIndex();
            const Value value =
                index < 0 ? Value() : Value(combo_.Items()[static_cast<std::size_t>(index)].itemData);
            cancel = cancel || !this->owner().userSets(*this, value);
        }));
    }

    controls::Control& control() override { return combo_; }
    void show(const Value& value) override {
        combo_.ShowListIndex(value.isNull() ? -1 : combo_.IndexOf(value.toInt32()));
    }
    std::string text() const override { return combo_.Text(); }

private:
    controls::ComboBox& combo_;
};

class NumericBinding final : public FieldBinding {
public:
    NumericBinding(BindingOwner& owner, controls::NumericField& field, std::string column)
        : FieldBinding(owner, std::move(column)), field_(field) {
        keep(field.Typed.subscribe([this] { this->owner().userTypes(*this); }));
        keep(field.Validate.subscribe(
            [this](bool& cancel) { cancel = cancel || !this->owner().userSets(*this, field_.GetValue()); }));
        keep(field.NotANumber.subscribe(
            [this](const std::string& text) { this->owner().userTypedNoNumber(*this, text); }));
    }

    controls::Control& control() override { return field_; }
    void show(const Value& value) override { field_.ShowValue(value); }
    bool hasPendingText() const override { return field_.HasPendingText(); }
    bool takePendingText() override { return field_.LeaveFromView(); }
    std::string text() const override { return field_.Text(); }

private:
    controls::NumericField& field_;
};

} // namespace

std::unique_ptr<FieldBinding> bindingOf(BindingOwner& owner, controls::LookupField& field, std::string column,
                                        controls::Label* description) {
    return std::make_unique<LookupBinding>(owner, field, std::move(column), description);
}

std::unique_ptr<FieldBinding> bindingOf(BindingOwner& owner, controls::ComboBox& combo, std::string column) {
    return std::make_unique<ComboBinding>(owner, combo, std::move(column));
}

std::unique_ptr<FieldBinding> bindingOf(BindingOwner& owner, controls::NumericField& field,
                                        std::string column) {
    return std::make_unique<NumericBinding>(owner, field, std::move(column));
}

} // namespace veldran::frames
