#include "adapters/qt/lookup_field_view.h"

#include "adapters/qt/control_binding.h"
#include "adapters/qt/field_edit.h"
#include "adapters/qt/text.h"
#include "platform/controls/lookup_field.h"

#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QPointer>

namespace veldran::qt {

namespace {

constexpr int longestText = 32767; ///< what a line edit takes when the field sets no limit

}

class LookupFieldView::CodeEdit : public FieldEdit {
public:
    CodeEdit(controls::LookupField& control, QWidget* parent) : FieldEdit(parent), control_(control) {}

    QSize sizeHint() const override {
        const int digits = fontMetrics().horizontalAdvance(QStringLiteral("00/00/00/00/00")) + 16;
        return {digits, QLineEdit::sizeHint().height()};
    }

protected:
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_F4 && event->modifiers() == Qt::NoModifier) {
            control_.LookupFromView();
        } else if (event->key() == Qt::Key_F4 && event->modifiers() == Qt::ShiftModifier) {
            control_.PressKeyButtonMenuFromView(controls::LookupField::menuManagement);
        } else {
            FieldEdit::keyPressEvent(event);
        }
    }

    void contextMenuEvent(QContextMenuEvent* event) override {
        QMenu* menu = createStandardContextMenu();
        menu->setAttribute(Qt::WA_DeleteOnClose);
        menu->addSeparator();
        if (control_.LookupEnabled()) {
            addItem(*menu, QStringLiteral("Scegli da un elenco…\tF4"), [this] { control_.LookupFromView(); });
        }
        if (control_.ManagementEnabled()) {
            addItem(*menu, QStringLiteral("Gestione…\tMaiusc+F4"),
                    [this] { control_.PressKeyButtonMenuFromView(controls::LookupField::menuManagement); });
        }
        menu->popup(event->globalPos());
    }

private:
    /// The action runs once the menu has closed, because it opens a window of its own.
    template<class Action>
    void addItem(QMenu& menu, const QString& text, Action action) {
        connect(menu.addAction(text), &QAction::triggered, this, action, Qt::QueuedConnection);
    }

    bool takeOver() override {
        const QPointer<CodeEdit> self(this);
        control_.LeaveFromView();
        return !self || !control_.HasPendingText();
    }

    controls::LookupField& control_;
};

LookupFieldView::LookupFieldView(controls::LookupField& control, QWidget* parent)
    : QWidget(parent), control_(control), edit_(new CodeEdit(control, this)), button_(new QToolButton(this)) {
    button_->setText(QStringLiteral("…"));
    button_->setAccessibleName(QStringLiteral("Scegli da un elenco"));
    button_->setFocusPolicy(Qt::NoFocus); // the list opens from what is typed in the field
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    row->addWidget(edit_, 1);
    row->addWidget(button_);
    button_->setFixedHeight(edit_->sizeHint().height());
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);

    new ControlBinding(control, *this, edit_, [this] { showField(); });
    completed_ = control_.Completed.subscribe([this] { edit_->moveOn(); });
    connect(edit_, &QLineEdit::textEdited, this,
            [this](const QString& text) { control_.TypeFromView(fromQt(text)); });
    connect(button_, &QToolButton::clicked, this, [this] {
        edit_->setFocus(Qt::OtherFocusReason);
        control_.LookupFromView();
    });
}

QLineEdit& LookupFieldView::edit() {
    return *edit_;
}

QWidget& LookupFieldView::focusPart() {
    return *edit_;
}

void LookupFieldView::setEnterMovesOn(bool movesOn) {
    edit_->setEnterMovesOn(movesOn);
}

void LookupFieldView::showTips() {
    QString ofList = QStringLiteral("Scegli da un elenco (F4)");
    QString ofField;
    if (control_.ManagementEnabled()) {
        const QString management = QStringLiteral("Gestione: tasto destro o Maiusc+F4");
        ofList += QLatin1Char('\n') + management;
        ofField = toQt(control_.ToolTipText());
        ofField += (ofField.isEmpty() ? QString() : QStringLiteral("\n")) + management;
    }
    button_->setToolTip(ofList);
    edit_->setToolTip(ofField); // without one of its own it shows that of the field
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
    showTips();
}

} // namespace veldran::qt
