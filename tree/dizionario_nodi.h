#pragma once

#include "platform/controls/tree_node.h"

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace veldran {

/// Finds a node by its key. There may be a million nodes, so it keeps no keys: it tells nodes apart by a
/// hash, and asks a node for its key only when the hash is the one that is looked for. A node is in it until
/// all are forgotten.
class DizionarioNodi {
public:
    /// nullptr when no node has that key.
    controls::TreeNode* Cerca(std::string_view chiave) const;
    /// The node's key must not be in use yet.
    void Aggiungi(controls::TreeNode& nodo);
    /// Makes room at once for so many nodes more.
    void Riserva(std::size_t altri);
    void Svuota();

private:
    std::size_t primoPosto(std::uint32_t impronta) const;
    std::size_t postoSeguente(std::size_t posto) const { return posto + 1 == posti_.size() ? 0 : posto + 1; }
    void allarga(std::size_t quanti);
    void metti(controls::TreeNode& nodo, std::uint32_t impronta);

    std::vector<controls::TreeNode*> posti_; ///< by the key's hash; the next free place when it is taken
    std::vector<std::uint32_t>
        impronte_; ///< hash of each place's key; apart, for 12 bytes a place instead of 16
    std::size_t nodi_ = 0;
};

} // namespace veldran
