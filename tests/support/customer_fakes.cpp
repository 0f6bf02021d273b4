#include "tests/support/customer_fakes.h"

#include "tests/support/host_fakes.h"

namespace veldran::test {

void LayoutRecorder::ApplyLayout(controls::Form& form) {
    ++applied;
    journal_->push_back("layout");
    if (layout) {
        layout(form);
    }
}

bool ScriptRecorder::ExecuteFormEvent(const std::string& name) {
    events.push_back(name);
    journal_->push_back("script " + name);
    failWith(failure);
    return vetoClose && name == "tsClose";
}

std::shared_ptr<services::ScriptObject> ScriptEngineRecorder::BuildScript(controls::Form& form) {
    builtFor.push_back(&form);
    journal_->push_back("build script");
    failWith(failure);
    if (broken) {
        return nullptr;
    }
    script = std::make_shared<ScriptRecorder>(journal_);
    script->vetoClose = vetoClose;
    return script;
}

} // namespace veldran::test
