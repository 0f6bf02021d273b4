#pragma once

#include <QMdiArea>

namespace veldran::shell {

/// Where the documents of the main window lie: a little darker than a window, whatever colours the system
/// has. While no document is open it says how one is opened.
class WorkArea final : public QMdiArea {
public:
    WorkArea(const QString& emptyText, QWidget* parent);

protected:
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void showGround();
    bool isEmpty() const;

    QString emptyText_;
};

} // namespace veldran::shell
