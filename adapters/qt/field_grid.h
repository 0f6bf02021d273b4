#pragma once

#include "adapters/qt/control_views.h"
#include "adapters/qt/layout_parts.h"
#include "adapters/qt/lookup_field_view.h"
#include "adapters/qt/simple_views.h"
#include "platform/controls/lookup_field.h"
#include "platform/controls/simple_controls.h"

#include <QGridLayout>
#include <string_view>

namespace veldran::qt {

/// A code field, the description of its code right behind it, and a caption before both.
class FieldGrid {
public:
    FieldGrid(ControlViews& views, QWidget& parent) : views_(views), parent_(parent), grid_(new QGridLayout) {
        grid_->setHorizontalSpacing(layoutGap);
        grid_->setVerticalSpacing(layoutGap - 2);
        grid_->setColumnStretch(lastColumn, 1);
    }

    QGridLayout* layout() const { return grid_; }

    template<class View, class T>
    void addField(int row, int column, std::string_view name) {
        auto* control = views_.find<T>(name);
        if (auto* view = views_.place<View, T>(name, &parent_)) {
            view->setEnterMovesOn(true);
            auto* caption = new CaptionView(*control, *views_.viewOf(*control), &parent_);
            grid_->addWidget(caption, row, column);
            grid_->addWidget(view, row, column + 1);
        }
    }

    /// \param captionName of a label that stands for the field's own caption; empty for none
    void addCode(int row, std::string_view name, std::string_view descriptionName,
                 std::string_view captionName = {}) {
        if (captionName.empty()) {
            addField<LookupFieldView, controls::LookupField>(row, 0, name);
        } else if (auto* field = views_.place<LookupFieldView, controls::LookupField>(name, &parent_)) {
            field->setEnterMovesOn(true);
            grid_->addWidget(field, row, 1);
            if (auto* caption = views_.place<LabelView, controls::Label>(captionName, &parent_)) {
                caption->standFor(field->edit());
                grid_->addWidget(caption, row, 0);
            }
        }
        if (auto* description = views_.place<LabelView, controls::Label>(descriptionName, &parent_)) {
            showAsReadOnlyField(*description);
            grid_->addWidget(description, row, 2, 1, lastColumn - 1);
        }
    }

private:
    static constexpr int lastColumn = 4;

    ControlViews& views_;
    QWidget& parent_;
    QGridLayout* grid_; ///< owned by the layout that it is added to
};

} // namespace veldran::qt
