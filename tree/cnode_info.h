#pragma once

#include "platform/controls/tree_view.h"
#include "tree/ccommand_factory.h"
#include "tree/natura.h"

#include <cstdint>
#include <memory>
#include <string>

namespace veldran {

/// What a node of the accounts tree stands for; hangs on the node as its tag.
class CNodeInfo final : public controls::NodeTag {
public:
    /// The object that a node carries; nullptr for a placeholder child.
    static CNodeInfo* Di(const controls::TreeNode& nodo) { return dynamic_cast<CNodeInfo*>(nodo.Tag()); }

    /// Indexes into the tree's image list.
    std::int16_t IconExpanded() const { return fintIconaEspanso_; }
    std::int16_t IconCollapsed() const { return fintIconaChiuso_; }
    /// The account is at the chart's last level; never true for a root.
    bool IsAnalitico() const { return fintLivello_ == fintLivelli_ && fintLivello_ > 0; }
    bool IsCorrelato() const { return fbolCorrelato_; }
    const std::string& CodiceConto() const { return fstrCodiceConto_; }
    EnumTipoNodo TipoNodo() const { return fenmTipoNodo_; }
    /// The children have been loaded.
    bool Esplorato() const { return fbolEsplorato_; }
    EnumNaturaConto NaturaConto() const { return fenmNaturaConto_; }
    const std::string& DescrizioneConto() const { return fstrDescrizioneConto_; }

    /// A leaf is explored from the start. The look of a correlated account is left to
    /// `ChangeStatoCorrelazione`.
    void Initialize(EnumTipoNodo tipoNodo, std::shared_ptr<CCommandFactory> commandFactory, bool attivo,
                    bool correlato, EnumNaturaConto naturaConto, std::int32_t codicePDC,
                    std::string codiceConto, std::string descrizioneConto, std::int16_t livello,
                    std::int16_t livelli);
    /// There is no way back: a node that must be loaded again is replaced.
    void MarkAsExplored() { fbolEsplorato_ = true; }
    /// \param nodo the node that carries this object; only an analytic account changes its look.
    void ChangeStatoCorrelazione(controls::TreeNode& nodo, bool correlato);
    /// The command that lists the children; empty for an analytic account and for an unknown kind.
    /// \throws ado::AdoError
    std::shared_ptr<ado::Command> GetCMDGetChildren() const;

private:
    std::int16_t fintIconaEspanso_ = 0;
    std::int16_t fintIconaChiuso_ = 0;
    bool fbolAttivo_ = false; ///< as created; the state the user sees is the node's check box
    bool fbolCorrelato_ = false;
    bool fbolEsplorato_ = false;
    EnumTipoNodo fenmTipoNodo_{};
    std::shared_ptr<CCommandFactory> fclsCommandFactory_; // shared by all nodes and the form
    std::int32_t flngCodicePDC_ = 0;
    std::string fstrCodiceConto_;
    std::string fstrDescrizioneConto_;
    std::int16_t fintLivello_ = 0;
    std::int16_t fintLivelli_ = 0;
    EnumNaturaConto fenmNaturaConto_ = Ordine;
};

/// Fixed images of expanded and collapsed nodes; a node's own icon is its selected image.
inline constexpr int immagineEspanso = 2;
inline constexpr int immagineChiuso = 1;

} // namespace veldran
