#include "adapters/qt/combo_box_view.h"

#include "adapters/qt/control_binding.h"
#include "adapters/qt/field_edit.h"
#include "adapters/qt/text.h"
#include "platform/controls/edit_controls.h"

#include <QKeyEvent>
#include <QSignalBlocker>
#include <QWheelEvent>

namespace veldran::qt {

namespace {

bool typesLetter(const QKeyEvent& event) {
    const bool command =
        (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
    return !command && !event.text().isEmpty() && event.text().at(0).isLetterOrNumber();
}

} // namespace

ComboBoxView::ComboBoxView(controls::ComboBox& control, QWidget* parent)
    : QComboBox(parent), control_(control) {
    setFocusPolicy(Qt::StrongFocus); // the wheel brings no focus either
    setSizeAdjustPolicy(AdjustToContents);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    new ControlBinding(control, *this, this, [this] { showChoices(); });
    connect(this, &QComboBox::activated, this, [this](int index) { control_.ChooseFromView(index); });
}

void ComboBoxView::showChoices() {
    const QSignalBlocker quiet(this);
    const auto& items = control_.Items();
    while (count() > static_cast<int>(items.size())) {
        removeItem(count() - 1);
    }
    for (int i = 0; i < static_cast<int>(items.size()); ++i) {
        const QString text = toQt(items[static_cast<std::size_t>(i)].text);
        if (i >= count()) {
            addItem(text);
        } else if (itemText(i) != text) {
            setItemText(i, text);
        }
    }
    setCurrentIndex(control_.ListIndex());
}

void ComboBoxView::keyPressEvent(QKeyEvent* event) {
    if (isEnter(*event)) {
        if (enterMovesOn_) {
            focusNextChild();
        }
    } else if (typesLetter(*event)) {
        control_.TypeFromView(fromQt(event->text()));
    } else {
        QComboBox::keyPressEvent(event);
    }
}

void ComboBoxView::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

} // namespace veldran::qt
