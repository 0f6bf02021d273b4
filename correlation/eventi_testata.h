#pragma once

#include "correlation/ambiente_correlazioni.h"
#include "platform/controls/lookup_field.h"
#include "platform/controls/simple_controls.h"

#include <cstdint>
#include <string>

namespace veldran {

class ArchivioCorrelazioni;
class ControlliDettaglio;
class FrameCorrelazioni;
class ListaCausali;
class RegoleCorrelazione;

/// What happens to the correlation of one causale: the events of `gclsFrameTestata`.
class EventiTestata {
public:
    struct Controlli {
        controls::LookupField& TXT_CAUSALE;
        controls::Label& TXT_DESCRCAUSALE;
    };
    struct Vicini {
        FrameCorrelazioni& frame;
        ArchivioCorrelazioni& archivio;
        RegoleCorrelazione& regole;
        ListaCausali& lista;
        ControlliDettaglio& dettaglio;
    };

    EventiTestata(AmbienteCorrelazioni& ambiente, Controlli controlli, Vicini vicini)
        : ambiente_(ambiente), controlli_(controlli), vicini_(vicini) {}

    /// Has the rows written to #DETTAGLIO and applies the rules; a broken rule is told to the user.
    void gclsFrameTestata_BeforeUpdate(bool& annulla);
    void gclsFrameTestata_AfterUpdate(bool riuscito);
    void gclsFrameTestata_BeforeDelete(bool& annulla);
    void gclsFrameTestata_AfterDelete(bool riuscito);
    void gclsFrameTestata_AfterUndo(bool riuscito);
    void gclsFrameTestata_ChangeStatus(std::int16_t nuovo, std::int16_t precedente);
    void gclsFrameTestata_IsRecordChanged(bool& modificato);
    /// The frame could not do what it was asked; called while the exception is being handled.
    void gclsFrameTestata_Failed();
    /// There is no frame that could be edited.
    void ModificaSospesa();

private:
    bool causaleIndicata();
    bool scriviRighe();
    bool contiIndicati();
    void rifiuta(const std::string& righe);

    AmbienteCorrelazioni& ambiente_;
    Controlli controlli_;
    Vicini vicini_;
    std::int16_t statoAlSalvataggio_ = 0;
    std::string causaleDaEliminare_;
};

} // namespace veldran
