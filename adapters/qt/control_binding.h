#pragma once

#include "platform/event.h"

#include <QObject>
#include <functional>

class QWidget;

namespace veldran::controls {
class Control;
}

namespace veldran::qt {

/// What every view shares. Keeps enabled state, visibility, tool tip and accessible name of a widget in step
/// with its control object; tells the control of the focus and, before the widget sees them, of keys.
class ControlBinding : public QObject {
public:
    using Refresh = std::function<void()>;

    /// \param shown the whole view; owns the binding
    /// \param focused the part of it that takes the focus; nullptr for what never does
    /// \param refresh shows the properties of this kind of control; called now and after each change
    ControlBinding(controls::Control& control, QWidget& shown, QWidget* focused, Refresh refresh);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showProperties();

    controls::Control& control_;
    QWidget& shown_;
    QWidget& named_; ///< the part that a screen reader comes to
    Refresh refresh_;
    Subscription changed_;
};

} // namespace veldran::qt
