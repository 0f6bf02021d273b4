#pragma once

#include "host/ambiente.h"
#include "platform/ado/command.h"
#include "platform/controls/lookup_field.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/tree_view.h"
#include "tree/albero_conti.h"

#include <memory>
#include <string>

namespace veldran::ado {
class Recordset;
}

namespace veldran {

/// The search field: finds an analytic account of the current selection and opens the tree down to it.
class RicercaConto {
public:
    struct Controlli {
        controls::TreeView& TRW_CONTI;
        controls::LookupField& TXT_CONTORICERCA;
        controls::Label& LBB_DESCRCONTORICERCA;
    };

    RicercaConto(AmbienteDiLavoro& ambiente, Controlli controlli, AlberoConti& albero)
        : ambiente_(ambiente), controlli_(controlli), albero_(albero) {}

    /// Gives the search field the host's lookup service, the form's connection and the chart's code
    /// structure.
    void Configurazione(services::LookupService& servizio);

    void EsecuzioneRicerca(const std::string& conto);
    void SelezioneConto(ado::Recordset& record);
    /// Opens the path to the account of the row.
    /// \return false when a level of the path could not be loaded, which has been reported then.
    bool CostruzioneNodo(ado::Recordset& record);

    void BUT_RICERCA_ButtonClick();
    void TXT_CONTORICERCA_StartDecode(services::LookupRequest& richiesta);
    void TXT_CONTORICERCA_StartLookup(services::LookupRequest& richiesta);
    /// The description follows the field, whoever changes it: the user, a decode or code.
    void TXT_CONTORICERCA_Changed();
    /// The lookup service failed while serving the user; called while its exception is being handled.
    void TXT_CONTORICERCA_Failed();
    /// Enter searches and puts the user into the tree.
    void TXT_CONTORICERCA_KeyDown(controls::KeyEvent& tasto);

    /// Detaches the kept command from the connection, and the field from connection and service.
    void Rilascia();

private:
    std::shared_ptr<ado::Recordset> cerca(const std::string& conto);
    void completa(services::LookupRequest& richiesta) const;

    AmbienteDiLavoro& ambiente_;
    Controlli controlli_;
    AlberoConti& albero_;
    std::shared_ptr<ado::Command> ricerca_; // shared as ADO commands are
    const char* richiestaInCorso_ = "";     ///< label of what the lookup service was last asked
};

} // namespace veldran
