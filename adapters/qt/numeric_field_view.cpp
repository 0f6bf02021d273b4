#include "adapters/qt/numeric_field_view.h"

#include "adapters/qt/control_binding.h"
#include "adapters/qt/text.h"
#include "platform/controls/edit_controls.h"

#include <QFocusEvent>

namespace veldran::qt {

NumericFieldView::NumericFieldView(controls::NumericField& control, QWidget* parent)
    : FieldEdit(parent), control_(control) {
    setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    new ControlBinding(control, *this, this, [this] {
        if (const QString shown = toQt(control_.Text()); shown != text()) {
            setText(shown);
        }
    });
    connect(this, &QLineEdit::textEdited, this,
            [this](const QString& typed) { control_.TypeFromView(fromQt(typed)); });
}

QSize NumericFieldView::sizeHint() const {
    return {fontMetrics().horizontalAdvance(QStringLiteral("-0000,00")) + 16, QLineEdit::sizeHint().height()};
}

void NumericFieldView::focusInEvent(QFocusEvent* event) {
    FieldEdit::focusInEvent(event);
    clickedInto_ = event->reason() == Qt::MouseFocusReason;
}

void NumericFieldView::mouseReleaseEvent(QMouseEvent* event) {
    FieldEdit::mouseReleaseEvent(event);
    if (clickedInto_ && !hasSelectedText()) {
        selectAll();
    }
    clickedInto_ = false;
}

bool NumericFieldView::takeOver() {
    return control_.LeaveFromView();
}

} // namespace veldran::qt
