#pragma once

#include <memory>
#include <string>

namespace veldran::controls {
class Form;
}

namespace veldran::services {

/// The customer script of one form.
class ScriptObject {
public:
    virtual ~ScriptObject() = default;
    /// Raises a form event ("tsOpen", "tsClose") in the script.
    /// \return the script's own cancel answer; false when the script has no handler.
    virtual bool ExecuteFormEvent(const std::string& name) = 0;
};

/// Builds script objects; a broken script is told to the user by the engine and yields an empty pointer.
class ScriptEngine {
public:
    virtual ~ScriptEngine() = default;
    virtual std::shared_ptr<ScriptObject>
    BuildScript(controls::Form& form) = 0; // shared: navigator and form hold it
};

/// Applies the customer's layout file to a form; a broken file is told to the user by the engine.
class LayoutEngine {
public:
    virtual ~LayoutEngine() = default;
    virtual void ApplyLayout(controls::Form& form) = 0;
};

/// Carries the running form to the host's engines: the object that customer layouts and scripts address.
struct ObjectModel {
    std::shared_ptr<controls::Form> form; // shared: the engines may outlive the component's own reference
};

} // namespace veldran::services
