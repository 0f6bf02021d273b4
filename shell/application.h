#pragma once

#include <QApplication>
#include <QTranslator>
#include <functional>
#include <string>

namespace veldran::shell {

/// The running host: Italian throughout, and no failure of a screen ends the program.
class Application final : public QApplication {
public:
    Application(int& argc, char** argv);

    /// An error that nobody handled is told to the user; the event that caused it ends there.
    bool notify(QObject* receiver, QEvent* event) override;

    /// How unexpected errors are told; a message box unless replaced.
    std::function<void(const std::string& what)> onUnexpected;

private:
    QTranslator translator_;
};

} // namespace veldran::shell
