#pragma once

#include "adapters/qt/eliding_label.h"
#include "platform/event.h"

#include <QGroupBox>
#include <QLabel>
#include <QPushButton>

namespace veldran::controls {
class Button;
class Control;
class GroupBox;
class Label;
} // namespace veldran::controls

namespace veldran::qt {

/// Shows the caption as it stands ("&" marks a mnemonic only where a buddy is to take the focus).
class LabelView : public ElidingLabel {
public:
    explicit LabelView(controls::Label& control, QWidget* parent = nullptr);

    /// The label is the caption of that field: never cut, pale while the field is disabled; its mnemonic
    /// takes the focus to the field.
    void standFor(QWidget& field);

    bool eventFilter(QObject* watched, QEvent* event) override;
};

/// A button takes the focus before it clicks, by its mnemonic too, so that the field left behind is decoded.
/// Enter presses it as the space bar does.
class ButtonView : public QPushButton {
public:
    explicit ButtonView(controls::Button& control, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

/// The caption of a field, shown beside it: there, visible and enabled as the field is.
class CaptionView : public QLabel {
public:
    /// \param field takes the focus of a mnemonic in the caption
    CaptionView(const controls::Control& control, QWidget& field, QWidget* parent = nullptr);

private:
    void showCaption(const controls::Control& control);

    Subscription changed_;
};

class GroupBoxView : public QGroupBox {
public:
    explicit GroupBoxView(controls::GroupBox& control, QWidget* parent = nullptr);
};

} // namespace veldran::qt
