#pragma once

#include "platform/ado/connection.h"
#include "shell/data_file.h"
#include "shell/places.h"

#include <QTemporaryDir>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class QWidget;

namespace veldran::test {

/// A folder that goes away with the test.
class ScratchFolder {
public:
    ScratchFolder();
    std::filesystem::path path() const { return folder_.path().toStdString(); }
    std::filesystem::path write(const std::string& name, const std::string& content) const;

private:
    QTemporaryDir folder_;
};

/// What the host would have told the user.
class Complaints {
public:
    shell::ProblemReporter reporter() {
        return [this](const std::string& text) { told_.push_back(text); };
    }
    const std::vector<std::string>& told() const { return told_; }
    /// All that was told; empty when nothing was.
    std::string text() const { return shell::joinProblems(told_); }

private:
    std::vector<std::string> told_;
};

/// The files of the host under test, with a user's folder of the test's own.
shell::Places placesFor(const ScratchFolder& user);

/// A fresh copy of the demo database, made once for the whole run. \return the copy's path in `folder`
std::filesystem::path demoDatabase(const ScratchFolder& folder);
std::shared_ptr<ado::Connection> openDatabase(const std::filesystem::path& file);

/// Runs `inside` on the next modal window, once it is shown; the window is closed should `inside` leave it
/// open. \return whether a modal window appeared while `action` ran
bool withModal(const std::function<void()>& action, const std::function<void(QWidget& modal)>& inside);

} // namespace veldran::test
