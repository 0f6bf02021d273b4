#pragma once

#include "platform/services/global_object.h"
#include "platform/services/navigator.h"
#include "platform/services/object.h"

#include <cstdint>
#include <memory>

namespace veldran {

/// The contract between a host and a screen: 28 members, declared in slot order. An object property is
/// Get/Set, a value property Get/Let. Every Let and Set stores the value unchanged, every Get returns what
/// was stored.
///
/// Object properties are shared pointers because host and component hold the same objects, as COM references
/// do.
class Cinterface : public services::Object {
public:
    using ObjectRef = std::shared_ptr<services::Object>;

    /* 1 */ virtual std::shared_ptr<services::GlobalObject> GetClsGlobal() const = 0;
    virtual void SetClsGlobal(std::shared_ptr<services::GlobalObject> value) = 0;
    /* 2 */ virtual ObjectRef GetActiveFrame() const = 0;
    virtual void SetActiveFrame(ObjectRef value) = 0;
    /* 3 */ virtual std::shared_ptr<services::Navigator> GetActiveNavigator() const = 0;
    /// Subscribes to the navigator's events; an empty reference unsubscribes.
    virtual void SetActiveNavigator(std::shared_ptr<services::Navigator> value) = 0;
    /* 4 */ virtual std::shared_ptr<Cinterface> GetActiveDll() const = 0;
    virtual void SetActiveDll(std::shared_ptr<Cinterface> value) = 0;
    /* 5 */ virtual ObjectRef GetStatusBar() const = 0;
    virtual void SetStatusBar(ObjectRef value) = 0;
    /* 6 */ virtual VariantBool GetCanInsert() const = 0;
    virtual void LetCanInsert(VariantBool value) = 0;
    /* 7 */ virtual VariantBool GetCanDelete() const = 0;
    virtual void LetCanDelete(VariantBool value) = 0;
    /* 8 */ virtual VariantBool GetCanUpdate() const = 0;
    virtual void LetCanUpdate(VariantBool value) = 0;
    /* 9 */ virtual VariantBool GetCanQbe() const = 0;
    virtual void LetCanQbe(VariantBool value) = 0;
    /* 10 */ virtual std::int16_t GetWindowState() const = 0;
    virtual void LetWindowState(std::int16_t value) = 0;
    /* 11 */ virtual VariantBool GetWindowModal() const = 0;
    virtual void LetWindowModal(VariantBool value) = 0;
    /* 12 */ virtual Value GetProgramMode() const = 0;
    virtual void LetProgramMode(const Value& value) = 0;
    /* 13 */ virtual Value GetMenuModulo() const = 0;
    virtual void LetMenuModulo(const Value& value) = 0;
    /* 14 */ virtual Value GetMenuPadre() const = 0;
    virtual void LetMenuPadre(const Value& value) = 0;
    /* 15 */ virtual Value GetMenuProg() const = 0;
    virtual void LetMenuProg(const Value& value) = 0;
    /* 16 */ virtual Value GetCaption() const = 0;
    virtual void LetCaption(const Value& value) = 0;
    /* 17 */ virtual std::intptr_t GethwndParent() const = 0;
    virtual void LethwndParent(std::intptr_t value) = 0;
    /// Creates a new form, gives it the component, applies state and caption, shows it. Returns an empty
    /// value.
    /* 18 */ virtual Value ShowForm() = 0;
    /// Notifies global object and navigator, unloads the form.
    /// \return true when the form has released its component or there is none, false when it stays open.
    /// \throws whatever the notifications throw; the form stays open then.
    /* 19 */ virtual Value CloseForm() = 0;
    /* 20 */ virtual std::shared_ptr<ado::Connection> GetConnection() const = 0;
    virtual void SetConnection(std::shared_ptr<ado::Connection> value) = 0;
    /// Window service call of the contract; this screen has nothing to add to it.
    /* 21 */ virtual void Cwindow() = 0;
    /// Data hand-over call of the contract; this screen takes nothing over.
    /* 22 */ virtual void TransferData() = 0;
    /// Twips. \throws std::invalid_argument when the value is not a number, std::overflow_error beyond 32
    /// bits.
    /* 23 */ virtual Value GetTop() const = 0;
    virtual void LetTop(const Value& value) = 0;
    /* 24 */ virtual Value GetLeft() const = 0;
    virtual void LetLeft(const Value& value) = 0;
    /* 25 */ virtual ObjectRef GetClsVoceMenu() const = 0;
    virtual void SetClsVoceMenu(ObjectRef value) = 0;
    /* 26 */ virtual VariantBool GetIsActive() const = 0;
    virtual void LetIsActive(VariantBool value) = 0;
    /* 27 */ virtual VariantBool GetIsCalled() const = 0;
    virtual void LetIsCalled(VariantBool value) = 0;
    /* 28 */ virtual Value GetFiltro() const = 0;
    virtual void LetFiltro(const Value& value) = 0;
};

} // namespace veldran
