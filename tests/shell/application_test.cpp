#include "shell/application.h"
#include "shell/lock_keys.h"
#include "shell/toolbar_icons.h"

#include <gtest/gtest.h>

#include <QEvent>
#include <QLocale>
#include <QTest>
#include <QWidget>
#include <stdexcept>

namespace veldran::test {
namespace {

shell::Application& running() {
    return dynamic_cast<shell::Application&>(*QCoreApplication::instance());
}

TEST(Application, SpeaksItalian) {
    EXPECT_EQ(QLocale().toString(1234.5, 'f', 2), "1.234,50");
    EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), "Annulla");
}

TEST(Application, SurvivesAnErrorThatNobodyHandled) {
    struct Failing : QObject {
        bool event(QEvent*) override { throw std::runtime_error("caduta"); }
    } failing;
    std::string told;
    const auto before = std::exchange(running().onUnexpected, [&](const std::string& what) { told = what; });
    QCoreApplication::postEvent(&failing, new QEvent(QEvent::User));
    QCoreApplication::processEvents();
    running().onUnexpected = before;
    EXPECT_EQ(told, "caduta");
}

TEST(LockKeys, LearnsTheLocksFromTheKeysThatArrive) {
    QWidget window;
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    shell::LockKeys locks(&window);
    int changes = 0;
    locks.onChanged = [&] { ++changes; };
    QWindow* handle = window.windowHandle();
    QTest::sendKeyEvent(QTest::Click, handle, Qt::Key_A, QString("A"), Qt::NoModifier);
    EXPECT_TRUE(locks.capitals());
    QTest::sendKeyEvent(QTest::Click, handle, Qt::Key_A, QString("a"), Qt::ShiftModifier);
    EXPECT_TRUE(locks.capitals()) << "shift turns capitals round";
    QTest::sendKeyEvent(QTest::Click, handle, Qt::Key_A, QString("a"), Qt::NoModifier);
    EXPECT_FALSE(locks.capitals());
    QTest::sendKeyEvent(QTest::Click, handle, Qt::Key_Home, QString(), Qt::KeypadModifier);
    EXPECT_FALSE(locks.numbers());
    QTest::sendKeyEvent(QTest::Click, handle, Qt::Key_7, QString("7"), Qt::KeypadModifier);
    EXPECT_TRUE(locks.numbers());
    QTest::keyClick(handle, Qt::Key_CapsLock);
    EXPECT_TRUE(locks.capitals());
    EXPECT_EQ(changes, 5);
}

TEST(ToolbarIcons, AreDrawnSharpAtEachSizeAndPalerWhenDisabled) {
    for (int i = 0; i <= static_cast<int>(shell::ToolbarIcon::Application); ++i) {
        const QIcon icon = shell::toolbarIcon(static_cast<shell::ToolbarIcon>(i));
        const auto ink = [&](QIcon::Mode mode, int size) {
            const QImage image = icon.pixmap(QSize(size, size), mode).toImage();
            EXPECT_EQ(image.width(), size);
            int strongest = 0;
            for (int y = 0; y < image.height(); ++y) {
                for (int x = 0; x < image.width(); ++x) {
                    strongest = std::max(strongest, image.pixelColor(x, y).alpha());
                }
            }
            return strongest;
        };
        EXPECT_GT(ink(QIcon::Normal, 16), 200) << i;
        EXPECT_GT(ink(QIcon::Normal, 32), 200) << i;
        EXPECT_LT(ink(QIcon::Disabled, 32), 150) << i;
    }
}

} // namespace
} // namespace veldran::test
