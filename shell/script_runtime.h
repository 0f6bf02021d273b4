#pragma once

#include "platform/services/script.h"
#include "shell/data_file.h"
#include "shell/script_control.h"
#include "shell/script_watchdog.h"

#include <QJSEngine>
#include <QObject>
#include <chrono>
#include <filesystem>
#include <functional>
#include <string>

namespace veldran::controls {
class Container;
}

namespace veldran::shell {

/// The functions that a script calls by their bare names.
class ScriptFunctions final : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    Q_INVOKABLE void message(const QString& text, const QString& title = QStringLiteral("Messaggio"));
    Q_INVOKABLE bool confirm(const QString& text, const QString& title = QStringLiteral("Attenzione"));

    /// The watchdog of the running script, which waits while the user reads.
    void setWatchdog(ScriptWatchdog* watchdog) { watchdog_ = watchdog; }

private:
    int ask(const QString& text, const QString& title, int style);
    ScriptWatchdog* watchdog_ = nullptr;
};

/// One loaded script and the form it addresses.
class ScriptRuntime final : public services::ScriptObject {
public:
    ScriptRuntime(std::filesystem::path file, controls::Form& form, ProblemReporter report,
                  std::chrono::milliseconds timeLimit);

    /// Runs the script's top level. \return what went wrong, in Italian; empty when all is well.
    std::string load();
    bool ExecuteFormEvent(const std::string& name) override;

private:
    void add(const QString& name, controls::Control& control);
    void addControls(controls::Container& container);
    /// Runs `body` under the time limit and describes its failure; empty when it succeeded.
    std::string run(const std::function<QJSValue()>& body, QJSValue& result, const std::string& where);
    std::string describe(const QJSValue& error, const std::string& where) const;

    std::filesystem::path file_;
    ProblemReporter report_;
    std::chrono::milliseconds timeLimit_;
    ScriptedForm form_;
    QJSEngine engine_;
    ScriptFunctions functions_; // after the engine, which keeps wrappers of it
};

} // namespace veldran::shell
