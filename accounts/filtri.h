#pragma once

#include "host/ambiente.h"
#include "platform/ado/command.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/tab_strip.h"

#include <memory>
#include <string>

namespace veldran {

class AlberoConti;

/// The filter that the user chose and the working table #CG24_TABPDC_SELECTED that it lets through.
class Filtri {
public:
    struct Controlli {
        controls::TabStrip& STR_FILTRI;
        controls::Label& LBL_FILTRO_CORRENTE;
    };

    Filtri(AmbienteDiLavoro& ambiente, Controlli controlli, AlberoConti& albero)
        : ambiente_(ambiente), controlli_(controlli), albero_(albero) {}

    /// 1-based index of the selected tab; 0 while none is selected.
    int Indice() const { return controlli_.STR_FILTRI.SelectedIndex(); }

    void STR_FILTRI_Click();
    /// Rebuilds the selection for the selected tab and loads the tree from it.
    void CaricamentoConti();

    /// \name For the routines that change the selection; errors are theirs.
    ///@{
    /// Copies ATTIVO of the selection back into #CG24_TABPDC. \throws ado::AdoError
    void RiportoAttivo();
    /// Copies CORRELATO of the selection back into #CG24_TABPDC. \throws ado::AdoError
    void RiportoCorrelato();
    /// Sets CORRELATO of one account of the selection. \throws ado::AdoError
    void ImpostazioneCorrelato(bool correlato, const std::string& conto);
    ///@}

    /// Detaches the kept command from the connection.
    void Rilascia();

private:
    AmbienteDiLavoro& ambiente_;
    Controlli controlli_;
    AlberoConti& albero_;
    std::shared_ptr<ado::Command> correlatoConto_; // shared as ADO commands are
};

} // namespace veldran
