#pragma once

#include <QWidget>

namespace veldran::controls {
class FocusCatcher;
}

namespace veldran::qt {

/// A place in the tab order without a picture: the Tab key alone brings the focus here, and the form sends it
/// elsewhere.
class FocusCatcherView : public QWidget {
public:
    explicit FocusCatcherView(controls::FocusCatcher& control, QWidget* parent = nullptr);
};

} // namespace veldran::qt
