#pragma once

#include "adapters/qt/field_edit.h"

namespace veldran::controls {
class NumericField;
}

namespace veldran::qt {

/// A number: typed with comma or point, shown through its mask once the field was left. A click into the
/// field selects all of it, so that a number is replaced and not mended.
class NumericFieldView : public FieldEdit {
public:
    explicit NumericFieldView(controls::NumericField& control, QWidget* parent = nullptr);

    QSize sizeHint() const override;

protected:
    void focusInEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    bool takeOver() override;

    controls::NumericField& control_;
    bool clickedInto_ = false;
};

} // namespace veldran::qt
