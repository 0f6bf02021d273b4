#pragma once

#include "correlation/ambiente_correlazioni.h"
#include "platform/controls/data_grid.h"
#include "platform/controls/edit_controls.h"
#include "platform/controls/frame_navigator.h"
#include "platform/controls/lookup_field.h"
#include "platform/controls/simple_controls.h"
#include "platform/frames/virtual_frame.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace veldran {

class ArchivioCorrelazioni;
class EventiDettaglio;
class EventiTestata;

/// The two editing frames of correlation mode: `gclsFrameTestata` over the causali of the current account,
/// `gclsFrameDettaglio` over the rows of one causale. They exist from `ConfigurazioneVirtualFrame` to
/// `RimozioneVirtualFrame`.
class FrameCorrelazioni {
public:
    struct Controlli {
        controls::LookupField& TXT_CAUSALE;
        controls::Label& TXT_DESCRCAUSALE;
        controls::FrameNavigator& INV_TESTATA;
        controls::DataGrid& GRD_DETTAGLIO;
        controls::FrameNavigator& GNV_DETTAGLIO;
        controls::ComboBox& CBO_SEGNO;
        controls::NumericField& TXT_PERC;
        controls::LookupField& TXT_CONTO;
        controls::Label& TXT_DESCRCONTO;
        controls::LookupField& TXT_VDS;
        controls::Label& TXT_DESCRVDS;
    };

    FrameCorrelazioni(AmbienteCorrelazioni& ambiente, Controlli controlli, ArchivioCorrelazioni& archivio);
    ~FrameCorrelazioni();
    FrameCorrelazioni(const FrameCorrelazioni&) = delete;
    FrameCorrelazioni& operator=(const FrameCorrelazioni&) = delete;
    /// The neighbours that answer the frames' events.
    void UsaEventi(EventiTestata& testata, EventiDettaglio& dettaglio);

    /// Fills the working tables for the current account, creates both frames and binds them. After a failure
    /// editing is suspended.
    void ConfigurazioneVirtualFrame();
    /// Shows the first header, or begins a new one when the account has none.
    void MostraTestata();
    /// Closes and releases both frames, the header's first. Nothing happens when there are none.
    void RimozioneVirtualFrame();
    /// Refills the working tables and shows them anew; the header stays on its causale if that still exists.
    /// After a failure editing is suspended; suspended editing is taken up again.
    void RefreshVirtualFrames();
    /// Nothing can be edited although the mode was entered: there are no frames, since the working tables are
    /// not what is stored.
    bool Sospesa() const { return inModifica_ && !gclsFrameTestata_; }
    /// Point the detail at the rows of the current header; at none when the header has no record.
    /// \return false after a failure; the detail then shows no rows and is not to be edited.
    bool RefreshChild() { return mostraRighe("RefreshChild:"); }
    bool ShowChild() { return mostraRighe("ShowChild:"); }
    /// Points the detail at no rows.
    void ClearChild() { apriRighe("ClearChild:", sql::letturaDettaglioVuoto); }
    /// Begins a new correlation when the account has none (any more): nothing else could be done there.
    void NuovaSeVuota();
    /// \return true when the form must not be left: the user stays with the pending changes.
    bool QueryUnloadFrames();

    /// nullptr outside correlation mode.
    frames::VirtualFrame* Testata() const { return gclsFrameTestata_.get(); }
    frames::VirtualFrame* Dettaglio() const { return gclsFrameDettaglio_.get(); }
    /// CAUSALE of the current header, without trailing blanks; "" without one. \throws ado::AdoError
    std::string CausaleCorrente() const;
    /// The header's record of a causale; nothing when there is none, or more than one. \throws ado::AdoError
    std::optional<ado::Bookmark> RecordDiCausale(const std::string& causale) const;

private:
    std::unique_ptr<frames::VirtualFrame> nuovoFrame(std::string nome, frames::LeavePolicy uscita) const;
    void collegaEventi();
    void sospendi();
    bool mostraRighe(const char* etichetta);
    bool apriRighe(const char* etichetta, const std::function<std::string()>& testo);
    void nascondiRighe();
    void rilasciaFrame(std::unique_ptr<frames::VirtualFrame>& frame);

    AmbienteCorrelazioni& ambiente_;
    Controlli controlli_;
    ArchivioCorrelazioni& archivio_;
    EventiTestata* eventiTestata_ = nullptr;
    EventiDettaglio* eventiDettaglio_ = nullptr;
    std::unique_ptr<frames::VirtualFrame> gclsFrameDettaglio_; // outlives the header, which follows it
    std::unique_ptr<frames::VirtualFrame> gclsFrameTestata_;
    std::vector<Subscription> eventi_;
    bool inModifica_ = false; ///< correlation mode was entered and not left
};

} // namespace veldran
