#pragma once

#include <QComboBox>

namespace veldran::controls {
class ComboBox;
}

namespace veldran::qt {

/// A drop-down list of fixed choices. The first letter of a choice chooses it; the mouse wheel chooses
/// nothing, because it is meant for what the field stands in. Enter may move the focus on.
class ComboBoxView : public QComboBox {
public:
    explicit ComboBoxView(controls::ComboBox& control, QWidget* parent = nullptr);

    /// Enter then moves the focus on, as Tab does.
    void setEnterMovesOn(bool movesOn) { enterMovesOn_ = movesOn; }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void showChoices();

    controls::ComboBox& control_;
    bool enterMovesOn_ = false;
};

} // namespace veldran::qt
