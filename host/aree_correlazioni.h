#pragma once

#include "accounts/filtri.h"
#include "causali/appunti_albero.h"
#include "causali/appunti_lista.h"
#include "causali/copie_correlazioni.h"
#include "causali/lista_causali.h"
#include "correlation/archivio_correlazioni.h"
#include "correlation/campi_analitici.h"
#include "correlation/controlli_dettaglio.h"
#include "correlation/eventi_dettaglio.h"
#include "correlation/eventi_testata.h"
#include "correlation/formati_griglia.h"
#include "correlation/frame_correlazioni.h"
#include "correlation/regole_correlazione.h"
#include "host/main_form_controls.h"
#include "host/modi_di_lavoro.h"
#include "tree/albero_conti.h"

#include <functional>
#include <utility>

namespace veldran {

/// The work areas of correlation mode and what they share, in the order of their dependence.
struct AreeCorrelazioni {
    /// Activation mode's areas that this mode works with.
    struct Vicini {
        AlberoConti& albero;
        Filtri& filtri;
    };

    AreeCorrelazioni(AmbienteDiLavoro& condiviso, services::GlobalObject& globale, controls::Form& form,
                     ControlliFormPrincipale& c, Vicini vicini, std::function<void()> buildScript)
        : ambiente{condiviso, globale, globale.CodicePdcCoin(), globale.CodicePdcVds(),
                   globale.GestioneVociDiSpesa()},
          archivio(ambiente),
          campi(ambiente,
                {c.TXT_CAUSALE, c.CBO_SEGNO, c.TXT_CONTO, c.TXT_DESCRCONTO, c.TXT_VDS, c.TXT_DESCRVDS},
                std::move(buildScript)),
          formati(ambiente, campi),
          frame(ambiente,
                {c.TXT_CAUSALE, c.TXT_DESCRCAUSALE, c.INV_TESTATA, c.GRD_DETTAGLIO, c.GNV_DETTAGLIO,
                 c.CBO_SEGNO, c.TXT_PERC, c.TXT_CONTO, c.TXT_DESCRCONTO, c.TXT_VDS, c.TXT_DESCRVDS},
                archivio),
          regole(ambiente, frame), lista(ambiente, {c.LST_CAUSALI, c.GRD_DETTAGLIO, c.CBO_SEGNO}, frame),
          dettaglio(ambiente,
                    {c.TXT_CAUSALE, c.INV_TESTATA, c.GRD_DETTAGLIO, c.CMD_SU, c.CMD_GIU, c.CBO_SEGNO,
                     c.TXT_PERC, c.TXT_CONTO, c.TXT_VDS, c.PIC_FOCUSCATCH, c.GNV_DETTAGLIO},
                    frame),
          eventiDettaglio(ambiente, {c.TXT_CAUSALE, c.TXT_CONTO, c.TXT_VDS, c.CMD_SU, c.CMD_GIU}, frame,
                          regole),
          eventiTestata(ambiente, {c.TXT_CAUSALE, c.TXT_DESCRCAUSALE},
                        {frame, archivio, regole, lista, dettaglio}),
          modi(ambiente,
               {c.LAY_ATTIVAZIONE, c.LAY_CORRELAZIONI, c.TRW_CONTI, c.TXT_CONTOSELEZIONATO, c.TXT_CAUSALE,
                c.GRD_DETTAGLIO},
               {frame, archivio, campi, lista, vicini.filtri}),
          copie(ambiente), appuntiAlbero(ambiente, c.TRW_CONTI, form, {vicini.albero, vicini.filtri, copie}),
          appuntiLista(ambiente, {form, c.LST_CAUSALI, c.TXT_CAUSALE}, {frame, lista, copie}) {
        frame.UsaEventi(eventiTestata, eventiDettaglio);
        lista.UsaAppunti(&appuntiLista);
        vicini.albero.UsaAppunti(&appuntiAlbero);
    }
    AreeCorrelazioni(const AreeCorrelazioni&) = delete;
    AreeCorrelazioni& operator=(const AreeCorrelazioni&) = delete;

    AmbienteCorrelazioni ambiente;
    ArchivioCorrelazioni archivio;
    CampiAnalitici campi;
    FormatiGriglia formati;
    FrameCorrelazioni frame;
    RegoleCorrelazione regole;
    ListaCausali lista;
    ControlliDettaglio dettaglio;
    EventiDettaglio eventiDettaglio;
    EventiTestata eventiTestata;
    ModiDiLavoro modi;
    CopieCorrelazioni copie;
    AppuntiAlbero appuntiAlbero;
    AppuntiLista appuntiLista;
};

} // namespace veldran
