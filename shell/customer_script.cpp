#include "shell/customer_script.h"

#include "shell/script_runtime.h"

namespace veldran::shell {

std::shared_ptr<services::ScriptObject> CustomerScript::BuildScript(controls::Form& form) {
    if (file_.empty()) {
        return nullptr;
    }
    services::ObjectModel model;
    navigator_.InitializeScriptObjectModel.raise(model);
    std::string failure;
    try {
        auto script =
            std::make_shared<ScriptRuntime>(file_, model.form ? *model.form : form, report_, timeLimit_);
        failure = script->load();
        if (failure.empty()) {
            reported_.clear();
            return script;
        }
    } catch (const DataFileError& error) {
        failure = error.what();
    }
    if (failure != reported_) {
        reported_ = failure;
        report_("Lo script del cliente non può essere usato.\n\n" + failure);
    }
    return nullptr;
}

} // namespace veldran::shell
