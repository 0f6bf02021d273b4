#pragma once

#include <QWidget>
#include <cstddef>
#include <string>
#include <vector>

class QLabel;

namespace veldran::controls {
class FrameNavigator;
}

namespace veldran::qt {

/// The bar of buttons that drives an editing frame. One of its buttons stands in the tab order, the arrow
/// keys move between those that can be pressed; Enter and the space bar press. A button that is disabled
/// while it has the focus hands it to its neighbour, and takes it back should it be enabled before anyone has
/// moved on: what is pressed next is not something else.
class FrameNavigatorView : public QWidget {
public:
    explicit FrameNavigatorView(controls::FrameNavigator& control, QWidget* parent = nullptr);

    /// The buttons, in the order in which they stand.
    const std::vector<QWidget*>& tabStops() const { return stops_; }
    /// The button that takes the focus for the bar; the bar itself while none can be pressed.
    QWidget& focusPart();

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    class BarButton;

    void addButton(const std::string& key);
    void showState();
    /// The button that can be pressed nearest to that one, which may be itself; nullptr when there is none.
    /// The one that deletes is the last choice: whoever goes on pressing Enter does not mean it.
    BarButton* nearestEnabled(std::size_t index) const;
    /// Settles which button stands in the tab order, and gives it the focus when the bar has it.
    void chooseEntry();
    /// Gives the focus to the first button from `index` on in that direction that can be pressed.
    void step(int index, int direction);

    controls::FrameNavigator& control_;
    QLabel* position_;
    std::vector<BarButton*> buttons_;
    std::vector<QWidget*> stops_;
    BarButton* entry_ = nullptr;  ///< stands in the tab order
    BarButton* wanted_ = nullptr; ///< where the user, or the form, has moved
    BarButton* named_ = nullptr;  ///< by the form, when last looked
};

} // namespace veldran::qt
