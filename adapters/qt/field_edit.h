#pragma once

#include <QLineEdit>

class QKeyEvent;

namespace veldran::qt {

/// Enter or Return, of either block of keys.
bool isEnter(const QKeyEvent& event);

/// Gives the focus to the widget, whose text, if it is a field, is then selected: also in a window that is
/// not active, because a message is closing over it.
void giveFocusTo(QWidget& widget);

/// The part of a field where its text is typed. Leaving it takes over what was typed, and so does Enter; the
/// Tab key does not lead out of a field whose text is refused, while mouse and mnemonics do. The text is
/// selected when the form or the Tab key brings the focus.
class FieldEdit : public QLineEdit {
public:
    using QLineEdit::QLineEdit;

    /// Enter then moves the focus on, as Tab does, unless what was typed is refused.
    void setEnterMovesOn(bool movesOn) { enterMovesOn_ = movesOn; }
    /// Moves the focus to the next widget; does nothing while it is elsewhere.
    void moveOn();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    /// What was typed becomes the value. \return false when it was refused.
    virtual bool takeOver() = 0;

    bool enterMovesOn_ = false;
};

} // namespace veldran::qt
