#pragma once

#include <QLabel>

namespace veldran::qt {

/// Plain text on one line, cut with an ellipsis (and then told by a tool tip) when room is short. "&" marks a
/// mnemonic only where a buddy is to take the focus. To assistive programs a label with an accessible name
/// says what it shows behind that name.
class ElidingLabel : public QLabel {
public:
    explicit ElidingLabel(QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

private:
    QRect textRect() const;
    bool isCut() const;
};

} // namespace veldran::qt
