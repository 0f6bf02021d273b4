#pragma once

#include "adapters/qt/control_views.h"

#include <QWidget>
#include <vector>

class QScrollArea;

namespace veldran::controls {
class ResizeControl;
} // namespace veldran::controls

namespace veldran::qt {

/// Draws a form: finds its controls by name, lays them out by hand, and keeps focus and tab order in step
/// with the control objects, both ways. Every drawn control's widget has the control's name as its object
/// name. Controls that the layout does not know, or that the form lacks, are left out. The first focus is the
/// tree's, or the first field's of a dialog. Shows the menus that the form opens. In a window that is smaller
/// than `minimumSizeHint` the form is scrolled.
///
/// The form must outlive its view.
class FormView : public QWidget {
public:
    explicit FormView(controls::Form& form, QWidget* parent = nullptr);
    ~FormView() override;

    controls::Form& form() const { return form_; }
    /// The widget that takes the focus for `control`; nullptr when the control is not drawn.
    QWidget* viewOf(const controls::Control& control) const { return views_.viewOf(control); }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void layOut();
    void orderTabs();
    void giveFocusTo(const controls::Control* control);
    void takeInitialFocus();

    controls::Form& form_;
    QScrollArea* scroll_;
    QWidget* content_;
    controls::ResizeControl* resize_;
    ControlViews views_;
    bool isDialog_ = false; ///< as small as its fields, without a tree
    bool redrawLocked_ = false;
    std::vector<QWidget*> tabChain_;
    std::vector<Subscription> kept_;
};

} // namespace veldran::qt
