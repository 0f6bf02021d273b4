#pragma once

#include "platform/controls/control.h"

#include <string>
#include <string_view>
#include <vector>

namespace veldran::controls {

/// Keys of the navigator's buttons, in the order in which they stand.
namespace navigatorKeys {
inline constexpr std::string_view primo = "Primo";
inline constexpr std::string_view precedente = "Precedente";
inline constexpr std::string_view successivo = "Successivo";
inline constexpr std::string_view ultimo = "Ultimo";
inline constexpr std::string_view nuovo = "Nuovo";
inline constexpr std::string_view conferma = "Conferma";
inline constexpr std::string_view annulla = "Annulla";
inline constexpr std::string_view elimina = "Elimina";
} // namespace navigatorKeys

/// The bar of buttons that drives an editing frame. The frame keeps the buttons' enabled states and the
/// position text, and answers `ButtonClick` by doing what the button says.
class FrameNavigator final : public Control {
public:
    struct ButtonState {
        std::string key;
        std::string caption;
        std::string toolTipText;
        bool enabled = false; ///< as the frame says; nothing can be pressed while the bar itself is disabled
    };

    FrameNavigator(Container& parent, std::string name);

    const std::vector<ButtonState>& Buttons() const { return buttons_; }
    /// \throws std::out_of_range for a key that no button has; so do all that take a key.
    const ButtonState& Button(std::string_view key) const;
    /// The button is enabled, and the bar can take the focus.
    bool CanPress(std::string_view key) const;
    void SetButtonTexts(std::string_view key, std::string caption, std::string toolTipText);
    void SetButtonEnabled(std::string_view key, bool enabled);
    /// Where the frame stands: "2 di 5".
    const std::string& PositionText() const { return position_; }
    void SetPositionText(std::string text);

    /// Presses a button by code: `ButtonClick`, then `AfterButtonClick`. Nothing happens while the button
    /// cannot be pressed. \return the success that the frame answered; false when nothing happened.
    bool Press(std::string_view key);
    /// The user pressed a button: the bar takes the focus first, with it on that button.
    bool PressFromView(std::string_view key);

    /// The button that the user or the form has chosen last; empty until one was. It has the focus while the
    /// bar has it; while it cannot be pressed, a view lets another one stand in for it.
    const std::string& FocusedButton() const { return focused_; }
    /// Gives the focus to the bar, on that button. Raises `Changed` when the button is another one.
    void FocusButton(std::string_view key);

    mutable Event<const std::string&, bool&>
        ButtonClick; ///< key; the frame answers the success, initially false
    mutable Event<bool, const std::string&> AfterButtonClick; ///< success, key

private:
    ButtonState& find(std::string_view key);

    std::vector<ButtonState> buttons_;
    std::string position_;
    std::string focused_;
};

} // namespace veldran::controls
