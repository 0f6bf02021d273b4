#include "shell/form_window.h"

#include "adapters/qt/form_view.h"
#include "adapters/qt/text.h"
#include "adapters/qt/twips.h"
#include "platform/controls/data_grid.h"

#include <QAction>
#include <QCloseEvent>
#include <QEventLoop>
#include <QMdiArea>
#include <QMenu>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

namespace veldran::shell {

using qt::toQt;

namespace {

controls::MdiContainer* containerControl(controls::Container& container) {
    for (controls::Control* control : container.Controls()) {
        if (auto* found = dynamic_cast<controls::MdiContainer*>(control)) {
            return found;
        }
        if (auto* inner = dynamic_cast<controls::Container*>(control)) {
            if (auto* found = containerControl(*inner)) {
                return found;
            }
        }
    }
    return nullptr;
}

void load(controls::Form& form) {
    form.Load();
    if (controls::MdiContainer* container = containerControl(form)) {
        container->FormLoad.raise();
    }
}

Qt::WindowStates qtState(controls::FormWindowState state) {
    switch (state) {
    case controls::windowMinimized:
        return Qt::WindowMinimized;
    case controls::windowMaximized:
        return Qt::WindowMaximized;
    default:
        return Qt::WindowNoState;
    }
}

} // namespace

FormWindow::FormWindow(std::shared_ptr<controls::Form> form) : form_(std::move(form)) {
    setAttribute(Qt::WA_DeleteOnClose, false); // leave() decides when the window goes
    setObjectName(toQt(form_->Name()));
    for (QAction* action : systemMenu()->actions()) {
        action->setShortcuts(QList<QKeySequence>()); // the main window has them, wherever the focus is
    }
    changed_ = form_->Changed.subscribe([this] { followForm(); });
    unloaded_ = form_->Unloaded.subscribe([this] { leave(); });
    connect(this, &QMdiSubWindow::windowStateChanged, this, [this](Qt::WindowStates, Qt::WindowStates now) {
        form_->SetWindowState(now & Qt::WindowMinimized   ? controls::windowMinimized
                              : now & Qt::WindowMaximized ? controls::windowMaximized
                                                          : controls::windowNormal);
    });
}

FormWindow::~FormWindow() {
    disconnect(this, &QMdiSubWindow::windowStateChanged, this, nullptr); // the base changes it once more
    delete view_; // before the form whose controls it observes
    changed_.release();
    unloaded_.release();
    form_.reset();
    if (onGone) {
        onGone();
    }
}

void FormWindow::showIn(QMdiArea& area) {
    number_ = freeNumber(area);
    area.addSubWindow(this); // from here on the area owns the window, whatever the form does
    load(*form_);
    if (!form_->IsLoaded()) {
        return;
    }
    view_ = new qt::FormView(*form_, this);
    setWidget(view_);
    connect(&area, &QMdiArea::subWindowActivated, this, [this](QMdiSubWindow* window) {
        if (window == this) {
            activate();
        } else if (window) {
            active_ = false;
        }
    });
    setWindowTitle(title());
    place();
    const auto state = form_->WindowState();
    show();
    if (state != controls::windowNormal) {
        setWindowState(qtState(state));
    }
    repaint(); // its frame at least: the form may ask something while it starts
    activate();
}

int FormWindow::freeNumber(const QMdiArea& area) const {
    int number = 1;
    const auto others = area.findChildren<const FormWindow*>(objectName());
    while (std::any_of(others.begin(), others.end(), [number](const FormWindow* other) {
        return other->number_ == number && !other->isHidden();
    })) {
        ++number;
    }
    return number;
}

QString FormWindow::title() const {
    const QString caption = toQt(form_->Caption());
    return number_ == 1 ? caption : QStringLiteral("%1 (%2)").arg(caption).arg(number_);
}

void FormWindow::place() {
    const QSize room = mdiArea()->viewport()->size();
    resize(sizeHint().expandedTo(minimumSizeHint()).boundedTo(room));
    if (const controls::MdiContainer* container = containerControl(*form_)) {
        const auto& placement = container->GetPlacement();
        if (placement.top > 0 || placement.left > 0) {
            move(placement.left / qt::twipsPerPixel, placement.top / qt::twipsPerPixel);
            return;
        }
    }
    move(nextFreePlace(room));
}

/// Each window a title bar further down and to the right than the one before, as long as it fits in `room`.
QPoint FormWindow::nextFreePlace(const QSize& room) const {
    const int step = style()->pixelMetric(QStyle::PM_TitleBarHeight, nullptr, this);
    int others = 0;
    for (const QMdiSubWindow* other : mdiArea()->subWindowList()) {
        others += other != this && other->isVisible() ? 1 : 0;
    }
    const QPoint place(others * step, others * step);
    const QSize left = room - size();
    return {std::clamp(place.x(), 0, std::max(left.width(), 0)),
            std::clamp(place.y(), 0, std::max(left.height(), 0))};
}

void FormWindow::activate() {
    if (!active_ && form_->IsLoaded()) {
        active_ = true;
        form_->Activate();
    }
}

void FormWindow::followForm() {
    setWindowTitle(title());
    const Qt::WindowStates wanted = qtState(form_->WindowState());
    const Qt::WindowStates shown = windowState() & (Qt::WindowMinimized | Qt::WindowMaximized);
    if (isVisible() && wanted != shown) {
        setWindowState(wanted);
    }
}

void FormWindow::closeEvent(QCloseEvent* event) {
    if (form_->Unload()) {
        event->accept();
    } else {
        event->ignore();
    }
}

void FormWindow::leave() {
    // The form raises this from inside its own call: window and form go once that has returned.
    hide();
    deleteLater();
}

FormDialog::FormDialog(std::shared_ptr<controls::Form> form, QWidget* parent)
    : QDialog(parent), form_(std::move(form)) {
    setObjectName(toQt(form_->Name()));
    changed_ = form_->Changed.subscribe([this] { setWindowTitle(toQt(form_->Caption())); });
}

FormDialog::~FormDialog() {
    delete view_; // before the form whose controls it observes
}

void FormDialog::showUntilUnloaded() {
    QEventLoop loop;
    unloaded_ = form_->Unloaded.subscribe([&] {
        hide();
        loop.quit();
    });
    load(*form_);
    if (!form_->IsLoaded()) {
        return;
    }
    view_ = new qt::FormView(*form_, this);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0); // the view has its own
    layout->addWidget(view_);
    setWindowTitle(toQt(form_->Caption()));
    setModal(true);
    show();
    form_->Activate();
    if (form_->IsLoaded()) {
        loop.exec();
    }
    unloaded_.release();
}

void FormDialog::reject() {
    form_->Unload();
}

} // namespace veldran::shell
