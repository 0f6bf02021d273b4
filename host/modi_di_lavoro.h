#pragma once

#include "correlation/ambiente_correlazioni.h"
#include "platform/controls/container.h"
#include "platform/controls/data_grid.h"
#include "platform/controls/lookup_field.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/tree_view.h"

namespace veldran {

class ArchivioCorrelazioni;
class CampiAnalitici;
class Filtri;
class FrameCorrelazioni;
class ListaCausali;

/// The two working modes of the form, activation and correlation: one of two layouts is visible.
class ModiDiLavoro {
public:
    struct Controlli {
        controls::Layout& LAY_ATTIVAZIONE;
        controls::Layout& LAY_CORRELAZIONI;
        controls::TreeView& TRW_CONTI;
        controls::Label& TXT_CONTOSELEZIONATO;
        controls::LookupField& TXT_CAUSALE;
        controls::DataGrid& GRD_DETTAGLIO;
    };
    struct Vicini {
        FrameCorrelazioni& frame;
        ArchivioCorrelazioni& archivio;
        CampiAnalitici& campi;
        ListaCausali& lista;
        Filtri& filtri;
    };

    ModiDiLavoro(AmbienteCorrelazioni& ambiente, Controlli controlli, Vicini vicini)
        : ambiente_(ambiente), controlli_(controlli), vicini_(vicini) {}

    /// Toggles the mode; leaving correlation mode may be refused.
    void Switch();
    /// \return true when correlation mode may be left; its frames are then gone.
    bool BeforeLeaveCorrelazione();
    void BeforeLeaveAttivazione() {}
    /// Shows the correlations of the account selected in the tree.
    void AfterEnterCorrelazione();
    /// Brings the selected account's mark up to date, in the tree and in the working tables.
    void AfterEnterAttivazione();

    void CMD_ATTIVAZIONI_Click();
    void BUT_CORRELAZIONI_ButtonClick() {}
    void BUT_EDITCORRELAZIONI_ButtonClick() {}

private:
    AmbienteCorrelazioni& ambiente_;
    Controlli controlli_;
    Vicini vicini_;
};

} // namespace veldran
