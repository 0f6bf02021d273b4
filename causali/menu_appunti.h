#pragma once

#include "causali/copie_correlazioni.h"
#include "host/ambiente.h"

#include <string>

namespace veldran {

/// The menu captions that depend on what a clipboard holds.
struct VociAppunti {
    ModoAppunti modo = ModoAppunti::Vuoto;
    std::string didascalia;

    bool Vuoti() const { return modo == ModoAppunti::Vuoto; }
    std::string Incolla() const { return Vuoti() ? "Incolla correlazione" : "Incolla corr. " + didascalia; }
    std::string Annulla() const {
        switch (modo) {
        case ModoAppunti::Copia:
            return "Annulla copia correlazione";
        case ModoAppunti::Taglia:
            return "Annulla taglia correlazione";
        case ModoAppunti::Vuoto:
            break;
        }
        return "Annulla";
    }
};

/// Asks before stored correlations go. \return false: nothing is to be done.
inline bool conferma(AmbienteDiLavoro& form, const std::string& domanda) {
    return form.errori.Messaggi()->ShowBox(domanda, services::styleYesNo | services::styleExclamation,
                                           "Attenzione") == services::answerYes;
}

} // namespace veldran
