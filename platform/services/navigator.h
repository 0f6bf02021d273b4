#pragma once

#include "platform/event.h"
#include "platform/services/object.h"
#include "platform/services/script.h"

#include <cstdint>
#include <memory>

namespace veldran::services {

/// The host's navigation toolbar, as a screen sees it.
class Navigator : public Object {
public:
    /// Status of the active editing frame (0 browsing, 2 adding new, ...), shown by enabling the buttons.
    virtual void SetStatus(std::int16_t status) = 0;
    /// The script object of the screen being shown; empty when it has none.
    virtual std::shared_ptr<ScriptObject> Script() const = 0;
    virtual void SetScript(std::shared_ptr<ScriptObject> script) = 0;
    /// The screen that uses the navigator is closing.
    virtual void ScreenClosing() = 0;

    // Events, in the order of the contract. `cancel` refuses the host's own action. Arguments are untyped, as
    // the host passes them: a cancel may be empty, a button index a text.
    mutable Event<Value&> BeforeChangeDitta;
    mutable Event<Value&, const Value&> BeforeExportToOffice; ///< cancel, target application
    mutable Event<Value&, const Value&> ButtonPressed;        ///< cancel, button index
    mutable Event<ObjectModel&> InitializeLayoutObjectModel;
    mutable Event<ObjectModel&> InitializeScriptObjectModel;
};

} // namespace veldran::services
