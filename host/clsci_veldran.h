#pragma once

#include "host/cinterface.h"

#include <memory>
#include <utility>
#include <vector>

namespace veldran {

class FRMCI_VELDRAN;

/// The class that a host creates to run the screen. Keeps what the host hands over, shows and closes the main
/// form, and answers the events of the host's navigator.
/// Lives in a shared_ptr: the form it shows holds it for as long as it is loaded.
class CLSCI_VELDRAN final : public Cinterface, public std::enable_shared_from_this<CLSCI_VELDRAN> {
public:
    CLSCI_VELDRAN();
    ~CLSCI_VELDRAN() override;

    std::shared_ptr<services::GlobalObject> GetClsGlobal() const override { return clsGlobal_; }
    void SetClsGlobal(std::shared_ptr<services::GlobalObject> value) override {
        clsGlobal_ = std::move(value);
    }
    ObjectRef GetActiveFrame() const override { return activeFrame_; }
    void SetActiveFrame(ObjectRef value) override { activeFrame_ = std::move(value); }
    std::shared_ptr<services::Navigator> GetActiveNavigator() const override { return activeNavigator_; }
    void SetActiveNavigator(std::shared_ptr<services::Navigator> value) override;
    std::shared_ptr<Cinterface> GetActiveDll() const override { return activeDll_; }
    void SetActiveDll(std::shared_ptr<Cinterface> value) override { activeDll_ = std::move(value); }
    ObjectRef GetStatusBar() const override { return statusBar_; }
    void SetStatusBar(ObjectRef value) override { statusBar_ = std::move(value); }
    VariantBool GetCanInsert() const override { return canInsert_; }
    void LetCanInsert(VariantBool value) override { canInsert_ = value; }
    VariantBool GetCanDelete() const override { return canDelete_; }
    void LetCanDelete(VariantBool value) override { canDelete_ = value; }
    VariantBool GetCanUpdate() const override { return canUpdate_; }
    void LetCanUpdate(VariantBool value) override { canUpdate_ = value; }
    VariantBool GetCanQbe() const override { return canQbe_; }
    void LetCanQbe(VariantBool value) override { canQbe_ = value; }
    std::int16_t GetWindowState() const override { return windowState_; }
    void LetWindowState(std::int16_t value) override { windowState_ = value; }
    VariantBool GetWindowModal() const override { return windowModal_; }
    void LetWindowModal(VariantBool value) override { windowModal_ = value; }
    Value GetProgramMode() const override { return programMode_; }
    void LetProgramMode(const Value& value) override { programMode_ = value; }
    Value GetMenuModulo() const override { return menuModulo_; }
    void LetMenuModulo(const Value& value) override { menuModulo_ = value; }
    Value GetMenuPadre() const override { return menuPadre_; }
    void LetMenuPadre(const Value& value) override { menuPadre_ = value; }
    Value GetMenuProg() const override { return menuProg_; }
    void LetMenuProg(const Value& value) override { menuProg_ = value; }
    Value GetCaption() const override { return caption_; }
    void LetCaption(const Value& value) override { caption_ = value; }
    std::intptr_t GethwndParent() const override { return hwndParent_; }
    void LethwndParent(std::intptr_t value) override { hwndParent_ = value; }

    /// \throws std::logic_error without a global object, std::invalid_argument for a window state that no
    /// form has, and whatever the host's window service throws.
    Value ShowForm() override;
    Value CloseForm() override;

    std::shared_ptr<ado::Connection> GetConnection() const override { return connection_; }
    void SetConnection(std::shared_ptr<ado::Connection> value) override { connection_ = std::move(value); }
    void Cwindow() override {}
    void TransferData() override {}
    Value GetTop() const override { return top_; }
    void LetTop(const Value& value) override { top_ = value.toInt32(); }
    Value GetLeft() const override { return left_; }
    void LetLeft(const Value& value) override { left_ = value.toInt32(); }
    ObjectRef GetClsVoceMenu() const override { return clsVoceMenu_; }
    void SetClsVoceMenu(ObjectRef value) override { clsVoceMenu_ = std::move(value); }
    VariantBool GetIsActive() const override { return isActive_; }
    void LetIsActive(VariantBool value) override { isActive_ = value; }
    VariantBool GetIsCalled() const override { return isCalled_; }
    void LetIsCalled(VariantBool value) override { isCalled_ = value; }
    Value GetFiltro() const override { return filtro_; }
    void LetFiltro(const Value& value) override { filtro_ = value; }

private:
    void ActiveNavigator_BeforeChangeDitta(Value& cancel);
    void ActiveNavigator_BeforeExportToOffice(Value& cancel);
    void ActiveNavigator_ButtonPressed(Value& cancel, const Value& buttonIndex);
    void ActiveNavigator_InitializeObjectModel(services::ObjectModel& model);
    bool formExists() const;
    void refuse(Value& cancel, std::int32_t message);

    std::shared_ptr<FRMCI_VELDRAN> form_; // shared with the window service, which keeps a shown form
    // Host and component hold these objects together, as COM references do.
    std::shared_ptr<services::GlobalObject> clsGlobal_;
    ObjectRef activeFrame_;
    std::shared_ptr<services::Navigator> activeNavigator_;
    std::vector<Subscription> navigatorEvents_;
    ObjectRef statusBar_;
    ObjectRef clsVoceMenu_;
    std::shared_ptr<ado::Connection> connection_;
    /// By default a view of this very object that does not own it: a counted reference to itself would keep
    /// the component from ever being destroyed.
    std::shared_ptr<Cinterface> activeDll_;
    Value programMode_;
    Value menuModulo_;
    Value menuPadre_;
    Value menuProg_;
    Value caption_;
    Value filtro_;
    std::intptr_t hwndParent_ = 0;
    std::int32_t top_ = 0;
    std::int32_t left_ = 0;
    std::int16_t windowState_ = 0;
    VariantBool windowModal_ = variantFalse;
    VariantBool canInsert_ = variantFalse;
    VariantBool canDelete_ = variantFalse;
    VariantBool canUpdate_ = variantFalse;
    VariantBool canQbe_ = variantFalse;
    VariantBool isActive_ = variantFalse;
    VariantBool isCalled_ = variantFalse;
};

} // namespace veldran
