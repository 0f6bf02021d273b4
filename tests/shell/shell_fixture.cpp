#include "tests/shell/shell_fixture.h"

#include "shell/application.h"
#include "shell/demo_database.h"
#include "shell/drivers.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDialog>
#include <QTimer>
#include <fstream>

namespace veldran::test {
namespace {

/// The running application that windows and scripts need, for the whole run.
class RunningApplication final : public testing::Environment {
public:
    void SetUp() override { application_ = std::make_unique<shell::Application>(argc_, argv_); }
    void TearDown() override { application_.reset(); }

private:
    int argc_ = 1;
    char name_[12] = "shell_tests";
    char* argv_[2] = {name_, nullptr};
    std::unique_ptr<shell::Application> application_;
};

[[maybe_unused]] const auto* const application = testing::AddGlobalTestEnvironment(new RunningApplication);

} // namespace

ScratchFolder::ScratchFolder() {
    EXPECT_TRUE(folder_.isValid());
}

std::filesystem::path ScratchFolder::write(const std::string& name, const std::string& content) const {
    const std::filesystem::path file = path() / name;
    std::ofstream(file, std::ios::binary) << content;
    return file;
}

shell::Places placesFor(const ScratchFolder& user) {
    shell::Places places = shell::Places::ofThisProgram();
    places.user = user.path();
    return places;
}

std::filesystem::path demoDatabase(const ScratchFolder& folder) {
    static const ScratchFolder workshop;
    static const std::filesystem::path master = [] {
        const std::filesystem::path file = workshop.path() / "demo.vdb";
        shell::createDemoDatabase(file, shell::Places::ofThisProgram().database,
                                  [](const std::string&, double) {});
        return file;
    }();
    const std::filesystem::path copy = folder.path() / "demo.vdb";
    std::filesystem::copy_file(master, copy);
    return copy;
}

std::shared_ptr<ado::Connection> openDatabase(const std::filesystem::path& file) {
    const std::string connectionString = shell::embeddedConnectionString(file);
    auto connection = ado::Connection::create(shell::driverFor(connectionString, "1"));
    connection->Open(connectionString);
    return connection;
}

bool withModal(const std::function<void()>& action, const std::function<void(QWidget& modal)>& inside) {
    bool shown = false;
    QTimer watch;
    watch.setInterval(5);
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        QWidget* modal = QApplication::activeModalWidget();
        if (!modal || !modal->isVisible()) {
            return;
        }
        watch.stop();
        shown = true;
        inside(*modal);
        if (auto* still = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
            ADD_FAILURE() << "the window was left open: " << still->windowTitle().toStdString();
            still->done(QDialog::Rejected);
        }
    });
    watch.start();
    action();
    return shown;
}

} // namespace veldran::test
