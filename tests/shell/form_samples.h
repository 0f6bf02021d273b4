#pragma once

#include "platform/controls/data_grid.h"
#include "platform/controls/edit_controls.h"
#include "platform/controls/form.h"
#include "platform/controls/lookup_field.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/tab_strip.h"
#include "platform/controls/tree_view.h"

#include <string>

namespace veldran::test {

/// A small form with one control of each kind, some inside a layout.
struct SampleForm : controls::Form {
    explicit SampleForm(std::string name = "FRM_PROVA") : Form(std::move(name)) {
        SetCaption("Prova");
        STR_SCHEDE.AddTab("Prima", "La prima");
        STR_SCHEDE.AddTab("Seconda", "La seconda");
        CBO_SEGNO.AddItem("Avere", 2);
        CBO_SEGNO.AddItem("Dare", 1);
        ALBERO.Add(nullptr, "RADICE", "Conti economici");
    }

    controls::MdiContainer MDI{*this, "MDIActiveX1"};
    controls::Layout LAY_AREA{*this, "LAY_AREA"};
    controls::Label ETICHETTA{LAY_AREA, "ETICHETTA"};
    controls::Button BUT_RICERCA{LAY_AREA, "BUT_RICERCA"};
    controls::LookupField TXT_CONTO{LAY_AREA, "TXT_CONTO"};
    controls::NumericField TXT_PERC{LAY_AREA, "TXT_PERC"};
    controls::ComboBox CBO_SEGNO{LAY_AREA, "CBO_SEGNO"};
    controls::TabStrip STR_SCHEDE{LAY_AREA, "STR_SCHEDE"};
    controls::TreeView ALBERO{LAY_AREA, "TRW_CONTI"};
};

} // namespace veldran::test
