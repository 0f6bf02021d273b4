#include "shell/tour/stage.h"

#include "adapters/qt/text.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QWindow>
#include <algorithm>
#include <fstream>
#include <iostream>
#include <utility>

namespace veldran::shell {
namespace {

constexpr int patience = 20000; ///< milliseconds that a step may take to show its result
constexpr int pollInterval = 20;
constexpr int leastTitle = 26; ///< height in pixels

QWindow* windowOf(const QWidget& widget) {
    return widget.window()->windowHandle();
}

/// A dialog's window frame, which only a window manager would draw.
void drawTitle(QPainter& painter, const QWidget& dialog, const QRect& area) {
    const int titleHeight = std::max(leastTitle, dialog.fontMetrics().height() + 8);
    const QRect title(area.left(), area.top() - titleHeight, area.width(), titleHeight);
    painter.fillRect(title, dialog.palette().color(QPalette::Highlight));
    painter.setPen(dialog.palette().color(QPalette::HighlightedText));
    painter.drawText(title.adjusted(8, 0, -8, 0), Qt::AlignVCenter | Qt::AlignLeft, dialog.windowTitle());
    painter.setPen(dialog.palette().color(QPalette::Shadow));
    painter.drawRect(title.united(area).adjusted(0, 0, -1, -1));
}

} // namespace

Stage::Stage(QWidget& window, std::filesystem::path pictures)
    : window_(window), folder_(std::move(pictures)) {
    std::filesystem::create_directories(folder_);
}

void Stage::require(bool holds, const std::string& what) const {
    if (!holds) {
        throw TourFailure(what);
    }
}

void Stage::waitUntil(const std::function<bool()>& holds, const std::string& what) const {
    const auto settled = [&] { return holds() || (hopeless && hopeless()); };
    require(QTest::qWaitFor(settled, patience) && holds(), what);
}

void Stage::activate() const {
    QWidget* modal = QApplication::activeModalWidget();
    QWidget& inFront = modal ? *modal : window_;
    inFront.activateWindow();
    waitUntil([&] { return inFront.isActiveWindow(); }, "la finestra non diventa quella attiva");
}

void Stage::settle() const {
    QTest::qWait(2 * pollInterval);
}

QPoint Stage::centre(const QWidget& widget) {
    return widget.rect().center();
}

QWidget* Stage::findVisible(const QString& objectName) const {
    QWidget* modal = QApplication::activeModalWidget();
    for (QWidget* candidate : (modal ? modal : &window_)->findChildren<QWidget*>(objectName)) {
        if (candidate->isVisible()) {
            return candidate;
        }
    }
    return nullptr;
}

void Stage::click(QWidget& widget, QPoint at, Qt::MouseButton button) {
    const QPoint inWindow = widget.mapTo(widget.window(), at);
    QTest::mouseMove(windowOf(widget), inWindow);
    QTest::mouseClick(windowOf(widget), button, Qt::NoModifier, inWindow);
    settle();
}

QMenu& Stage::openMenu(const QString& objectName) {
    auto* menu = window_.findChild<QMenu*>(objectName);
    auto* bar = window_.findChild<QMenuBar*>();
    require(menu && bar, "manca il menu " + objectName.toStdString());
    click(*bar, bar->actionGeometry(menu->menuAction()).center());
    waitUntil([&] { return menu->isVisible(); }, "il menu " + objectName.toStdString() + " non si apre");
    return *menu;
}

QMenu* Stage::clickEntry(QMenu& menu, const QString& actionName) {
    for (QAction* action : menu.actions()) {
        QMenu* below = action->menu();
        if (action->objectName() == actionName || (below && below->objectName() == actionName)) {
            click(menu, menu.actionGeometry(action).center());
            if (below) {
                waitUntil([&] { return below->isVisible(); },
                          "il menu " + actionName.toStdString() + " non si apre");
            }
            return below;
        }
    }
    throw TourFailure("il menu non ha la voce " + actionName.toStdString());
}

void Stage::clickToolButton(const QString& actionName) {
    for (auto* bar : window_.findChildren<QToolBar*>()) {
        for (QAction* action : bar->actions()) {
            if (action->objectName() == actionName) {
                require(action->isEnabled(), "il pulsante " + actionName.toStdString() + " è spento");
                click(*bar->widgetForAction(action));
                return;
            }
        }
    }
    throw TourFailure("la barra non ha il pulsante " + actionName.toStdString());
}

void Stage::press(Qt::Key key, Qt::KeyboardModifiers modifiers) {
    QWidget* receiver = QApplication::activePopupWidget();
    receiver = receiver ? receiver : QApplication::activeModalWidget();
    QTest::keyClick(windowOf(receiver ? *receiver : window_), key, modifiers);
    settle();
}

void Stage::type(const QString& text) {
    for (const QChar c : text) {
        QWidget* modal = QApplication::activeModalWidget();
        QTest::sendKeyEvent(QTest::Click, windowOf(modal ? *modal : window_), Qt::Key_unknown, c,
                            c.isUpper() ? Qt::ShiftModifier : Qt::NoModifier);
    }
    settle();
}

void Stage::pauseTyping() const {
    QTest::qWait(QApplication::keyboardInputInterval() + 2 * pollInterval);
}

void Stage::withDialog(const std::function<void()>& action,
                       const std::function<void(QWidget& dialog)>& inside) {
    std::string failure;
    bool shown = false;
    QWidget* const below = QApplication::activeModalWidget(); // the dialog that opens another one
    QTimer watch;
    watch.setInterval(pollInterval);
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        QWidget* dialog = QApplication::activeModalWidget();
        if (!dialog || dialog == below || !dialog->isVisible()) {
            return;
        }
        watch.stop();
        shown = true;
        settle();
        try {
            inside(*dialog);
        } catch (const TourFailure& error) {
            failure = error.what(); // may not travel through the dialog's own event loop
        }
        QWidget* still = QApplication::activeModalWidget();
        if (still && still != below) {
            if (failure.empty()) {
                failure = "la finestra «" + still->windowTitle().toStdString() + "» è rimasta aperta";
            }
            still->close();
            if (auto* dialogStill = qobject_cast<QDialog*>(still)) {
                dialogStill->done(QDialog::Rejected);
            }
        }
    });
    watch.start();
    action();
    waitUntil([&] { return shown; }, "non si è aperta nessuna finestra di dialogo");
    require(failure.empty(), failure);
    activate();
    settle();
}

void Stage::expectMessage(const std::function<void()>& action, const Message& message, const Shot& shot,
                          Qt::Key answer, Qt::KeyboardModifiers modifiers) {
    withDialog(action, [&](QWidget& dialog) {
        auto* box = qobject_cast<QMessageBox*>(&dialog);
        require(box != nullptr, "non compare il messaggio «" + message.text + "»");
        require(box->text() == qt::toQt(message.text),
                "il messaggio è «" + qt::fromQt(box->text()) + "» invece di «" + message.text + "»");
        require(box->windowTitle() == qt::toQt(message.title),
                "il titolo del messaggio non è «" + message.title + "»");
        picture(shot.name, shot.caption);
        press(answer, modifiers);
        const QPointer<QWidget> shown(&dialog);
        waitUntil([&] { return !shown || !shown->isVisible(); }, "il messaggio non si chiude");
    });
}

std::string Stage::focused() {
    const QWidget* widget = QApplication::focusWidget();
    while (widget != nullptr &&
           (widget->objectName().isEmpty() || widget->objectName().startsWith(QLatin1String("qt_")))) {
        widget = widget->parentWidget();
    }
    return widget == nullptr ? std::string() : qt::fromQt(widget->objectName());
}

void Stage::expectFocus(const std::string& objectName) const {
    const bool arrived = QTest::qWaitFor([&] { return focused() == objectName; }, patience);
    require(arrived, "il fuoco è su «" + focused() + "» invece che su «" + objectName + "»");
}

QPixmap Stage::scene() const {
    QPixmap picture = window_.grab();
    QPainter painter(&picture);
    const QPoint origin = window_.mapToGlobal(QPoint());
    QWidgetList tops = QApplication::topLevelWidgets();
    const auto height = [](const QWidget* top) { // a box lies over the dialog that asked, and menus over all
        return top->windowType() == Qt::Popup ? 2 : top == QApplication::activeModalWidget() ? 1 : 0;
    };
    std::stable_sort(tops.begin(), tops.end(), [&height](const QWidget* one, const QWidget* other) {
        return height(one) < height(other);
    });
    for (QWidget* top : tops) {
        if (top == &window_ || !top->isVisible() || top->isMinimized()) {
            continue;
        }
        const QRect area(top->mapToGlobal(QPoint()) - origin, top->size());
        painter.drawPixmap(area.topLeft(), top->grab());
        if (qobject_cast<QDialog*>(top)) {
            drawTitle(painter, *top, area);
        }
    }
    return picture;
}

void Stage::picture(const std::string& name, const std::string& caption) {
    settle();
    ++pictures_;
    const std::string number = (pictures_ < 10 ? "0" : "") + std::to_string(pictures_);
    const std::filesystem::path file = folder_ / (number + "-" + name + ".png");
    require(scene().save(QString::fromStdString(file.string()), "PNG"),
            "l'immagine «" + file.string() + "» non può essere scritta");
    std::ofstream(std::filesystem::path(file).replace_extension(".txt")) << caption << '\n';
    std::cout << number << "  " << caption << std::endl;
}

} // namespace veldran::shell
