#pragma once

#include "correlation/ambiente_correlazioni.h"
#include "platform/controls/lookup_field.h"
#include "platform/controls/simple_controls.h"

#include <cstdint>
#include <string>

namespace veldran {

class FrameCorrelazioni;
class RegoleCorrelazione;

/// What happens to the rows of the correlation: the events of `gclsFrameDettaglio`.
class EventiDettaglio {
public:
    struct Controlli {
        controls::LookupField& TXT_CAUSALE;
        controls::LookupField& TXT_CONTO;
        controls::LookupField& TXT_VDS;
        controls::Button& CMD_SU;
        controls::Button& CMD_GIU;
    };

    EventiDettaglio(AmbienteCorrelazioni& ambiente, Controlli controlli, FrameCorrelazioni& frame,
                    RegoleCorrelazione& regole)
        : ambiente_(ambiente), controlli_(controlli), frame_(frame), regole_(regole) {}

    void gclsFrameDettaglio_AfterAddNew(bool riuscito);
    /// Refuses a code keyed in vain; derives AVERE, DARE and the chart of the cost item from what was
    /// entered.
    void gclsFrameDettaglio_BeforeUpdate(bool& annulla);
    void gclsFrameDettaglio_ChangeStatus(std::int16_t nuovo);
    /// Renumbers all rows and writes them to #DETTAGLIO together; a new row still empty is given up.
    void gclsFrameDettaglio_UpdateBatchAll(bool& scritto);
    /// The frame could not do what it was asked; called while the exception is being handled.
    void gclsFrameDettaglio_Failed();
    /// There is no row that could be moved.
    void SpegniSpostamenti();

private:
    bool esiste(controls::LookupField& campo, const char* colonna, const std::string& rifiuto);
    bool eraIndicato(const char* colonna) const;

    AmbienteCorrelazioni& ambiente_;
    Controlli controlli_;
    FrameCorrelazioni& frame_;
    RegoleCorrelazione& regole_;
};

} // namespace veldran
