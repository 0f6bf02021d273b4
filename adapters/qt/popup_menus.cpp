#include "adapters/qt/popup_menus.h"

#include "adapters/qt/text.h"
#include "platform/controls/form.h"

#include <QAbstractItemView>

namespace veldran::qt {

PopupMenus::PopupMenus(const controls::Form& form, QWidget& window, ViewOf viewOf)
    : QObject(&window), window_(window), viewOf_(std::move(viewOf)) {
    requested_ = form.PopupRequested.subscribe(
        [this](controls::PopupMenu& menu, const controls::PopupPlace& place) { show(menu, place); });
    unloading_ = form.Unloading.subscribe([this] { delete open_; }); // and a choice still on its way
}

void PopupMenus::fill(QMenu& shown, controls::PopupMenu& menu) {
    for (const controls::PopupItem& item : menu.Items()) {
        if (item.IsSeparator()) {
            shown.addSeparator();
            continue;
        }
        QString caption = toQt(item.caption);
        QAction* action = shown.addAction(caption.replace(QLatin1Char('&'), QStringLiteral("&&")));
        action->setEnabled(!item.disabled);
        // Queued: by then the menu has closed, and the answer may open a window of its own.
        connect(
            action, &QAction::triggered, &shown, [&menu, key = item.key] { menu.ClickFromView(key); },
            Qt::QueuedConnection);
    }
}

void PopupMenus::show(controls::PopupMenu& menu, const controls::PopupPlace& place) {
    if (open_) {
        open_->close();
        open_->deleteLater(); // the choice of one of its items may be what opens this menu
    }
    open_ = new QMenu(&window_);
    open_->setObjectName(toQt(menu.Name()));
    fill(*open_, menu);
    open_->popup(pointAt(place));
    if (place.anchor != nullptr) { // by the keyboard, which goes on from the first item
        for (QAction* action : open_->actions()) {
            if (action->isEnabled() && !action->isSeparator()) {
                open_->setActiveAction(action);
                break;
            }
        }
    }
}

QPoint PopupMenus::pointAt(const controls::PopupPlace& place) const {
    if (place.anchor == nullptr) {
        return {place.x, place.y};
    }
    const QWidget* anchor = viewOf_(*place.anchor);
    if (anchor == nullptr) {
        return window_.mapToGlobal(QPoint());
    }
    if (const auto* rows = qobject_cast<const QAbstractItemView*>(anchor)) {
        const QRect row = rows->visualRect(rows->currentIndex());
        if (row.isValid() && rows->viewport()->rect().contains(row.bottomLeft())) {
            return rows->viewport()->mapToGlobal(row.bottomLeft());
        }
    }
    return anchor->mapToGlobal(QPoint());
}

} // namespace veldran::qt
