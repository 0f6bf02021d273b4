#include "correlation/regole_correlazione.h"

#include "correlation/frame_correlazioni.h"

#include <cmath>
#include <limits>
#include <optional>
#include <stdexcept>

namespace veldran {

namespace {

constexpr double percentualePiena = 100;

bool eOrigine(const ado::Field& segno) {
    return segno.Value().toInt32() == segnoAvere;
}

double aDueDecimali(double numero) {
    return std::nearbyint(numero * 100) / 100;
}

} // namespace

std::shared_ptr<ado::Recordset> RegoleCorrelazione::copiaRighe() const {
    if (frame_.Dettaglio() == nullptr) {
        throw std::logic_error("Non c'è alcuna correlazione in modifica");
    }
    return frame_.Dettaglio()->Recordset()->Clone();
}

bool RegoleCorrelazione::CheckTotaleRigheOrigine() {
    return ambiente_.form.errori.Esegui("CheckTotaleRigheOrigine:", false, [this] {
        const auto righe = copiaRighe();
        const ado::Field& percentuale = righe->Fields()["PERCENTUALE"];
        double totale = 0;
        if (righe->RecordCount() > 0) {
            righe->Filter("SEGNO = 2");
            if (righe->RecordCount() > 0) {
                for (righe->MoveFirst(); !righe->EndOfFile(); righe->MoveNext()) {
                    totale += nullSafeNumber(percentuale.Value()); // an empty percentage counts as 0
                }
            }
            righe->Filter(ado::adFilterNone);
        }
        return totale <= percentualePiena;
    });
}

bool RegoleCorrelazione::CheckTotalePartiteProposte() {
    return ambiente_.form.errori.Esegui("CheckTotalePartiteProposte:", false, [this] {
        const auto righe = copiaRighe();
        const ado::Field& segno = righe->Fields()["SEGNO"];
        const ado::Field& percentuale = righe->Fields()["PERCENTUALE"];
        double serie = 0;
        bool violata = false;
        if (righe->RecordCount() > 0) { // a correlation without rows can be saved: it deletes what is stored
            righe->MoveFirst();
        }
        for (; !righe->EndOfFile() && !violata; righe->MoveNext()) {
            if (eOrigine(segno)) {
                violata = serie > percentualePiena;
                serie = 0;
            } else {
                serie += aDueDecimali(nullSafeNumber(percentuale.Value()));
            }
        }
        return !violata && aDueDecimali(serie) <= percentualePiena;
    });
}

std::optional<ado::Bookmark> RegoleCorrelazione::RigaSenzaConto() const {
    const auto righe = copiaRighe();
    const ado::Field& conto = righe->Fields()["CONTO"];
    for (; !righe->EndOfFile(); righe->MoveNext()) {
        if (nullSafeText(conto.Value()).empty()) {
            return righe->Bookmark();
        }
    }
    return std::nullopt;
}

void RegoleCorrelazione::ImpostaDefaultSegno() {
    ambiente_.form.errori.Esegui("ImpostaDefaultSegno:", [this] {
        const auto righe = copiaRighe();
        const ado::Field& segno = righe->Fields()["SEGNO"];
        const ado::Field& percentuale = righe->Fields()["PERCENTUALE"];
        ado::Field& nuovo = frame_.Dettaglio()->Recordset()->Fields()["SEGNO"];
        righe->MoveFirst();
        if (righe->RecordCount() < 2) {
            nuovo.Value(static_cast<std::int16_t>(segnoAvere));
            return;
        }
        // In hundredths, as the column holds them: a run that is full is full. An empty percentage makes the
        // run unknown until the next origin, and an unknown run has no room.
        std::optional<std::int64_t> serie = 0;
        bool dopoOrigine = false;
        for (; righe->AbsolutePosition() < righe->RecordCount(); righe->MoveNext()) {
            dopoOrigine = eOrigine(segno);
            const Value& valore = percentuale.Value();
            if (dopoOrigine) {
                serie = 0;
            } else if (valore.isNull()) {
                serie.reset();
            } else if (serie) {
                *serie += std::llround(valore.toDouble() * 100);
            }
        }
        const bool restaSpazio = serie && *serie < std::llround(percentualePiena * 100);
        nuovo.Value(static_cast<std::int16_t>(dopoOrigine || restaSpazio ? segnoDare : segnoAvere));
    });
}

bool RegoleCorrelazione::EnumerazioneRigheDettaglio() {
    return ambiente_.form.errori.Esegui("EnumerazioneRigheDettaglio:", false, [this] {
        const auto righe = copiaRighe();
        ado::Field& prog = righe->Fields()["PROG"];
        std::int16_t numero = 0;
        if (righe->RecordCount() > 0) {
            righe->MoveFirst();
        }
        for (; !righe->EndOfFile(); righe->MoveNext()) {
            if (numero == std::numeric_limits<std::int16_t>::max()) {
                throw std::overflow_error("La correlazione ha troppe righe per poterle numerare");
            }
            prog.Value(++numero);
        }
        return true;
    });
}

} // namespace veldran
