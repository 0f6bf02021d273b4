#include "adapters/qt/activation_layout.h"

#include "adapters/qt/control_views.h"
#include "adapters/qt/layout_parts.h"
#include "adapters/qt/lookup_field_view.h"
#include "adapters/qt/simple_views.h"
#include "adapters/qt/tab_strip_view.h"
#include "adapters/qt/tree_widget.h"
#include "platform/controls/lookup_field.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/tab_strip.h"

#include <QBoxLayout>

namespace veldran::qt {

namespace {

void layOutSearchRow(ControlViews& views, QBoxLayout& column, QWidget* area) {
    auto* row = newRow();
    auto* caption = views.place<LabelView, controls::Label>("LBL_CONTORICERCA", area);
    if (caption != nullptr) {
        row->addWidget(caption);
    }
    if (auto* code = views.place<LookupFieldView, controls::LookupField>("TXT_CONTORICERCA", area)) {
        row->addWidget(code);
        if (caption != nullptr) {
            caption->standFor(code->edit());
        }
    }
    if (auto* description = views.place<LabelView, controls::Label>("LBB_DESCRCONTORICERCA", area)) {
        showAsReadOnlyField(*description);
        row->addWidget(description, 1);
    }
    if (auto* search = views.place<ButtonView, controls::Button>("BUT_RICERCA", area)) {
        row->addWidget(search);
    }
    column.addLayout(row);
}

void layOutTree(ControlViews& views, QBoxLayout& column, QWidget* area) {
    auto* block = new QVBoxLayout; // tabs, the filter they chose and what it lets through are one thing
    block->setSpacing(0);
    if (auto* filters = views.place<TabStripView, controls::TabStrip>("STR_FILTRI", area)) {
        block->addWidget(filters);
    }
    if (auto* filter = views.place<LabelView, controls::Label>("LBL_FILTRO_CORRENTE", area)) {
        QFont bold = filter->font();
        bold.setBold(true);
        filter->setFont(bold);
        filter->setMargin(3);
        filter->setFrameStyle(QFrame::StyledPanel | QFrame::Plain);
        filter->setAutoFillBackground(true);
        filter->setBackgroundRole(QPalette::AlternateBase);
        block->addWidget(filter);
    }
    if (auto* tree = views.place<TreeWidget, controls::TreeView>("TRW_CONTI", area)) {
        block->addWidget(tree, 1);
    }
    column.addLayout(block, 1);
}

} // namespace

QWidget* layOutActivation(ControlViews& views, QWidget* parent) {
    QWidget* area = views.placeArea("LAY_ATTIVAZIONE", parent);
    QBoxLayout& rows = *columnOf(*area, 0);
    layOutSearchRow(views, rows, area);
    layOutTree(views, rows, area);
    return area;
}

QWidget* layOutAccountButtons(ControlViews& views, QWidget* parent) {
    QWidget* area = views.placeArea("LAY_ATTIVAZIONE", parent);
    auto* row = new QHBoxLayout(area);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(layoutGap);
    for (const char* name : {"BUT_CORRELAZIONI", "BUT_EDITCORRELAZIONI"}) {
        if (auto* button = views.place<ButtonView, controls::Button>(name, area)) {
            row->addWidget(button);
        }
    }
    return area;
}

} // namespace veldran::qt
