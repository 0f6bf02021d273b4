#include "adapters/qt/duplication_layout.h"

#include "adapters/qt/control_views.h"
#include "adapters/qt/field_grid.h"
#include "adapters/qt/layout_parts.h"
#include "adapters/qt/simple_views.h"
#include "platform/controls/container.h"

#include <QBoxLayout>

namespace veldran::qt {

namespace {
constexpr int groupEdge = 8;
constexpr int lettersOfDescription = 40;
} // namespace

QWidget* layOutDuplication(ControlViews& views, QWidget* parent) {
    if (views.find<controls::GroupBox>("GRB_CAUSALEDESTINAZIONE") == nullptr) {
        return nullptr;
    }
    auto* area = new QWidget(parent);
    QBoxLayout& rows = *columnOf(*area, 0);
    auto* group = views.place<GroupBoxView, controls::GroupBox>("GRB_CAUSALEDESTINAZIONE", area);
    auto* fields = new FieldGrid(views, *group);
    columnOf(*group, groupEdge)->addLayout(fields);
    fields->addCode(0, "TXT_CAUSALE", "TXT_DESCRCAUSALE");
    group->setMinimumWidth(group->fontMetrics().averageCharWidth() * lettersOfDescription * 2);
    rows.addWidget(group);
    rows.addStretch(1);
    auto* buttons = newRow();
    buttons->addStretch(1);
    for (const char* name : {"CMD_CONFERMA", "CMD_ANNULLA"}) {
        if (auto* button = views.place<ButtonView, controls::Button>(name, area)) {
            buttons->addWidget(button);
        }
    }
    rows.addLayout(buttons);
    return area;
}

} // namespace veldran::qt
