#include "platform/controls/frame_navigator.h"

#include <algorithm>
#include <stdexcept>

namespace veldran::controls {

FrameNavigator::FrameNavigator(Container& parent, std::string name) : Control(parent, std::move(name)) {
    using namespace navigatorKeys;
    const auto add = [this](std::string_view key, std::string toolTip) {
        buttons_.push_back({std::string(key), std::string(key), std::move(toolTip), false});
    };
    add(primo, "Va al primo");
    add(precedente, "Va al precedente");
    add(successivo, "Va al successivo");
    add(ultimo, "Va all'ultimo");
    add(nuovo, "Inserisce un nuovo elemento");
    add(conferma, "Salva le modifiche");
    add(annulla, "Annulla le modifiche");
    add(elimina, "Elimina l'elemento corrente");
}

FrameNavigator::ButtonState& FrameNavigator::find(std::string_view key) {
    const auto found = std::find_if(buttons_.begin(), buttons_.end(),
                                    [&](const ButtonState& button) { return button.key == key; });
    if (found == buttons_.end()) {
        throw std::out_of_range("the navigator has no button \"" + std::string(key) + "\"");
    }
    return *found;
}

const FrameNavigator::ButtonState& FrameNavigator::Button(std::string_view key) const {
    return const_cast<FrameNavigator*>(this)->find(key);
}

bool FrameNavigator::CanPress(std::string_view key) const {
    return Button(key).enabled && CanTakeFocus();
}

void FrameNavigator::SetButtonTexts(std::string_view key, std::string caption, std::string toolTipText) {
    ButtonState& button = find(key);
    if (button.caption != caption || button.toolTipText != toolTipText) {
        button.caption = std::move(caption);
        button.toolTipText = std::move(toolTipText);
        Changed.raise();
    }
}

void FrameNavigator::SetButtonEnabled(std::string_view key, bool enabled) {
    ButtonState& button = find(key);
    if (button.enabled != enabled) {
        button.enabled = enabled;
        Changed.raise();
    }
}

void FrameNavigator::SetPositionText(std::string text) {
    if (text != position_) {
        position_ = std::move(text);
        Changed.raise();
    }
}

bool FrameNavigator::Press(std::string_view key) {
    if (!CanPress(key)) {
        return false;
    }
    const auto life = lifeline();
    const std::string pressed(key);
    bool success = false;
    ButtonClick.raise(pressed, success);
    if (!life.expired()) {
        AfterButtonClick.raise(success, pressed);
    }
    return success;
}

bool FrameNavigator::PressFromView(std::string_view key) {
    if (!CanPress(key)) {
        return false;
    }
    const auto life = lifeline();
    FocusButton(key);
    return !life.expired() && Press(key);
}

void FrameNavigator::FocusButton(std::string_view key) {
    const std::string& chosen = find(key).key;
    const auto life = lifeline();
    if (chosen != focused_) {
        focused_ = chosen;
        Changed.raise();
    }
    if (!life.expired()) {
        SetFocus();
    }
}

} // namespace veldran::controls
