#pragma once

#include "accounts/filtri.h"
#include "accounts/tabelle_di_lavoro.h"
#include "host/ambiente.h"
#include "host/main_form_controls.h"
#include "tree/albero_conti.h"
#include "tree/attivazione_conti.h"
#include "tree/ricerca_conto.h"

#include <utility>

namespace veldran {

/// The work areas of activation mode and what those of both modes share, in the order of their dependence.
struct AreeDiLavoro {
    AreeDiLavoro(AmbienteDiLavoro condiviso, ControlliFormPrincipale& c, DidascalieRadici didascalie)
        : ambiente(std::move(condiviso)), tabelle(ambiente),
          albero(ambiente, {c.TRW_CONTI, c.BUT_CORRELAZIONI, c.BUT_EDITCORRELAZIONI}, std::move(didascalie)),
          filtri(ambiente, {c.STR_FILTRI, c.LBL_FILTRO_CORRENTE}, albero),
          attivazione(ambiente, c.TRW_CONTI, {albero, filtri, tabelle}),
          ricerca(ambiente, {c.TRW_CONTI, c.TXT_CONTORICERCA, c.LBB_DESCRCONTORICERCA}, albero) {
        albero.UsaAttivazione(attivazione);
    }
    AreeDiLavoro(const AreeDiLavoro&) = delete;
    AreeDiLavoro& operator=(const AreeDiLavoro&) = delete;

    AmbienteDiLavoro ambiente;
    TabelleDiLavoro tabelle;
    AlberoConti albero;
    Filtri filtri;
    AttivazioneConti attivazione;
    RicercaConto ricerca;
};

} // namespace veldran
