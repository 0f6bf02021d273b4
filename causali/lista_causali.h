#pragma once

#include "correlation/ambiente_correlazioni.h"
#include "platform/ado/command.h"
#include "platform/controls/data_grid.h"
#include "platform/controls/edit_controls.h"
#include "platform/controls/list_view.h"

#include <cstddef>
#include <memory>
#include <string>
#include <unordered_map>

namespace veldran {

class AppuntiCausali;
class FrameCorrelazioni;

/// The list of causali for which the current account has a correlation, and the row whose causale the header
/// frame shows.
class ListaCausali {
public:
    struct Controlli {
        controls::ListView& LST_CAUSALI;
        controls::DataGrid& GRD_DETTAGLIO;
        controls::ComboBox& CBO_SEGNO;
    };
    using Riga = controls::ListView::Item;
    /// Causali are blind to case, as the database is.
    struct ChiaveCieca {
        std::size_t operator()(const std::string& chiave) const;
        bool operator()(const std::string& una, const std::string& altra) const;
    };
    using Indice = std::unordered_map<std::string, Riga, ChiaveCieca, ChiaveCieca>;

    ListaCausali(AmbienteCorrelazioni& ambiente, Controlli controlli, FrameCorrelazioni& frame)
        : ambiente_(ambiente), controlli_(controlli), frame_(frame) {}
    /// nullptr: the clipboard keys and the menu do nothing.
    void UsaAppunti(AppuntiCausali* appunti) { appunti_ = appunti; }

    /// (Re)loads the list for the current account; selects no row. After a failure the list stands as it
    /// was, unless it was another account's: it is empty then.
    void CaricamentoListaCausali();
    /// Makes a row the current causale by moving the header frame to it.
    /// \return false when the frame refused; the highlight is then back on the causale still shown.
    bool ChangeItem(const Riga& riga);
    /// Rows by key ("*" + causale + "*").
    const Indice& IndiceCausali() const { return indice_; }
    /// The row of a causale; nullptr when it is not listed.
    Riga RigaDi(const std::string& causale) const;
    /// Selects the row of a causale; nothing happens when it is not listed.
    void Seleziona(const std::string& causale);
    void Aggiungi(const std::string& causale, const std::string& descrizione);
    /// The correlation of a causale was deleted.
    void Rimuovi(const std::string& causale);
    /// Forgets which row is current: nothing is shown any more.
    void DimenticaSelezione() { corrente_.reset(); }
    /// Detaches the kept command from the connection.
    void Rilascia();

    void LST_CAUSALI_ItemClick(controls::ListItem& riga);
    void LST_CAUSALI_MouseDown(const controls::MouseEvent& evento);
    void LST_CAUSALI_KeyDown(controls::KeyEvent& tasto);

private:
    void svuota();
    void aggiungi(const std::string& causale, const std::string& descrizione);
    Riga rigaSotto(const controls::MouseEvent& evento) const;
    void riportaEvidenza();

    AmbienteCorrelazioni& ambiente_;
    Controlli controlli_;
    FrameCorrelazioni& frame_;
    AppuntiCausali* appunti_ = nullptr;
    std::shared_ptr<ado::Command> causali_; // shared as ADO commands are
    Indice indice_;
    Riga corrente_;             ///< may be a row that a reload has taken from the list
    std::string contoElencato_; ///< the account whose causali are listed
    bool colonneImpostate_ = false;
    bool riporto_ = false; ///< the highlight is being taken back
};

} // namespace veldran
