#pragma once

#include "platform/controls/popup_menu.h"
#include "platform/event.h"

#include <QMenu>
#include <QPointer>
#include <QWidget>
#include <functional>

namespace veldran::controls {
class Form;
}

namespace veldran::qt {

/// Shows the menus that a form opens, one at a time, and tells the item that the user chose once the menu has
/// closed. A menu at a control opens below its current row or, where it has none, at its upper left corner,
/// with its first item chosen. A menu still open goes away with its form.
class PopupMenus : public QObject {
public:
    using ViewOf = std::function<QWidget*(const controls::Control&)>;

    /// \param window owns the menus shown
    /// \param viewOf the widget of a control; nullptr where none is drawn
    PopupMenus(const controls::Form& form, QWidget& window, ViewOf viewOf);

private:
    void show(controls::PopupMenu& menu, const controls::PopupPlace& place);
    void fill(QMenu& shown, controls::PopupMenu& menu);
    QPoint pointAt(const controls::PopupPlace& place) const;

    QWidget& window_;
    ViewOf viewOf_;
    QPointer<QMenu> open_;
    Subscription requested_;
    Subscription unloading_;
};

} // namespace veldran::qt
