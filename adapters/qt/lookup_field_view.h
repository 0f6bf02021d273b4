#pragma once

#include <QLineEdit>
#include <QToolButton>
#include <QWidget>

namespace veldran::controls {
class LookupField;
}

namespace veldran::qt {

/// A code field with the button that opens its list. Shows a decoded code in its display form; F4 opens the
/// list; leaving the field decodes what was typed, and so does Enter when the form does not answer it.
class LookupFieldView : public QWidget {
public:
    explicit LookupFieldView(controls::LookupField& control, QWidget* parent = nullptr);

    QLineEdit& edit() { return *edit_; }
    QToolButton& button() { return *button_; }

private:
    class CodeEdit;
    void showField();

    controls::LookupField& control_;
    QLineEdit* edit_;
    QToolButton* button_;
};

} // namespace veldran::qt
