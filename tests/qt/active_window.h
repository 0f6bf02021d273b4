#pragma once

#include <gtest/gtest.h>

#include <QHelpEvent>
#include <QLineEdit>
#include <QTest>
#include <QToolTip>
#include <QVBoxLayout>

namespace veldran::qt {

/// A window with the views of a test one below the other, and a plain field after them.
class ActiveWindow : public QWidget {
public:
    ActiveWindow() : column_(new QVBoxLayout(this)), elsewhere_(new QLineEdit(this)) {
        column_->addWidget(elsewhere_);
    }

    void activate(std::initializer_list<QWidget*> views) {
        for (QWidget* view : views) {
            column_->insertWidget(column_->count() - 1, view);
            setTabOrder(view, elsewhere_);
        }
        resize(400, 300);
        show();
        activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(this));
    }
    QLineEdit& elsewhere() { return *elsewhere_; }

private:
    QVBoxLayout* column_;
    QLineEdit* elsewhere_;
};

/// The tool tip that the pointer brings up at that point of the widget.
inline QString tipAt(QWidget& widget, const QPoint& at) {
    QToolTip::hideText();
    QHelpEvent help(QEvent::ToolTip, at, widget.mapToGlobal(at));
    QApplication::sendEvent(&widget, &help);
    return QToolTip::text();
}

} // namespace veldran::qt
