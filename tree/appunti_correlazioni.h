#pragma once

#include "platform/controls/tree_node.h"

namespace veldran {

/// The clipboard of whole accounts' correlations, as the tree's keys reach it. The tree asks only after its
/// own conditions on the node were met.
class AppuntiCorrelazioni {
public:
    virtual ~AppuntiCorrelazioni() = default;
    /// A copied or cut correlation waits to be pasted.
    virtual bool CorrelazioneInSospeso() const = 0;
    virtual void AttivazioneCopiaTree(controls::TreeNode& nodo) = 0;
    virtual void AttivazioneTagliaTree(controls::TreeNode& nodo) = 0;
    virtual void IncollaCorrelazioneTree(controls::TreeNode& nodo) = 0;
};

} // namespace veldran
