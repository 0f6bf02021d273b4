#pragma once

#include "host/ambiente.h"
#include "host/main_form_controls.h"
#include "platform/controls/form.h"
#include "platform/services/global_object.h"
#include "platform/services/script.h"
#include "tree/albero_conti.h"

#include <memory>
#include <string>
#include <vector>

namespace veldran {

class Cinterface;
class CLSCI_VELDRAN;
struct AreeCorrelazioni;
struct AreeDiLavoro;

/// The screen's main form: start-up at its first activation, error report, close sequence with its veto.
/// What the user does on it is answered by the work areas, which the start-up creates and the unload
/// releases.
class FRMCI_VELDRAN final : public controls::Form, public std::enable_shared_from_this<FRMCI_VELDRAN> {
public:
    FRMCI_VELDRAN();
    ~FRMCI_VELDRAN() override;

    /// The component as the host sees it; every host object is reached through it.
    void ActiveDll(std::shared_ptr<Cinterface> activeDll);
    /// The component itself. Shared, as a COM reference is: it lives while the form is loaded, even when the
    /// host lets go of it first; `Form_Unload` drops the reference.
    void Componente(std::shared_ptr<CLSCI_VELDRAN> componente);
    /// Empty once the form has released its component.
    std::shared_ptr<CLSCI_VELDRAN> Componente() const { return componente_; }
    /// Lets go of a component whose form was never loaded.
    void RilascioComponente();

    ControlliFormPrincipale& Controlli() { return controlli_; }

    services::MessageBoxAnswer SegnalazioneErrore(const std::string& etichetta) {
        return errori_.SegnalazioneErrore(etichetta);
    }

private:
    void Form_Activate();
    void Form_QueryUnload(bool& cancel);
    void Form_Unload();
    void MDIActiveX1_FormLoad();

    services::GlobalObject& Global();
    void Avvio();
    void ApriConnessione(services::GlobalObject& global);
    bool ContabilitaAnaliticaConfigurata(services::GlobalObject& global) const;
    void PreparaSchermo(services::GlobalObject& global);
    DidascalieRadici GetTraduzioneThesaurus();
    void CreaAreeDiLavoro(services::GlobalObject& global, DidascalieRadici didascalie);
    void CollegaAttivazione();
    void CollegaCorrelazioni();
    void ConfigurazioneCampiCorrelazione(services::GlobalObject& global);
    void AvvioRidimensionamento();

    void AggiornamentoNavigatore();
    void BuildScript();
    void ApplicaLayOut();
    bool ExecuteFormEvent(const std::string& evento);

    void RilascioComandi();
    void RilascioControllo(controls::LookupField* controllo);
    void RilascioOggetti();
    void RilascioAree();
    void ChiudiConnessione();
    void AnnullaAvvio();

    ControlliFormPrincipale controlli_;
    std::shared_ptr<Cinterface> activeDll_; // the host may have put another object in the component's place
    std::shared_ptr<CLSCI_VELDRAN> componente_;
    /// As the start-up found it: its services are used until the unload, whatever the host sets meanwhile.
    std::shared_ptr<services::GlobalObject> global_; // shared with the component and the host
    SegnalazioneErrori errori_;
    bool attivato_ = false; ///< the start-up has succeeded
    bool inAvvio_ = false;
    std::string stringaConnessione_;
    std::shared_ptr<ado::Connection> connessione_; // shared with the component, commands and recordsets
    std::unique_ptr<AreeDiLavoro> aree_;
    std::unique_ptr<AreeCorrelazioni> correlazioni_; ///< exists whenever the others do
    std::shared_ptr<services::ScriptObject> script_; // shared with the navigator
    std::vector<Subscription> eventiForm_;           ///< of the window's life; kept while the form exists
    std::vector<Subscription> eventiControlli_;      ///< of the controls; while the work areas exist
};

} // namespace veldran
