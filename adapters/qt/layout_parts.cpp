#include "adapters/qt/layout_parts.h"

#include "adapters/qt/simple_views.h"

#include <QHBoxLayout>
#include <QVBoxLayout>

namespace veldran::qt {

QBoxLayout* columnOf(QWidget& widget, int edge) {
    auto* column = new QVBoxLayout(&widget);
    column->setContentsMargins(edge, edge, edge, edge);
    column->setSpacing(layoutGap);
    return column;
}

QBoxLayout* newRow() {
    auto* row = new QHBoxLayout;
    row->setSpacing(layoutGap);
    return row;
}

void showAsReadOnlyField(LabelView& label) {
    label.setFrameStyle(QFrame::StyledPanel | QFrame::Sunken);
    label.setMargin(3);
    label.setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

} // namespace veldran::qt
