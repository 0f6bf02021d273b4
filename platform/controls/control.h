#pragma once

#include "platform/event.h"
#include "platform/value.h"

#include <memory>
#include <string>
#include <utility>

namespace veldran::controls {

class Container;
class Form;

/// Key codes and shift bits of the control suite, as its events carry them.
enum KeyCode {
    keyBack = 8,
    keyTab = 9,
    keyReturn = 13,
    keyEscape = 27,
    keySpace = 32,
    keyDelete = 46,
    keyC = 67,
    keyV = 86,
    keyX = 88,
    keyApps = 93,
    keyF4 = 115,
    keyF10 = 121
};
enum ShiftMask { shiftNone = 0, shiftShift = 1, shiftCtrl = 2, shiftAlt = 4 };
enum MouseButton { buttonLeft = 1, buttonRight = 2, buttonMiddle = 4 };

/// A key going down. A handler consumes it by setting `keyCode` to 0; the view then does nothing more with
/// it.
struct KeyEvent {
    int keyCode = 0;
    int shift = shiftNone;
};

/// A mouse button; the position is in twips from the control's upper left corner.
struct MouseEvent {
    int button = 0;
    int shift = shiftNone;
    int x = 0;
    int y = 0;
};

/// A control is state plus events; a view observes it, paints it, and reports what the user does.
/// Controls live in the form that declares them and never outlive it.
class Control {
public:
    Control(Container& parent, std::string name);
    virtual ~Control();
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    const std::string& Name() const { return name_; }
    Container* Parent() const { return parent_; }
    Form* OwnerForm() const;

    const std::string& Caption() const { return caption_; }
    const std::string& ToolTipText() const { return toolTip_; }
    /// What a screen reader says; the tag of the design, or the caption where there is none.
    const std::string& AccessibleName() const { return accessibleName_.empty() ? caption_ : accessibleName_; }
    bool Enabled() const { return enabled_; }
    bool Visible() const { return visible_; }
    /// Position (1-based) in the tab order chosen by a customer layout; 0 keeps the order of the design.
    int TabIndex() const { return tabIndex_; }

    void SetCaption(std::string caption);
    void SetToolTipText(std::string text);
    void SetAccessibleName(std::string text);
    void SetEnabled(bool enabled);
    void SetVisible(bool visible);
    void SetTabIndex(int index);

    /// Enabled and visible, and so is every container around it.
    bool CanTakeFocus() const;
    bool HasFocus() const;
    /// Makes this the form's active control; does nothing when it cannot take the focus.
    void SetFocus();

    /// The view reports a key before it acts on it. The form sees the key first, then the control.
    /// \return true when a handler consumed the key.
    bool KeyDownFromView(int keyCode, int shift);

    mutable Event<> Changed; ///< a property that a view shows has changed
    mutable Event<> GotFocus;
    mutable Event<> LostFocus;
    mutable Event<KeyEvent&> KeyDown;

protected:
    explicit Control(std::string name); ///< the form has no parent
    /// Expires when the control is gone: a routine that raises an event asks it before it goes on.
    std::weak_ptr<const bool> lifeline() const { return life_; }

private:
    friend class Form;
    /// This control as what it is, or nullptr.
    virtual Form* asForm() { return nullptr; }
    virtual const Container* asContainer() const { return nullptr; }
    void lostReach();

    std::shared_ptr<const bool> life_ = std::make_shared<const bool>(true); // shared only to be watched
    Container* parent_;
    std::string name_;
    std::string caption_;
    std::string toolTip_;
    std::string accessibleName_;
    bool enabled_ = true;
    bool visible_ = true;
    int tabIndex_ = 0;
};

} // namespace veldran::controls
