#pragma once

#include "correlation/ambiente_correlazioni.h"
#include "platform/ado/bookmark.h"
#include "platform/controls/data_grid.h"
#include "platform/controls/edit_controls.h"
#include "platform/controls/focus_catcher.h"
#include "platform/controls/frame_navigator.h"
#include "platform/controls/lookup_field.h"
#include "platform/controls/simple_controls.h"

#include <string>

namespace veldran {

class FrameCorrelazioni;

/// The controls of the correlation editor: what is enabled, how rows are moved, and where the focus goes, so
/// that row after row can be keyed without the mouse.
class ControlliDettaglio {
public:
    struct Controlli {
        controls::LookupField& TXT_CAUSALE;
        controls::FrameNavigator& INV_TESTATA;
        controls::DataGrid& GRD_DETTAGLIO;
        controls::Button& CMD_SU;
        controls::Button& CMD_GIU;
        controls::ComboBox& CBO_SEGNO;
        controls::NumericField& TXT_PERC;
        controls::LookupField& TXT_CONTO;
        controls::LookupField& TXT_VDS;
        controls::FocusCatcher& PIC_FOCUSCATCH;
        controls::FrameNavigator& GNV_DETTAGLIO;
    };

    ControlliDettaglio(AmbienteCorrelazioni& ambiente, Controlli controlli, FrameCorrelazioni& frame)
        : ambiente_(ambiente), controlli_(controlli), frame_(frame) {}

    void CaricamentoCombo();
    /// Enables or disables the detail group; the cost item only where the company manages them.
    void AbilitazioneDettaglio(bool abilita);

    /// Goes to a row that lacks its account, and to the field for it.
    void ChiediConto(const ado::Bookmark& riga);

    void CMD_SU_Click();
    void CMD_GIU_Click();

    void TXT_CAUSALE_StartDecode(services::LookupRequest& richiesta);
    void TXT_CAUSALE_StartLookup(services::LookupRequest& richiesta);
    void TXT_CAUSALE_AfterItem();
    /// The lookup service failed; called while the exception is being handled.
    void TXT_CAUSALE_Failed();

    void CBO_SEGNO_GotFocus();
    /// Another sign clears the row's account: what it may be depends on the sign.
    void CBO_SEGNO_Click();
    void TXT_CONTO_GotFocus() { avanti_ = true; }
    void TXT_VDS_GotFocus() { avanti_ = true; }
    void GNV_DETTAGLIO_GotFocus() { avanti_ = false; }
    void GNV_DETTAGLIO_AfterButtonClick(bool riuscito, const std::string& tasto);
    void INV_TESTATA_AfterButtonClick(bool riuscito, const std::string& tasto);
    void GRD_DETTAGLIO_DblClick();
    void GRD_DETTAGLIO_KeyDown(controls::KeyEvent& tasto);
    void PIC_FOCUSCATCH_GotFocus();

private:
    void scambia(std::int64_t passo);
    void completa(services::LookupRequest& richiesta) const;
    bool portaRighe();
    void chiudiRiga();

    AmbienteCorrelazioni& ambiente_;
    Controlli controlli_;
    FrameCorrelazioni& frame_;
    bool avanti_ = false; ///< the focus comes to the catcher from the fields, not back from the navigator
    std::string segnoAllIngresso_;
    const char* richiestaInCorso_ = "TXT_CAUSALE_StartDecode";
};

} // namespace veldran
