#pragma once

#include <QLabel>
#include <QPushButton>

namespace veldran::controls {
class Button;
class Label;
} // namespace veldran::controls

namespace veldran::qt {

/// Shows the caption as it stands ("&" marks a mnemonic only where a buddy is to take the focus), cut with an
/// ellipsis (and then told by a tool tip) when room is short.
class LabelView : public QLabel {
public:
    explicit LabelView(controls::Label& control, QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    QRect textRect() const;
    bool isCut() const;
};

/// A button takes the focus before it clicks, by its mnemonic too, so that the field left behind is decoded.
class ButtonView : public QPushButton {
public:
    explicit ButtonView(controls::Button& control, QWidget* parent = nullptr);

    QSize sizeHint() const override;
};

} // namespace veldran::qt
