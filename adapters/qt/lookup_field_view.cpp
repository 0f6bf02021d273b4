#include "adapters/qt/lookup_field_view.h"

#include "adapters/qt/control_binding.h"
#include "adapters/qt/text.h"
#include "platform/controls/lookup_field.h"

#include <QFocusEvent>
#include <QHBoxLayout>
#include <QKeyEvent>

namespace veldran::qt {

namespace {

constexpr int longestText = 32767; ///< what a line edit takes when the field sets no limit

}

/// The part of the view where the code is typed.
class LookupFieldView::CodeEdit : public QLineEdit {
public:
    CodeEdit(controls::LookupField& control, QWidget* parent) : QLineEdit(parent), control_(control) {}

    QSize sizeHint() const override {
        const int digits = fontMetrics().horizontalAdvance(QStringLiteral("00/00/00/00/00")) + 16;
        return {digits, QLineEdit::sizeHint().height()};
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_F4 && event->modifiers() == Qt::NoModifier) {
            control_.LookupFromView();
        } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
            control_.LeaveFromView();
        } else {
            QLineEdit::keyPressEvent(event);
        }
    }

    void focusOutEvent(QFocusEvent* event) override {
        QLineEdit::focusOutEvent(event);
        const bool comesBack = event->reason() == Qt::ActiveWindowFocusReason ||
                               event->reason() == Qt::PopupFocusReason ||
                               event->reason() == Qt::MenuBarFocusReason;
        if (!comesBack) {
            control_.LeaveFromView();
        }
    }

private:
    controls::LookupField& control_;
};

LookupFieldView::LookupFieldView(controls::LookupField& control, QWidget* parent)
    : QWidget(parent), control_(control), edit_(new CodeEdit(control, this)), button_(new QToolButton(this)) {
    button_->setText(QStringLiteral("…"));
    button_->setToolTip(QStringLiteral("Scegli da un elenco (F4)"));
    button_->setAccessibleName(QStringLiteral("Scegli da un elenco"));
    button_->setFocusPolicy(Qt::NoFocus); // the list opens from what is typed in the field
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    row->addWidget(edit_, 1);
    row->addWidget(button_);
    button_->setFixedHeight(edit_->sizeHint().height());
    setFocusProxy(edit_);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);

    new ControlBinding(control, *this, edit_, [this] { showField(); });
    connect(edit_, &QLineEdit::textEdited, this,
            [this](const QString& text) { control_.TypeFromView(fromQt(text)); });
    connect(button_, &QToolButton::clicked, this, [this] {
        edit_->setFocus(Qt::OtherFocusReason);
        control_.LookupFromView();
    });
}

void LookupFieldView::showField() {
    const auto& structure = control_.CodeStructure();
    std::string text = control_.Text();
    if (control_.IsValidItem()) {
        std::string display = structure.display(text);
        if (structure.codeOf(display) == text) { // else the display form leaves digits of this code out
            text = std::move(display);
        }
    }
    const int limit = control_.MaxLength() > 0 ? control_.MaxLength() : longestText;
    if (edit_->maxLength() != limit) { // setting it, even to the same length, would move the cursor
        edit_->setMaxLength(limit);
    }
    if (edit_->text() != toQt(text)) {
        edit_->setText(toQt(text));
    }
    button_->setVisible(control_.LookupEnabled());
}

} // namespace veldran::qt
