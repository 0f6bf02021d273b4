#include "tree/dizionario_nodi.h"

#include <cstdint>
#include <functional>
#include <utility>

namespace veldran {

controls::TreeNode* DizionarioNodi::Cerca(std::string_view chiave) const {
    return posti_.empty() ? nullptr : posti_[postoDi(chiave)];
}

void DizionarioNodi::Aggiungi(controls::TreeNode& nodo) {
    if (posti_.empty() || (nodi_ + 1) * 5 > posti_.size() * 4) {
        allarga();
    }
    posti_[postoDi(nodo.Key())] = &nodo;
    ++nodi_;
}

void DizionarioNodi::Svuota() {
    posti_ = {};
    nodi_ = 0;
}

/// Where the node of that key stands, or would stand.
std::size_t DizionarioNodi::postoDi(std::string_view chiave) const {
    const std::uint64_t impronta = std::hash<std::string_view>{}(chiave) >> 32U;
    auto posto = static_cast<std::size_t>((impronta * posti_.size()) >> 32U);
    while (posti_[posto] != nullptr && posti_[posto]->Key() != chiave) {
        posto = posto + 1 == posti_.size() ? 0 : posto + 1;
    }
    return posto;
}

void DizionarioNodi::allarga() {
    constexpr std::size_t minimo = 64;
    const auto prima = std::exchange(posti_, {});
    posti_.resize(prima.empty() ? minimo : prima.size() + prima.size() / 2);
    for (controls::TreeNode* nodo : prima) {
        if (nodo != nullptr) {
            posti_[postoDi(nodo->Key())] = nodo;
        }
    }
}

} // namespace veldran
