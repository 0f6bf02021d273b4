#include "host/main_form_controls.h"

#include <utility>

namespace veldran {

namespace {

/// The caption that the user reads, the tag that a screen reader says, the tip under the pointer.
void scritte(controls::Control& controllo, std::string didascalia, std::string descrizione,
             std::string suggerimento = {}) {
    controllo.SetCaption(std::move(didascalia));
    controllo.SetAccessibleName(std::move(descrizione));
    controllo.SetToolTipText(std::move(suggerimento));
}

} // namespace

ControlliFormPrincipale::ControlliFormPrincipale(controls::Container& form)
    : MDIActiveX1(form, "MDIActiveX1"), QRV_RESIZEFORM(form, "QRV_RESIZEFORM"),
      CMD_ATTIVAZIONI(form, "CMD_ATTIVAZIONI"), LAY_ATTIVAZIONE(form, "LAY_ATTIVAZIONE"),
      STR_FILTRI(LAY_ATTIVAZIONE, "STR_FILTRI"), LBL_FILTRO_CORRENTE(LAY_ATTIVAZIONE, "LBL_FILTRO_CORRENTE"),
      LBL_CONTORICERCA(LAY_ATTIVAZIONE, "LBL_CONTORICERCA"),
      TXT_CONTORICERCA(LAY_ATTIVAZIONE, "TXT_CONTORICERCA"),
      LBB_DESCRCONTORICERCA(LAY_ATTIVAZIONE, "LBB_DESCRCONTORICERCA"),
      BUT_RICERCA(LAY_ATTIVAZIONE, "BUT_RICERCA"), TRW_CONTI(LAY_ATTIVAZIONE, "TRW_CONTI"),
      BUT_CORRELAZIONI(LAY_ATTIVAZIONE, "BUT_CORRELAZIONI"),
      BUT_EDITCORRELAZIONI(LAY_ATTIVAZIONE, "BUT_EDITCORRELAZIONI"),
      LAY_CORRELAZIONI(form, "LAY_CORRELAZIONI"),
      TXT_CONTOSELEZIONATO(LAY_CORRELAZIONI, "TXT_CONTOSELEZIONATO"),
      LST_CAUSALI(LAY_CORRELAZIONI, "LST_CAUSALI"), GRB_TESTATA(LAY_CORRELAZIONI, "GRB_TESTATA"),
      TXT_CAUSALE(GRB_TESTATA, "TXT_CAUSALE"), TXT_DESCRCAUSALE(GRB_TESTATA, "TXT_DESCRCAUSALE"),
      INV_TESTATA(GRB_TESTATA, "INV_TESTATA"), GRB_DETTAGLIO(LAY_CORRELAZIONI, "GRB_DETTAGLIO"),
      GRD_DETTAGLIO(GRB_DETTAGLIO, "GRD_DETTAGLIO"), CMD_SU(GRB_DETTAGLIO, "CMD_SU"),
      CMD_GIU(GRB_DETTAGLIO, "CMD_GIU"), CBO_SEGNO(GRB_DETTAGLIO, "CBO_SEGNO"),
      TXT_PERC(GRB_DETTAGLIO, "TXT_PERC"), TXT_CONTO(GRB_DETTAGLIO, "TXT_CONTO"),
      TXT_DESCRCONTO(GRB_DETTAGLIO, "TXT_DESCRCONTO"), LBL_VOCEDISPESA(GRB_DETTAGLIO, "LBL_VOCEDISPESA"),
      TXT_VDS(GRB_DETTAGLIO, "TXT_VDS"), TXT_DESCRVDS(GRB_DETTAGLIO, "TXT_DESCRVDS"),
      PIC_FOCUSCATCH(GRB_DETTAGLIO, "PIC_FOCUSCATCH"), GNV_DETTAGLIO(GRB_DETTAGLIO, "GNV_DETTAGLIO") {
    scritte(CMD_ATTIVAZIONI, "&Attivazioni / correlazioni",
            "Passa da attivazioni a correlazioni e viceversa");
    disegnaAttivazione();
    disegnaCorrelazioni();
}

void ControlliFormPrincipale::disegnaAttivazione() {
    LAY_ATTIVAZIONE.SetAccessibleName("Attivazione dei conti");
    LAY_ATTIVAZIONE.SetVisible(false);
    STR_FILTRI.SetAccessibleName("Filtro dei conti");
    STR_FILTRI.AddTab("Tutti", "Tutti i conti");
    STR_FILTRI.AddTab("Att.", "Conti attivati");
    STR_FILTRI.AddTab("Non att.", "Conti non attivati");
    LBL_FILTRO_CORRENTE.SetAccessibleName("Filtro corrente");
    scritte(LBL_CONTORICERCA, "Con&to", "Conto da ricercare");
    scritte(TXT_CONTORICERCA, "", "Conto da ricercare", "Codice del conto da ricercare nell'albero");
    LBB_DESCRCONTORICERCA.SetAccessibleName("Descrizione del conto da ricercare");
    scritte(BUT_RICERCA, "&Ricerca", "Ricerca conto",
            "Ricerca il conto tra quelli correntemente selezionati");
    scritte(TRW_CONTI, "", "Piano dei conti");
    scritte(BUT_CORRELAZIONI, "&Correlazioni", "Correlazioni del conto selezionato");
    scritte(BUT_EDITCORRELAZIONI, "&Modifica correlazioni",
            "Modifica delle correlazioni del conto selezionato");
    for (controls::Button* pulsante : {&BUT_CORRELAZIONI, &BUT_EDITCORRELAZIONI}) {
        pulsante->SetEnabled(false);
        pulsante->SetVisible(false);
    }
}

void ControlliFormPrincipale::disegnaCorrelazioni() {
    LAY_CORRELAZIONI.SetAccessibleName("Correlazioni del conto");
    LAY_CORRELAZIONI.SetVisible(false);
    TXT_CONTOSELEZIONATO.SetAccessibleName("Conto selezionato");
    scritte(LST_CAUSALI, "", "Causali correlate", "Causali per cui il conto ha una correlazione");
    constexpr int larghezzaLista = 3600;
    LST_CAUSALI.SetWidth(larghezzaLista);
    LST_CAUSALI.AddColumn("colCodice", "Cod.", 0);
    LST_CAUSALI.AddColumn("colDescrizione", "Descrizione", 0);
    GRB_TESTATA.SetCaption("Causale correlata");
    scritte(TXT_CAUSALE, "Causale", "Codice causale");
    TXT_CAUSALE.SetUpperCase(true);
    scritte(TXT_DESCRCAUSALE, "", "Descrizione causale", "Descrizione causale");
    INV_TESTATA.SetAccessibleName("Comandi della correlazione");
    GRB_DETTAGLIO.SetCaption("Righe della correlazione");
    GRD_DETTAGLIO.SetAccessibleName("Righe della correlazione");
    constexpr int larghezzaConto = 1750;
    constexpr int larghezzaVoce = 900;
    constexpr int larghezzaDescrizione = 2000;
    constexpr int larghezzaPercentuale = 800;
    GRD_DETTAGLIO.AddColumn("Avere", "AVERE", larghezzaConto);
    GRD_DETTAGLIO.AddColumn("Dare", "DARE", larghezzaConto);
    GRD_DETTAGLIO.AddColumn("Descr.", "CONTO", larghezzaDescrizione);
    GRD_DETTAGLIO.AddColumn("Perc.", "PERCENTUALE", larghezzaPercentuale);
    GRD_DETTAGLIO.AddColumn("V.d.s.", "CONTOVDS", larghezzaVoce);
    GRD_DETTAGLIO.AddColumn("Descr. v.d.s.", "CONTOVDS", larghezzaDescrizione);
    scritte(CMD_SU, "S&u", "Sposta su la riga", "Sposta la riga verso l'alto");
    scritte(CMD_GIU, "&Giù", "Sposta giù la riga", "Sposta la riga verso il basso");
    scritte(CBO_SEGNO, "Segno", "Segno");
    scritte(TXT_PERC, "% ripartizione", "Percentuale di ripartizione da utilizzare");
    TXT_PERC.SetFormatMask("##0.00;-##0.00;;");
    scritte(TXT_CONTO, "Codice conto", "Codice conto");
    TXT_CONTO.SetUpperCase(true);
    TXT_CONTO.SetManagementEnabled(true);
    TXT_CONTO.SetAutoAdvance(true);
    TXT_DESCRCONTO.SetAccessibleName("Descrizione conto");
    scritte(LBL_VOCEDISPESA, "Voce di spesa", "Voce di spesa");
    scritte(TXT_VDS, "Codice voce di spesa", "Codice voce di spesa");
    TXT_VDS.SetUpperCase(true);
    TXT_VDS.SetManagementEnabled(true);
    TXT_VDS.SetAutoAdvance(true);
    TXT_DESCRVDS.SetAccessibleName("Descrizione voce di spesa");
    PIC_FOCUSCATCH.SetAccessibleName("Fine della riga");
    GNV_DETTAGLIO.SetAccessibleName("Comandi delle righe");
}

} // namespace veldran
