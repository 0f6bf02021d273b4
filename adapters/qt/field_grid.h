#pragma once

#include "adapters/qt/control_views.h"
#include "adapters/qt/layout_parts.h"
#include "adapters/qt/lookup_field_view.h"
#include "adapters/qt/simple_views.h"
#include "platform/controls/lookup_field.h"
#include "platform/controls/simple_controls.h"

#include <QGridLayout>
#include <map>
#include <string_view>
#include <vector>

namespace veldran::qt {

/// A code field, the description of its code right behind it, and a caption before both. A description that
/// the form wants behind another field of the grid goes there.
class FieldGrid : public QGridLayout {
public:
    FieldGrid(ControlViews& views, QWidget& parent) : views_(views), parent_(parent) {
        setHorizontalSpacing(layoutGap);
        setVerticalSpacing(layoutGap - 2);
        setColumnStretch(lastColumn, 1);
    }

    template<class View, class T>
    void addField(int row, int column, std::string_view name) {
        if (View* view = placeField<View, T>(row, column + 1, name)) {
            auto* control = views_.find<T>(name);
            addWidget(new CaptionView(*control, *views_.viewOf(*control), view->parentWidget()), row, column);
        }
    }

    /// \param captionName of a label that stands for the field's own caption; empty for none
    void addCode(int row, std::string_view name, std::string_view descriptionName,
                 std::string_view captionName = {}) {
        if (captionName.empty()) {
            addField<LookupFieldView, controls::LookupField>(row, 0, name);
        } else if (auto* field = placeField<LookupFieldView, controls::LookupField>(row, 1, name)) {
            if (auto* caption = views_.place<LabelView, controls::Label>(captionName, &parent_)) {
                caption->standFor(field->edit());
                addWidget(caption, row, 0);
            }
        }
        if (auto* description = views_.place<LabelView, controls::Label>(descriptionName, &parent_)) {
            showAsReadOnlyField(*description);
            const auto* label = views_.find<controls::Label>(descriptionName);
            keepBehind(*label, *description, row);
            kept_.push_back(label->Changed.subscribe([=, this] { keepBehind(*label, *description, row); }));
        }
    }

private:
    static constexpr int lastColumn = 4;
    static constexpr int descriptionColumn = 2;

    template<class View, class T>
    View* placeField(int row, int column, std::string_view name) {
        View* view = views_.place<View, T>(name, &parent_);
        if (view != nullptr) {
            view->setEnterMovesOn(true);
            addWidget(view, row, column);
            rowOf_[views_.find<T>(name)] = row;
        }
        return view;
    }

    void keepBehind(const controls::Label& label, QWidget& view, int designedRow) {
        const auto field = rowOf_.find(label.StandsBehind());
        const int row = field == rowOf_.end() ? designedRow : field->second;
        const QLayoutItem* there = itemAtPosition(row, descriptionColumn);
        if (there == nullptr || there->widget() != &view) {
            addWidget(&view, row, descriptionColumn, 1, lastColumn - 1); // away from where it was
        }
    }

    ControlViews& views_;
    QWidget& parent_;
    std::map<const controls::Control*, int> rowOf_;
    std::vector<Subscription> kept_;
};

} // namespace veldran::qt
