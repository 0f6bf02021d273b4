#include "host/clsci_veldran.h"

#include "host/frmci_veldran.h"

#include <stdexcept>

namespace veldran {

namespace {

// Keys of the host's message catalogue.
constexpr std::int32_t messageChangeDitta = 30179;
constexpr std::int32_t messageExportToOffice = 69054;
constexpr std::int32_t messageButton = 45614;
constexpr std::int64_t refusedButton = 25;

/// A host may name its other buttons as it likes.
bool isRefusedButton(const Value& index) {
    try {
        return valueOrDefault(index, 0).toInteger() == refusedButton;
    } catch (const std::exception&) { // no whole number
        return false;
    }
}

controls::FormWindowState windowStateOf(std::int16_t value) {
    if (value < controls::windowNormal || value > controls::windowMaximized) {
        throw std::invalid_argument("WindowState " + std::to_string(value) + " non è valido");
    }
    return static_cast<controls::FormWindowState>(value);
}

} // namespace

CLSCI_VELDRAN::CLSCI_VELDRAN() : activeDll_(std::shared_ptr<void>(), this) {}

CLSCI_VELDRAN::~CLSCI_VELDRAN() {
    form_.reset();
    activeFrame_.reset();
    statusBar_.reset();
    clsVoceMenu_.reset();
    connection_.reset();
    clsGlobal_.reset();
    SetActiveNavigator(nullptr);
    activeDll_.reset();
}

void CLSCI_VELDRAN::SetActiveNavigator(std::shared_ptr<services::Navigator> value) {
    navigatorEvents_.clear();
    activeNavigator_ = std::move(value);
    if (!activeNavigator_) {
        return;
    }
    const services::Navigator& navigator = *activeNavigator_;
    navigatorEvents_.push_back(navigator.BeforeChangeDitta.subscribe(
        [this](Value& cancel) { ActiveNavigator_BeforeChangeDitta(cancel); }));
    navigatorEvents_.push_back(navigator.BeforeExportToOffice.subscribe(
        [this](Value& cancel, const Value&) { ActiveNavigator_BeforeExportToOffice(cancel); }));
    navigatorEvents_.push_back(navigator.ButtonPressed.subscribe(
        [this](Value& cancel, const Value& index) { ActiveNavigator_ButtonPressed(cancel, index); }));
    navigatorEvents_.push_back(navigator.InitializeLayoutObjectModel.subscribe(
        [this](services::ObjectModel& model) { ActiveNavigator_InitializeObjectModel(model); }));
    navigatorEvents_.push_back(navigator.InitializeScriptObjectModel.subscribe(
        [this](services::ObjectModel& model) { ActiveNavigator_InitializeObjectModel(model); }));
}

Value CLSCI_VELDRAN::ShowForm() {
    if (!clsGlobal_) {
        throw std::logic_error("ShowForm: ClsGlobal non è impostato");
    }
    const auto self = shared_from_this(); // a modal form may be the last to hold the component
    const auto form = std::make_shared<FRMCI_VELDRAN>();
    form_ = form;
    form->ActiveDll(GetActiveDll());
    form->Componente(self);
    try {
        form->SetWindowState(windowStateOf(windowState_));
        form->SetCaption(caption_.toText());
        clsGlobal_->Windows().ShowForm(form, windowModal_ != variantFalse, hwndParent_);
    } catch (...) {
        if (!form->IsLoaded()) { // it will never unload, and so never let go of its component
            form->RilascioComponente();
        }
        throw;
    }
    return {};
}

Value CLSCI_VELDRAN::CloseForm() {
    const auto self = shared_from_this(); // the form may be the last to hold the component
    const auto contract = GetActiveDll();
    if (const auto global = contract ? contract->GetClsGlobal() : nullptr) {
        global->ScreenClosing();
    }
    if (const auto navigator = contract ? contract->GetActiveNavigator() : nullptr) {
        navigator->ScreenClosing();
    }
    const auto form = form_;
    if (!form) {
        return true; // no form keeps the component
    }
    form->Unload();
    return form->Componente() == nullptr;
}

bool CLSCI_VELDRAN::formExists() const {
    return form_ && form_->IsLoaded();
}

void CLSCI_VELDRAN::refuse(Value& cancel, std::int32_t message) {
    cancel = true;
    if (clsGlobal_) {
        const auto messages = clsGlobal_->NewMessageService();
        messages->Bind(*this);
        messages->ShowCatalogueMessage(message);
    }
}

void CLSCI_VELDRAN::ActiveNavigator_BeforeChangeDitta(Value& cancel) {
    refuse(cancel, messageChangeDitta);
}

void CLSCI_VELDRAN::ActiveNavigator_BeforeExportToOffice(Value& cancel) {
    if (formExists()) {
        refuse(cancel, messageExportToOffice);
    }
}

void CLSCI_VELDRAN::ActiveNavigator_ButtonPressed(Value& cancel, const Value& buttonIndex) {
    if (formExists() && !valueOrDefault(cancel, false).toBool() && isRefusedButton(buttonIndex)) {
        refuse(cancel, messageButton);
    }
}

void CLSCI_VELDRAN::ActiveNavigator_InitializeObjectModel(services::ObjectModel& model) {
    if (formExists()) {
        model.form = form_;
    }
}

} // namespace veldran
