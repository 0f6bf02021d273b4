#pragma once

#include "platform/controls/container.h"
#include "platform/controls/data_grid.h"
#include "platform/controls/edit_controls.h"
#include "platform/controls/focus_catcher.h"
#include "platform/controls/frame_navigator.h"
#include "platform/controls/list_view.h"
#include "platform/controls/lookup_field.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/tab_strip.h"
#include "platform/controls/tree_view.h"

namespace veldran {

/// The controls of the main form as designed: where each stands, its Italian texts, what is visible. They are
/// declared in tab order.
struct ControlliFormPrincipale {
    explicit ControlliFormPrincipale(controls::Container& form);

    controls::MdiContainer MDIActiveX1;
    controls::ResizeControl QRV_RESIZEFORM;
    /// Toggles the working mode, in both directions.
    controls::Button CMD_ATTIVAZIONI;

    /// Activation mode: filters, search and the accounts tree. Shown by the start-up.
    controls::Layout LAY_ATTIVAZIONE;
    controls::TabStrip STR_FILTRI;
    controls::Label LBL_FILTRO_CORRENTE;
    controls::Label LBL_CONTORICERCA;
    controls::LookupField TXT_CONTORICERCA;
    controls::Label LBB_DESCRCONTORICERCA;
    controls::Button BUT_RICERCA;
    controls::TreeView TRW_CONTI;
    controls::Button BUT_CORRELAZIONI;
    controls::Button BUT_EDITCORRELAZIONI;

    /// Correlation mode: the correlations of one account.
    controls::Layout LAY_CORRELAZIONI;
    controls::Label TXT_CONTOSELEZIONATO;
    controls::ListView LST_CAUSALI;
    controls::GroupBox GRB_TESTATA;
    controls::LookupField TXT_CAUSALE;
    controls::Label TXT_DESCRCAUSALE;
    controls::FrameNavigator INV_TESTATA;
    controls::GroupBox GRB_DETTAGLIO;
    controls::DataGrid GRD_DETTAGLIO;
    controls::Button CMD_SU;
    controls::Button CMD_GIU;
    controls::ComboBox CBO_SEGNO;
    controls::NumericField TXT_PERC;
    controls::LookupField TXT_CONTO;
    controls::Label TXT_DESCRCONTO;
    controls::Label LBL_VOCEDISPESA;
    controls::LookupField TXT_VDS;
    controls::Label TXT_DESCRVDS;
    controls::FocusCatcher PIC_FOCUSCATCH; ///< between the last field and the navigator, in both directions
    controls::FrameNavigator GNV_DETTAGLIO;

private:
    void disegnaAttivazione();
    void disegnaCorrelazioni();
};

} // namespace veldran
