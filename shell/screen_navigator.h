#pragma once

#include "platform/services/navigator.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>

namespace veldran::shell {

/// The navigator of one open screen. The toolbar shows that of the active one, so that each screen keeps its
/// own status and its own script.
class ScreenNavigator final : public services::Navigator {
public:
    void SetStatus(std::int16_t status) override;
    std::shared_ptr<services::ScriptObject> Script() const override { return script_; }
    void SetScript(std::shared_ptr<services::ScriptObject> script) override { script_ = std::move(script); }
    void ScreenClosing() override {}
    Value GetProperty(std::string_view name) const override;

    /// None while the screen has no editing frame.
    std::optional<std::int16_t> status() const { return status_; }
    /// The host's questions to the screen. \return true when the screen refuses.
    bool refusesChangeOfCompany();
    bool refusesExport(const std::string& target);
    bool refusesButton(int index);

    std::function<void()> onStatusChanged;

private:
    std::optional<std::int16_t> status_;
    std::shared_ptr<services::ScriptObject> script_; // shared with the form
};

} // namespace veldran::shell
