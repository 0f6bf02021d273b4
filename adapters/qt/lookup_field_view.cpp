#include "adapters/qt/lookup_field_view.h"

#include "adapters/qt/colours.h"
#include "adapters/qt/control_binding.h"
#include "adapters/qt/field_edit.h"
#include "adapters/qt/text.h"
#include "platform/controls/lookup_field.h"

#include <QContextMenuEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QPainter>
#include <QPointer>
#include <QStringList>
#include <algorithm>

namespace veldran::qt {

namespace {

constexpr int longestText = 32767;  ///< what a line edit takes when the field sets no limit
constexpr int usualLength = 14;     ///< characters in sight where the field sets no limit
constexpr int leastLength = 8;      ///< characters in sight of the shortest codes
constexpr int padding = 16;         ///< pixels beside the characters
constexpr int groundOfUnknown = 18; ///< per cent of the colour below the text of an unknown code
constexpr int lineOfUnknown = 2;    ///< pixels of the line below it, for those who do not see colours
const QColor colourOfUnknown(0xc6, 0x28, 0x28);

const QString unknownCode = QStringLiteral("Il codice non esiste, o qui non è ammesso.");

} // namespace

class LookupFieldView::CodeEdit : public FieldEdit {
public:
    CodeEdit(controls::LookupField& control, QWidget* parent) : FieldEdit(parent), control_(control) {}

    QSize sizeHint() const override {
        const int limit = control_.TypingLimit();
        const int length = limit > 0 ? std::max(limit, leastLength) : usualLength;
        const int digits = fontMetrics().horizontalAdvance(QString(length, QLatin1Char('0')));
        return {digits + padding, QLineEdit::sizeHint().height()};
    }

    /// The code is marked as one that was not found, or no longer is.
    void showUnknown(bool unknown) {
        QPalette colours; // those that the field would have by itself
        if (unknown) {
            for (const auto group : {QPalette::Active, QPalette::Inactive}) {
                const QColor base = colours.color(group, QPalette::Base);
                colours.setColor(group, QPalette::Base, blended(colourOfUnknown, base, groundOfUnknown));
            }
        }
        if (unknown || unknown_) {
            setPalette(colours);
        }
        unknown_ = unknown;
        setAccessibleDescription(unknown ? unknownCode : QString());
    }

protected:
    void paintEvent(QPaintEvent* event) override {
        FieldEdit::paintEvent(event);
        if (unknown_ && isEnabled()) {
            const QRect line =
                rect().adjusted(lineOfUnknown, height() - 2 * lineOfUnknown, -lineOfUnknown, -lineOfUnknown);
            QPainter(this).fillRect(line, colourOfUnknown);
        }
    }

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
    bool unknown_ = false;
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
    setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);

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
    QStringList ofField;
    if (control_.IsUnknownItem()) {
        ofField << unknownCode;
    }
    if (control_.ManagementEnabled()) {
        const QString management = QStringLiteral("Gestione: tasto destro o Maiusc+F4");
        ofList += QLatin1Char('\n') + management;
        ofField << management;
    }
    if (!ofField.isEmpty() && !control_.ToolTipText().empty()) {
        ofField.prepend(toQt(control_.ToolTipText()));
    }
    button_->setToolTip(ofList);
    edit_->setToolTip(ofField.join(QLatin1Char('\n'))); // without one of its own it shows that of the field
}

void LookupFieldView::showField() {
    showText();
    edit_->showUnknown(control_.IsUnknownItem());
    button_->setEnabled(control_.LookupEnabled());
    showTips();
}

void LookupFieldView::showText() {
    const auto& structure = control_.CodeStructure();
    std::string text = control_.Text();
    if (control_.IsValidItem()) {
        std::string display = structure.display(text);
        if (structure.codeOf(display) == text) { // else the display form leaves digits of this code out
            text = std::move(display);
        }
    }
    const int limit = control_.TypingLimit() > 0 ? control_.TypingLimit() : longestText;
    if (edit_->maxLength() != limit) { // setting it, even to the same length, would move the cursor
        edit_->setMaxLength(limit);
        edit_->updateGeometry();
    }
    if (edit_->text() != toQt(text)) {
        edit_->setText(toQt(text));
    }
}

} // namespace veldran::qt
