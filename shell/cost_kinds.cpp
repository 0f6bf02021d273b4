#include "shell/cost_kinds.h"

#include <QStringList>

namespace veldran::shell {

const std::array<CostKind, 10>& costKinds() {
    static const std::array<CostKind, 10> kinds{{
        {1, "Collegamento"},
        {2, "Transitorio"},
        {4, "Competenza"},
        {8, "Centro di costo"},
        {16, "Lavorazione o progetto"},
        {32, "Magazzino"},
        {64, "Margine lordo"},
        {128, "Margine netto"},
        {256, "Risultato"},
        {512, "Altro tipo"},
    }};
    return kinds;
}

QString restrictionText(std::int32_t mask) {
    if ((mask & everyCostKind) == everyCostKind) {
        return {};
    }
    QStringList names;
    for (const CostKind& kind : costKinds()) {
        if ((mask & kind.bit) != 0) {
            names << QString::fromUtf8(kind.name).toLower();
        }
    }
    return names.isEmpty() ? QStringLiteral("Nessun tipo di conto è ammesso.")
                           : QStringLiteral("Solo conti di tipo: %1.").arg(names.join(QStringLiteral(", ")));
}

} // namespace veldran::shell
