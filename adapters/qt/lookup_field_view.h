#pragma once

#include "platform/event.h"

#include <QLineEdit>
#include <QToolButton>
#include <QWidget>

namespace veldran::controls {
class LookupField;
}

namespace veldran::qt {

/// A code field with the button that opens its list. Shows a decoded code in its display form, and marks one
/// that was not found; F4 opens the list, Shift+F4 or the context menu the maintenance of the code; leaving
/// the field decodes what was typed, and so does Enter when the form does not answer it. A field that
/// completes moves the focus on.
class LookupFieldView : public QWidget {
public:
    explicit LookupFieldView(controls::LookupField& control, QWidget* parent = nullptr);

    QLineEdit& edit();
    /// Takes the focus for the field. (A focus proxy would make the field a second stop of the Tab key.)
    QWidget& focusPart();
    QToolButton& button() { return *button_; }
    /// Enter then moves the focus on as well, as Tab does.
    void setEnterMovesOn(bool movesOn);

private:
    class CodeEdit;
    void showField();
    void showText();
    void showTips();

    controls::LookupField& control_;
    CodeEdit* edit_;
    QToolButton* button_;
    Subscription completed_;
};

} // namespace veldran::qt
