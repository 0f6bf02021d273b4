#include "shell/script_runtime.h"

#include "adapters/qt/text.h"
#include "platform/controls/form.h"
#include "platform/services/message_service.h"
#include "shell/message_box.h"

#include <QLocale>
#include <QRegularExpression>

namespace veldran::shell {

using qt::toQt;

namespace {

/// The engine's own sentences, which are English, as far as a script's author meets them often.
QString italian(const QString& kind, const QString& message) {
    static const QRegularExpression undefined(QStringLiteral("^(.+) is not defined$"));
    static const QRegularExpression noFunction(
        QStringLiteral("^Property '(.+)' of object .* is not a function$"));
    static const QRegularExpression unexpected(QStringLiteral("^Unexpected token `(.+)'$"));
    static const QRegularExpression expected(QStringLiteral("^Expected token `(.+)'$"));
    static const QRegularExpression readOnly(
        QStringLiteral("^Cannot assign to read-only property \"(.+)\"$"));
    if (const auto match = undefined.match(message); match.hasMatch()) {
        return QStringLiteral("il nome «%1» non esiste").arg(match.captured(1));
    }
    if (const auto match = noFunction.match(message); match.hasMatch()) {
        return QStringLiteral("«%1» non è una funzione").arg(match.captured(1));
    }
    if (const auto match = unexpected.match(message); match.hasMatch()) {
        return QStringLiteral("errore di sintassi, «%1» non era atteso").arg(match.captured(1));
    }
    if (const auto match = expected.match(message); match.hasMatch()) {
        return QStringLiteral("errore di sintassi, manca «%1»").arg(match.captured(1));
    }
    if (const auto match = readOnly.match(message); match.hasMatch()) {
        return QStringLiteral("la proprietà «%1» si può solo leggere").arg(match.captured(1));
    }
    if (message == u"Type error") { // all that the engine says of a property that the control does not have
        return QStringLiteral("il controllo non ha questa proprietà");
    }
    return kind == u"SyntaxError" ? QStringLiteral("errore di sintassi (%1)").arg(message) : message;
}

} // namespace

int ScriptFunctions::ask(const QString& text, const QString& title, int style) {
    if (watchdog_) {
        watchdog_->pause();
    }
    const auto answer = showBox({title, text, {}, {}}, style);
    if (watchdog_) {
        watchdog_->resume();
    }
    return answer;
}

void ScriptFunctions::message(const QString& text, const QString& title) {
    ask(text, title, services::styleOkOnly | services::styleInformation);
}

bool ScriptFunctions::confirm(const QString& text, const QString& title) {
    return ask(text, title, services::styleYesNo | services::styleExclamation) == services::answerYes;
}

ScriptRuntime::ScriptRuntime(std::filesystem::path file, controls::Form& form, ProblemReporter report,
                             std::chrono::milliseconds timeLimit)
    : file_(std::move(file)), report_(std::move(report)), timeLimit_(timeLimit), form_(form) {
    QJSEngine::setObjectOwnership(&functions_, QJSEngine::CppOwnership);
    const QJSValue functions = engine_.newQObject(&functions_);
    for (const char* name : {"message", "confirm"}) {
        engine_.globalObject().setProperty(QLatin1String(name), functions.property(QLatin1String(name)));
    }
    add(QStringLiteral("form"), form);
    addControls(form);
}

void ScriptRuntime::add(const QString& name, controls::Control& control) {
    const QJSValue wrapper = engine_.newQObject(new ScriptControl(form_, control, &functions_));
    // Else a script that misspells a property would make a new one and never know.
    engine_.globalObject()
        .property(QStringLiteral("Object"))
        .property(QStringLiteral("preventExtensions"))
        .call({wrapper});
    engine_.globalObject().setProperty(name, wrapper);
}

void ScriptRuntime::addControls(controls::Container& container) {
    for (controls::Control* control : container.Controls()) {
        add(toQt(control->Name()), *control);
        if (auto* inner = dynamic_cast<controls::Container*>(control)) {
            addControls(*inner);
        }
    }
}

std::string ScriptRuntime::run(const std::function<QJSValue()>& body, QJSValue& result,
                               const std::string& where) {
    ScriptWatchdog watchdog(engine_, timeLimit_);
    functions_.setWatchdog(&watchdog);
    result = body();
    functions_.setWatchdog(nullptr);
    if (watchdog.hasInterrupted()) {
        const auto seconds = std::chrono::duration<double>(timeLimit_).count();
        return "Script «" + file_.string() + "»" + where + ": non è terminato entro " +
               QLocale().toString(seconds, 'g', 3).toStdString() + " secondi ed è stato interrotto.";
    }
    return result.isError() ? describe(result, where) : std::string();
}

std::string ScriptRuntime::describe(const QJSValue& error, const std::string& where) const {
    const int line = error.property(QStringLiteral("lineNumber")).toInt();
    const QString message = italian(error.property(QStringLiteral("name")).toString(),
                                    error.property(QStringLiteral("message")).toString());
    return "Script «" + file_.string() + "»" + where +
           (line > 0 ? ", riga " + std::to_string(line) : std::string()) + ": " + message.toStdString() + ".";
}

std::string ScriptRuntime::load() {
    // Strict: a misspelt property or an undeclared name must not pass in silence. On the first line, so that
    // the script's own lines keep their numbers.
    const std::string text = "'use strict'; " + readTextFile(file_);
    QJSValue result;
    return run([&] { return engine_.evaluate(toQt(text), toQt(file_.string()), 1); }, result, {});
}

bool ScriptRuntime::ExecuteFormEvent(const std::string& name) {
    const QJSValue handler = engine_.globalObject().property(toQt(name));
    if (!handler.isCallable()) {
        return false;
    }
    QJSValue answer;
    const std::string failure = run([&] { return handler.call(); }, answer, ", evento " + name);
    if (!failure.empty()) {
        report_(failure);
        return false;
    }
    return answer.isBool() && answer.toBool(); // a value thrown or returned by chance refuses nothing
}

} // namespace veldran::shell
