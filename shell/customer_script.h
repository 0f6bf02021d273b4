#pragma once

#include "platform/services/navigator.h"
#include "platform/services/script.h"
#include "shell/data_file.h"

#include <chrono>
#include <filesystem>
#include <string>

namespace veldran::shell {

/// Runs the customer's JavaScript file for a form.
///
/// The script sees every control of the form under its name (see ScriptControl), `form`, and the functions
/// `message(text, title)` and `confirm(text, title)`. Functions named "tsOpen" and "tsClose" answer the
/// form's events; "tsClose" returning true keeps the form open. A script that fails or does not end in time
/// is told to the user with file and line, and never keeps a form open.
class CustomerScript final : public services::ScriptEngine {
public:
    static constexpr std::chrono::milliseconds defaultTimeLimit{5000};

    /// \param file empty: the customer has no script
    /// \param navigator of the screen; asked for the form that scripts address
    CustomerScript(std::filesystem::path file, services::Navigator& navigator, ProblemReporter report,
                   std::chrono::milliseconds timeLimit = defaultTimeLimit)
        : file_(std::move(file)), navigator_(navigator), report_(std::move(report)), timeLimit_(timeLimit) {}

    std::shared_ptr<services::ScriptObject> BuildScript(controls::Form& form) override;

private:
    std::filesystem::path file_;
    services::Navigator& navigator_;
    ProblemReporter report_;
    std::chrono::milliseconds timeLimit_;
    std::string reported_; ///< a form that closes builds again: the same fault is told once
};

} // namespace veldran::shell
