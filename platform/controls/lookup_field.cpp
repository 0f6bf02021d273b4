#include "platform/controls/lookup_field.h"

#include "platform/text.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace veldran::controls {

namespace {

/// The first `characters` characters of UTF-8 `text`; 0 is no limit.
std::string limited(std::string text, int characters) {
    if (characters <= 0) {
        return text;
    }
    int count = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool startsCharacter = (static_cast<unsigned char>(text[i]) & 0xC0U) != 0x80U;
        if (startsCharacter && ++count > characters) {
            text.resize(i);
            break;
        }
    }
    return text;
}

} // namespace

/// A property that the view shows has changed.
void LookupField::changed() {
    if (boundCode_ != nullptr) {
        *boundCode_ = text_;
    }
    if (boundDescription_ != nullptr) {
        *boundDescription_ = description_;
    }
    Changed.raise();
}

void LookupField::BindValues(std::string* code, std::string* description) {
    boundCode_ = code;
    boundDescription_ = description;
    if (boundCode_ != nullptr) {
        *boundCode_ = text_;
    }
    if (boundDescription_ != nullptr) {
        *boundDescription_ = description_;
    }
}

services::LookupRequest LookupField::newRequest() const {
    services::LookupRequest request;
    request.code = text_;
    request.structure = structure_;
    request.connection = connection_;
    std::from_chars(chart_.data(), chart_.data() + chart_.size(), request.pdc);
    return request;
}

void LookupField::forgetItem() {
    description_.clear();
    valid_ = false;
    unknown_ = false;
}

int LookupField::TypingLimit() const {
    return maxLength_ <= 0 ? 0 : std::max(maxLength_, structure_.displayLength());
}

void LookupField::SetText(std::string text) {
    typed_ = false;
    text = limited(std::move(text), maxLength_);
    if (text != text_) {
        text_ = std::move(text);
        forgetItem();
        changed();
    }
}

void LookupField::SetMaxLength(int characters) {
    if (characters != maxLength_) {
        maxLength_ = characters;
        changed();
    }
}

void LookupField::SetLookupEnabled(bool enabled) {
    if (enabled != lookupEnabled_) {
        lookupEnabled_ = enabled;
        changed();
    }
}

void LookupField::SetManagementEnabled(bool enabled) {
    if (enabled != managementEnabled_) {
        managementEnabled_ = enabled;
        changed();
    }
}

void LookupField::PressKeyButtonMenuFromView(const std::string& item) {
    if (managementEnabled_ && CanTakeFocus()) {
        KeyButtonMenuPress.raise(item);
    }
}

bool LookupField::isComplete() const {
    const int length = structure_.codeLength > 0 ? structure_.codeLength : maxLength_;
    return length > 0 && limited(text_, length) == text_ && limited(text_, length - 1) != text_;
}

void LookupField::SetCodeStructure(services::CodeStructure structure) {
    structure_ = std::move(structure);
    changed();
}

bool LookupField::type(std::string text) {
    text = limited(upperCase_ ? withRaisedCase(text) : std::move(text), TypingLimit());
    if (text == text_) {
        return true;
    }
    const auto life = lifeline();
    text_ = std::move(text);
    typed_ = true;
    forgetItem();
    changed();
    if (!life.expired()) {
        Change.raise();
    }
    return !life.expired();
}

void LookupField::TypeFromView(std::string text) {
    const auto life = lifeline();
    if (type(std::move(text)) && autoAdvance_ && typed_ && isComplete()) {
        serveUser([this, &life] {
            if (Decode() && !life.expired()) {
                Completed.raise();
            }
        });
    }
}

template<class Action>
void LookupField::serveUser(Action action) {
    const auto life = lifeline();
    try {
        action();
    } catch (const std::exception& failure) {
        if (life.expired() || !Failed.hasHandlers()) {
            throw;
        }
        Failed.raise(failure);
    }
}

void LookupField::LeaveFromView() {
    if (typed_) {
        serveUser([this] { Decode(); });
    }
}

void LookupField::LookupFromView() {
    if (!lookupEnabled_ || !CanTakeFocus()) {
        return;
    }
    serveUser([this] {
        const auto life = lifeline();
        services::LookupRequest request = newRequest();
        StartLookup.raise(request);
        if (life.expired() || service_ == nullptr) {
            return;
        }
        const auto choice = service_->Choose(request);
        if (!choice || life.expired()) {
            return;
        }
        if (type(choice->code) && Decode() && autoAdvance_ && !life.expired()) {
            Completed.raise();
        }
    });
}

/// Asks for the description of the code. \return false when a handler destroyed the field.
bool LookupField::describe(bool entered) {
    if (text_.empty()) {
        return true;
    }
    const auto life = lifeline();
    services::LookupRequest request = newRequest();
    request.entered = entered;
    StartDecode.raise(request);
    if (life.expired()) {
        return false;
    }
    if (service_ != nullptr) {
        try {
            auto description = service_->Decode(request);
            valid_ = description.has_value();
            unknown_ = !valid_;
            description_ = std::move(description).value_or(std::string());
        } catch (...) {
            changed();
            throw;
        }
    }
    return true;
}

void LookupField::ShowCode(std::string code, bool described) {
    typed_ = false;
    if (code == text_ && (valid_ || !described || code.empty())) {
        return;
    }
    text_ = std::move(code);
    forgetItem();
    if (!described || describe(false)) {
        changed();
    }
}

bool LookupField::Decode() {
    const auto life = lifeline();
    const std::string before = std::exchange(text_, structure_.codeOf(text_));
    const bool typed = std::exchange(typed_, false);
    forgetItem();
    bool cancel = false;
    Validate.raise(cancel);
    if (life.expired()) {
        return false;
    }
    if (cancel) {
        text_ = before;
        typed_ = typed;
        changed();
        return false;
    }
    if (!describe(true)) {
        return false;
    }
    const bool valid = valid_;
    changed();
    if (!life.expired() && text_ != before) {
        Change.raise();
    }
    if (!life.expired()) {
        AfterItem.raise();
    }
    return valid;
}

} // namespace veldran::controls
