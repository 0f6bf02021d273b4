#include "tree/dizionario_nodi.h"

#include <functional>

namespace veldran {

namespace {

std::uint32_t improntaDi(std::string_view chiave) {
    return static_cast<std::uint32_t>(std::uint64_t{std::hash<std::string_view>{}(chiave)} >> 32U);
}

} // namespace

controls::TreeNode* DizionarioNodi::Cerca(std::string_view chiave) const {
    if (posti_.empty()) {
        return nullptr;
    }
    const std::uint32_t impronta = improntaDi(chiave);
    std::size_t posto = primoPosto(impronta);
    while (posti_[posto] != nullptr && (impronte_[posto] != impronta || posti_[posto]->Key() != chiave)) {
        posto = postoSeguente(posto);
    }
    return posti_[posto];
}

void DizionarioNodi::Aggiungi(controls::TreeNode& nodo) {
    if (posti_.empty() || (nodi_ + 1) * 5 > posti_.size() * 4) {
        allarga();
    }
    metti(nodo, improntaDi(nodo.Key()));
    ++nodi_;
}

void DizionarioNodi::Svuota() {
    posti_ = {};
    impronte_ = {};
    nodi_ = 0;
}

std::size_t DizionarioNodi::primoPosto(std::uint32_t impronta) const {
    return static_cast<std::size_t>((std::uint64_t{impronta} * posti_.size()) >> 32U);
}

void DizionarioNodi::metti(controls::TreeNode& nodo, std::uint32_t impronta) {
    std::size_t posto = primoPosto(impronta);
    while (posti_[posto] != nullptr) {
        posto = postoSeguente(posto);
    }
    posti_[posto] = &nodo;
    impronte_[posto] = impronta;
}

void DizionarioNodi::allarga() {
    constexpr std::size_t minimo = 64;
    const std::size_t quanti = posti_.empty() ? minimo : posti_.size() + posti_.size() / 2;
    std::vector<controls::TreeNode*> posti(quanti);
    std::vector<std::uint32_t> impronte(quanti);
    posti_.swap(posti);
    impronte_.swap(impronte);
    for (std::size_t posto = 0; posto < posti.size(); ++posto) {
        if (posti[posto] != nullptr) {
            metti(*posti[posto], impronte[posto]);
        }
    }
}

} // namespace veldran
