#pragma once

#include "platform/controls/form.h"

#include <QWidget>
#include <string_view>
#include <vector>

class QBoxLayout;

namespace veldran::controls {
class ResizeControl;
class TreeView;
} // namespace veldran::controls

namespace veldran::qt {

/// Draws a form: finds its controls by name, lays them out by hand, and keeps focus and tab order in step
/// with the control objects, both ways. Every drawn control's widget has the control's name as its object
/// name. Controls that the layout does not know, or that the form lacks, are left out. The first focus is the
/// tree's.
///
/// The form must outlive its view.
class FormView : public QWidget {
public:
    explicit FormView(controls::Form& form, QWidget* parent = nullptr);
    ~FormView() override;

    controls::Form& form() const { return form_; }
    /// The widget that takes the focus for `control`; nullptr when the control is not drawn.
    QWidget* viewOf(const controls::Control& control) const;

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    struct Place {
        controls::Control* control;
        QWidget* focused;
        Subscription changed;
    };

    template<class T>
    T* find(std::string_view name) const;
    template<class View, class T>
    View* place(std::string_view name, QWidget* parent);
    QWidget* placeArea(std::string_view layoutName, QWidget* parent);
    void layOut(QBoxLayout& column);
    void layOutSearchRow(QBoxLayout& column, QWidget* area);
    void layOutTree(QBoxLayout& column, QWidget* area);
    void layOutButtons(QBoxLayout& column);
    void orderTabs();
    void giveFocusTo(const controls::Control* control);
    void takeInitialFocus();

    controls::Form& form_;
    QWidget* content_;
    controls::ResizeControl* resize_;
    controls::TreeView* tree_ = nullptr;
    std::vector<Place> places_; ///< in the order of the design, which is the tab order
    std::vector<QWidget*> tabChain_;
    Subscription focusMoved_;
    Subscription activated_;
};

} // namespace veldran::qt
