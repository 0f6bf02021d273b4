#pragma once

#include "adapters/qt/text.h"
#include "shell/main_window.h"
#include "tests/shell/shell_fixture.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QTest>

namespace veldran::test {

/// The whole host on a copy of the demo database, with the real component.
class HostWindowTest : public testing::Test {
protected:
    void SetUp() override { start(R"("ditta": "1")"); }

    void start(const std::string& companyFile) {
        if (!std::filesystem::exists(folder_.path() / "demo.vdb")) {
            demoDatabase(folder_);
        }
        open(folder_.write(
            "azienda.json",
            R"({"connessione": "Provider=VeldranEmbedded;Data Source=\"${UTENTE}/demo.vdb\"", )" +
                companyFile + "}"));
    }
    void open(const std::filesystem::path& companyFile) {
        window_.reset();
        host_ = std::make_unique<shell::Host>(placesFor(folder_), complaints_.reporter());
        host_->open(companyFile);
        window_ = std::make_unique<shell::MainWindow>(*host_, component_);
        window_->show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(window_.get()));
    }
    void openScreen() { window_->openScreen(shell::MainWindow::accountsEntry()); }

    ScratchFolder folder_;
    Complaints complaints_;
    std::filesystem::path component_ =
        shell::Places::ofThisProgram().program / shell::ComponentLibrary::fileName();
    std::unique_ptr<shell::Host> host_;
    std::unique_ptr<shell::MainWindow> window_;
};

/// The same for a user with keyboard and mouse, with the screen open; nothing may be complained of.
class ScreenKeysTest : public HostWindowTest {
protected:
    void SetUp() override {
        HostWindowTest::SetUp();
        openScreen();
        activate();
    }
    void TearDown() override {
        EXPECT_EQ(complaints_.text(), "");
        window_.reset(); // without asking about what a failed test has left unsaved
    }
    /// As a window manager does where there is one.
    void activate() {
        window_->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(window_.get()));
    }
    template<class T>
    T* part(const char* name) {
        return window_->findChild<T*>(QString::fromUtf8(name));
    }
    static void key(Qt::Key code, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), code, modifiers);
    }
    static void back() { key(Qt::Key_Backtab, Qt::ShiftModifier); }
    static void type(const std::string& text) {
        QTest::keyClicks(QApplication::focusWidget(), qt::toQt(text));
    }
    /// The control that has the focus; of a navigator, its button.
    static std::string focused() {
        const QWidget* widget = QApplication::focusWidget();
        while (widget != nullptr &&
               (widget->objectName().isEmpty() || widget->objectName().startsWith("qt_"))) {
            widget = widget->parentWidget();
        }
        return widget == nullptr ? "" : qt::fromQt(widget->objectName());
    }
    /// Searches an account by its code; the tree then has the focus.
    void find(const std::string& account) {
        auto* search = part<QWidget>("TXT_CONTORICERCA")->findChild<QLineEdit*>();
        search->setFocus();
        search->selectAll();
        type(account);
        key(Qt::Key_Return);
        part<QWidget>("TRW_CONTI")->setFocus();
    }
};

} // namespace veldran::test
