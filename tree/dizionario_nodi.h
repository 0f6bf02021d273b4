#pragma once

#include "platform/controls/tree_node.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace veldran {

/// Finds a node by its key. There may be a million nodes, so it keeps their addresses only and asks each for
/// its key: a node is in it until all are forgotten.
class DizionarioNodi {
public:
    /// nullptr when no node has that key.
    controls::TreeNode* Cerca(std::string_view chiave) const;
    /// The node's key must not be in use yet.
    void Aggiungi(controls::TreeNode& nodo);
    void Svuota();

private:
    std::size_t postoDi(std::string_view chiave) const;
    void allarga();

    std::vector<controls::TreeNode*> posti_; ///< by the key's hash; the next free place when it is taken
    std::size_t nodi_ = 0;
};

} // namespace veldran
