#include "platform/frames/navigator_binding.h"

#include "platform/controls/frame_navigator.h"
#include "platform/frames/virtual_frame.h"

namespace veldran::frames {

namespace keys = controls::navigatorKeys;

NavigatorBinding::NavigatorBinding(VirtualFrame& frame, controls::FrameNavigator& navigator,
                                   const std::string& noun)
    : frame_(frame), navigator_(navigator),
      clicks_(navigator.ButtonClick.subscribe(
          [this](const std::string& key, bool& success) { success = press(key); })) {
    const auto name = [&](std::string_view key, const std::string& toolTip) {
        navigator.SetButtonTexts(key, std::string(key), toolTip);
    };
    name(keys::conferma, "Salva " + noun);
    name(keys::elimina, "Elimina " + noun);
}

void NavigatorBinding::show(const NavigatorState& state) {
    if (shown_ == state) {
        return;
    }
    shown_.reset(); // a view that fails half-way is told again
    navigator_.SetPositionText(
        state.open ? std::to_string(state.position) + " di " + std::to_string(state.count) : std::string());
    navigator_.SetButtonEnabled(keys::primo, state.position > 1);
    navigator_.SetButtonEnabled(keys::precedente, state.position > 1);
    navigator_.SetButtonEnabled(keys::successivo, state.position < state.count);
    navigator_.SetButtonEnabled(keys::ultimo, state.position < state.count);
    navigator_.SetButtonEnabled(keys::nuovo, state.writable);
    navigator_.SetButtonEnabled(keys::conferma, state.changed);
    navigator_.SetButtonEnabled(keys::annulla, state.changed || state.adding);
    navigator_.SetButtonEnabled(keys::elimina, state.position > 0 && !state.adding && state.writable);
    shown_ = state;
}

bool NavigatorBinding::press(const std::string& key) {
    if (key == keys::primo) {
        return frame_.MoveFirst();
    }
    if (key == keys::precedente) {
        return frame_.MovePrevious();
    }
    if (key == keys::successivo) {
        return frame_.MoveNext();
    }
    if (key == keys::ultimo) {
        return frame_.MoveLast();
    }
    if (key == keys::nuovo) {
        return frame_.AddNew();
    }
    if (key == keys::conferma) {
        return frame_.Update();
    }
    if (key == keys::annulla) {
        return frame_.Undo();
    }
    return key == keys::elimina && frame_.Delete();
}

} // namespace veldran::frames
