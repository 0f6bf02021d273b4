#pragma once

#include "platform/services/navigator.h"
#include "platform/services/script.h"
#include "shell/data_file.h"

#include <filesystem>

namespace veldran::shell {

/// Applies the customer's layout file: captions, visibility, enabled state and tab order of a form's
/// controls, by control name. What the file gets wrong is told to the user, control by control; the rest is
/// applied.
class CustomerLayout final : public services::LayoutEngine {
public:
    /// \param file empty: the customer has no layout
    /// \param navigator of the screen; asked for the form that layouts address
    CustomerLayout(std::filesystem::path file, services::Navigator& navigator, ProblemReporter report)
        : file_(std::move(file)), navigator_(navigator), report_(std::move(report)) {}

    void ApplyLayout(controls::Form& form) override;

private:
    std::filesystem::path file_;
    services::Navigator& navigator_;
    ProblemReporter report_;
};

} // namespace veldran::shell
