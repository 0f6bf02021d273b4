#pragma once

#include "platform/controls/tree_view.h"
#include "platform/text_pair.h"
#include "tree/ccommand_factory.h"
#include "tree/natura.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace veldran {

/// What a node of the accounts tree stands for; hangs on the node as its tag.
class CNodeInfo final : public controls::NodeTag {
public:
    /// The object that a node carries; nullptr for a placeholder child.
    static CNodeInfo* Di(const controls::TreeNode& nodo) { return dynamic_cast<CNodeInfo*>(nodo.Tag()); }
    /// The same; nullptr without a node.
    static CNodeInfo* Di(const controls::TreeNode* nodo) { return nodo == nullptr ? nullptr : Di(*nodo); }

    /// Indexes into the tree's image list.
    std::int16_t IconExpanded() const;
    std::int16_t IconCollapsed() const;
    /// The account is at the chart's last level; never true for a root.
    bool IsAnalitico() const { return fintLivello_ == fintLivelli_ && fintLivello_ > 0; }
    bool IsCorrelato() const { return fbolCorrelato_; }
    std::string CodiceConto() const { return std::string(testi_.first()); }
    EnumTipoNodo TipoNodo() const { return static_cast<EnumTipoNodo>(fenmTipoNodo_); }
    /// The children have been loaded.
    bool Esplorato() const { return fbolEsplorato_; }
    EnumNaturaConto NaturaConto() const { return static_cast<EnumNaturaConto>(fenmNaturaConto_); }
    std::string DescrizioneConto() const { return std::string(testi_.second()); }

    /// A leaf is explored from the start. The look of a correlated account is left to
    /// `ChangeStatoCorrelazione`.
    /// \param commandFactory must outlive the object's last `GetCMDGetChildren`
    /// \param testiNodo the node's key and text: code and description are kept there if both occur in them,
    /// and stay what they are when the node's text changes
    void Initialize(EnumTipoNodo tipoNodo, CCommandFactory& commandFactory, bool attivo, bool correlato,
                    EnumNaturaConto naturaConto, std::int32_t codicePDC, std::string_view codiceConto,
                    std::string_view descrizioneConto, std::int16_t livello, std::int16_t livelli,
                    const TextPair& testiNodo = {});
    /// There is no way back: a node that must be loaded again is replaced.
    void MarkAsExplored() { fbolEsplorato_ = true; }
    /// \param nodo the node that carries this object; only an analytic account changes its look.
    void ChangeStatoCorrelazione(controls::TreeNode& nodo, bool correlato);
    /// The command that lists the children; empty for an analytic account and for an unknown kind.
    /// \throws ado::AdoError
    std::shared_ptr<ado::Command> GetCMDGetChildren() const;

private:
    // A million of these may hang in a tree: icons follow from the rest, and small numbers share a word.
    CCommandFactory* fclsCommandFactory_ = nullptr; // the same for all nodes
    TextParts testi_;                               ///< code and description
    std::int32_t flngCodicePDC_ = 0;
    std::uint32_t fenmTipoNodo_ : 4 = 0;
    std::uint32_t fenmNaturaConto_ : 4 = 0;
    std::uint32_t fintLivello_ : 9 = 0;
    std::uint32_t fintLivelli_ : 9 = 0;
    bool fbolAttivo_ : 1 = false; ///< as created; the state the user sees is the node's check box
    bool fbolCorrelato_ : 1 = false;
    bool fbolEsplorato_ : 1 = false;
    bool fbolAspettoCorrelato_ : 1 = false; ///< the look of a correlated account was given to it
};

/// Fixed images of expanded and collapsed nodes; a node's own icon is its selected image.
inline constexpr int immagineEspanso = 2;
inline constexpr int immagineChiuso = 1;

} // namespace veldran
