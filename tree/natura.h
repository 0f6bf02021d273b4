#pragma once

#include <cstdint>

namespace veldran {

/// Kind of a node of the accounts tree.
enum EnumTipoNodo : std::int16_t {
    NodoRadiceContiOrdine = 1,
    NodoRadiceContiPatrimoniali = 2,
    NodoRadiceContiEconomici = 3,
    NodoRadiceContiNoStampa = 4,
    NodoIntermedio = 5, ///< a grouping account
    NodoConto = 6       ///< an analytic account; a leaf
};

/// Nature of an account, as CG24_INDTIPOCONTO holds it. Root kind k lists the accounts of nature k - 1.
enum EnumNaturaConto : std::int16_t { Ordine = 0, Patrimoniale = 1, Economico = 2, DaNonStampare = 3 };

} // namespace veldran
