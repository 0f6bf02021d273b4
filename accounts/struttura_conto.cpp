#include "accounts/struttura_conto.h"

#include "sql/commands.h"

namespace veldran {

services::CodeStructure StrutturaConto(int livelli) {
    using sql::lunghezzaConto;
    switch (livelli) {
    case 2: // positions 3 to 5 belong to no group
        return {lunghezzaConto, {{0, 2}, {5, 5}}};
    case 3: // positions 3 and 4 belong to no group
        return {lunghezzaConto, {{0, 2}, {4, 2}, {6, 4}}};
    case 4:
        return {lunghezzaConto, {{0, 2}, {2, 2}, {4, 2}, {6, 4}}};
    case 5:
        return {lunghezzaConto, {{0, 2}, {2, 2}, {4, 2}, {6, 2}, {8, 2}}};
    default:
        return {};
    }
}

} // namespace veldran
