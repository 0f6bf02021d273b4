#include "adapters/qt/correlation_layout.h"

#include "adapters/qt/combo_box_view.h"
#include "adapters/qt/control_views.h"
#include "adapters/qt/data_grid_view.h"
#include "adapters/qt/field_grid.h"
#include "adapters/qt/focus_catcher_view.h"
#include "adapters/qt/frame_navigator_view.h"
#include "adapters/qt/layout_parts.h"
#include "adapters/qt/numeric_field_view.h"
#include "adapters/qt/report_list_view.h"
#include "adapters/qt/row_delegate.h"
#include "adapters/qt/simple_views.h"
#include "platform/controls/edit_controls.h"
#include "platform/controls/focus_catcher.h"
#include "platform/controls/frame_navigator.h"
#include "platform/controls/simple_controls.h"

#include <QBoxLayout>
#include <QSplitter>
#include <QStyle>

namespace veldran::qt {

namespace {

constexpr int groupEdge = 8;
constexpr int linesOfGrid = 5;  ///< that are always in sight, the header included
constexpr int leastOfList = 18; ///< letters that the list is never narrower than
constexpr int usualOfList = 38; ///< letters that it is given at first: the grid needs the width more

void layOutHeading(ControlViews& views, QBoxLayout& column, QWidget* area) {
    if (auto* account = views.place<LabelView, controls::Label>("TXT_CONTOSELEZIONATO", area)) {
        QFont heading = account->font();
        heading.setBold(true);
        heading.setPointSizeF(heading.pointSizeF() * 1.2);
        account->setFont(heading);
        column.addWidget(account);
    }
}

void layOutList(ControlViews& views, QSplitter& halves) {
    if (auto* list = views.place<ReportListView, controls::ListView>("LST_CAUSALI", &halves)) {
        list->setEmptyText(QStringLiteral("Nessuna causale correlata"));
        list->setMinimumWidth(list->fontMetrics().averageCharWidth() * leastOfList);
        halves.addWidget(list);
    }
}

void addNavigator(ControlViews& views, std::string_view name, QBoxLayout& column, QWidget* parent) {
    if (auto* navigator = views.place<FrameNavigatorView, controls::FrameNavigator>(name, parent)) {
        column.addWidget(navigator);
    }
}

void layOutHeader(ControlViews& views, QBoxLayout& column, QWidget* parent) {
    auto* group = views.place<GroupBoxView, controls::GroupBox>("GRB_TESTATA", parent);
    if (group == nullptr) {
        return;
    }
    QBoxLayout& rows = *columnOf(*group, groupEdge);
    auto* fields = new FieldGrid(views, *group);
    rows.addLayout(fields);
    fields->addCode(0, "TXT_CAUSALE", "TXT_DESCRCAUSALE");
    addNavigator(views, "INV_TESTATA", rows, group);
    column.addWidget(group);
}

void layOutRows(ControlViews& views, QBoxLayout& rows, QWidget* group) {
    auto* row = newRow();
    if (auto* grid = views.place<DataGridView, controls::DataGrid>("GRD_DETTAGLIO", group)) {
        grid->showAsNumbers("PERCENTUALE");
        grid->setEmptyText(QStringLiteral("Nessuna riga"));
        grid->setMinimumHeight(RowDelegate::rowHeight(grid->fontMetrics()) * linesOfGrid +
                               grid->style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, grid));
        row->addWidget(grid, 1);
    }
    auto* moves = new QVBoxLayout;
    moves->setSpacing(layoutGap / 2);
    for (const char* name : {"CMD_SU", "CMD_GIU"}) {
        if (auto* button = views.place<ButtonView, controls::Button>(name, group)) {
            button->setMaximumWidth(button->fontMetrics().horizontalAdvance(QStringLiteral("mmmm")));
            moves->addWidget(button);
        }
    }
    moves->addStretch(1);
    row->addLayout(moves);
    rows.addLayout(row, 1);
}

void layOutDetail(ControlViews& views, QBoxLayout& column, QWidget* parent) {
    auto* group = views.place<GroupBoxView, controls::GroupBox>("GRB_DETTAGLIO", parent);
    if (group == nullptr) {
        return;
    }
    QBoxLayout& rows = *columnOf(*group, groupEdge);
    layOutRows(views, rows, group);
    auto* fields = new FieldGrid(views, *group);
    rows.addLayout(fields);
    fields->addField<ComboBoxView, controls::ComboBox>(0, 0, "CBO_SEGNO");
    fields->addField<NumericFieldView, controls::NumericField>(0, 2, "TXT_PERC");
    fields->addCode(1, "TXT_CONTO", "TXT_DESCRCONTO");
    fields->addCode(2, "TXT_VDS", "TXT_DESCRVDS", "LBL_VOCEDISPESA");
    views.place<FocusCatcherView, controls::FocusCatcher>("PIC_FOCUSCATCH", group);
    addNavigator(views, "GNV_DETTAGLIO", rows, group);
    column.addWidget(group, 1);
}

} // namespace

QWidget* layOutCorrelation(ControlViews& views, QWidget* parent) {
    QWidget* area = views.placeArea("LAY_CORRELAZIONI", parent);
    QBoxLayout& rows = *columnOf(*area, 0);
    layOutHeading(views, rows, area);
    auto* halves = new QSplitter(Qt::Horizontal, area);
    halves->setChildrenCollapsible(false);
    layOutList(views, *halves);
    auto* editor = new QWidget(halves);
    QBoxLayout& groups = *columnOf(*editor, 0);
    layOutHeader(views, groups, editor);
    layOutDetail(views, groups, editor);
    halves->addWidget(editor);
    halves->setStretchFactor(halves->indexOf(editor), 1);
    const int listWidth = area->fontMetrics().averageCharWidth() * usualOfList;
    halves->setSizes({listWidth, QWIDGETSIZE_MAX - listWidth});
    rows.addWidget(halves, 1);
    return area;
}

} // namespace veldran::qt
