#include "tree/dizionario_nodi.h"

#include <algorithm>
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
    while (posti_[posto] != nullptr &&
           (impronte_[posto] != impronta || posti_[posto]->Texts().first() != chiave)) {
        posto = postoSeguente(posto);
    }
    return posti_[posto];
}

void DizionarioNodi::Aggiungi(controls::TreeNode& nodo) {
    Riserva(1);
    metti(nodo, improntaDi(nodo.Texts().first()));
    ++nodi_;
}

void DizionarioNodi::Riserva(std::size_t altri) {
    constexpr std::size_t minimo = 64;
    const std::size_t bastano = (nodi_ + altri) * 5 / 4 + 1;
    if (bastano > posti_.size()) {
        allarga(std::max({minimo, bastano, posti_.size() + posti_.size() / 2}));
    }
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

void DizionarioNodi::allarga(std::size_t quanti) {
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
