#pragma once

#include "shell/main_window.h"
#include "tests/shell/shell_fixture.h"

#include <gtest/gtest.h>

#include <QTest>

namespace veldran::test {

/// The whole host on a copy of the demo database, with the real component.
class HostWindowTest : public testing::Test {
protected:
    void SetUp() override { start(R"("ditta": "1")"); }

    void start(const std::string& companyFile) {
        open(folder_.write(
            "azienda.json",
            R"({"connessione": "Provider=VeldranEmbedded;Data Source=\"${UTENTE}/demo.vdb\"", )" +
                companyFile + "}"));
    }
    void open(const std::filesystem::path& companyFile) {
        window_.reset();
        if (!std::filesystem::exists(folder_.path() / "demo.vdb")) {
            demoDatabase(folder_);
        }
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

} // namespace veldran::test
