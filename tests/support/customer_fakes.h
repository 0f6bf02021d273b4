#pragma once

#include "platform/controls/form.h"
#include "platform/services/script.h"
#include "tests/support/journal.h"

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// What a customer adds to a screen, layout and script, recorded.
namespace veldran::test {

class LayoutRecorder final : public services::LayoutEngine {
public:
    explicit LayoutRecorder(SharedJournal journal) : journal_(std::move(journal)) {}
    void ApplyLayout(controls::Form& form) override;

    int applied = 0;
    std::function<void(controls::Form&)> layout; ///< what the customer's file does; nothing when empty

private:
    SharedJournal journal_;
};

/// A customer script that records its events and vetoes the close when told to.
class ScriptRecorder final : public services::ScriptObject {
public:
    explicit ScriptRecorder(SharedJournal journal) : journal_(std::move(journal)) {}
    bool ExecuteFormEvent(const std::string& name) override;

    std::vector<std::string> events;
    bool vetoClose = false;
    std::string failure; ///< what the script's events fail with; "" for none

private:
    SharedJournal journal_;
};

class ScriptEngineRecorder final : public services::ScriptEngine {
public:
    explicit ScriptEngineRecorder(SharedJournal journal) : journal_(std::move(journal)) {}
    std::shared_ptr<services::ScriptObject> BuildScript(controls::Form& form) override;

    bool broken = false;                         ///< builds nothing, as for a script that does not parse
    std::shared_ptr<ScriptRecorder> script;      // shared with navigator and form
    std::vector<const controls::Form*> builtFor; ///< identity only
    bool vetoClose = false;                      ///< of the scripts built from now on
    std::string failure;                         ///< what building fails with; "" for none

private:
    SharedJournal journal_;
};

} // namespace veldran::test
