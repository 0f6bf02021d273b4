#include "tree/cnode_info.h"

#include <utility>

namespace veldran {

namespace {
constexpr std::int16_t iconaConto = 5;
constexpr std::int16_t iconaContoCorrelato = 6;
constexpr std::int32_t coloreCorrelato = 255; // pure red
constexpr std::int32_t coloreNormale = 0;
} // namespace

void CNodeInfo::Initialize(EnumTipoNodo tipoNodo, std::shared_ptr<CCommandFactory> commandFactory,
                           bool attivo, bool correlato, EnumNaturaConto naturaConto, std::int32_t codicePDC,
                           std::string codiceConto, std::string descrizioneConto, std::int16_t livello,
                           std::int16_t livelli) {
    fenmTipoNodo_ = tipoNodo;
    fclsCommandFactory_ = std::move(commandFactory);
    fbolAttivo_ = attivo;
    fbolCorrelato_ = correlato;
    fenmNaturaConto_ = naturaConto;
    flngCodicePDC_ = codicePDC;
    fstrCodiceConto_ = std::move(codiceConto);
    fstrDescrizioneConto_ = std::move(descrizioneConto);
    fintLivello_ = livello;
    fintLivelli_ = livelli;
    fbolEsplorato_ = tipoNodo == NodoConto;
    switch (tipoNodo) {
    case NodoRadiceContiOrdine:
    case NodoRadiceContiPatrimoniali:
    case NodoRadiceContiEconomici:
    case NodoRadiceContiNoStampa:
        fintIconaEspanso_ = 2;
        fintIconaChiuso_ = 1;
        break;
    case NodoIntermedio:
        fintIconaEspanso_ = 4;
        fintIconaChiuso_ = 3;
        break;
    case NodoConto:
        fintIconaEspanso_ = iconaConto;
        fintIconaChiuso_ = iconaConto;
        break;
    }
}

void CNodeInfo::ChangeStatoCorrelazione(controls::TreeNode& nodo, bool correlato) {
    fbolCorrelato_ = correlato;
    if (fenmTipoNodo_ != NodoConto) {
        return;
    }
    fintIconaEspanso_ = fintIconaChiuso_ = correlato ? iconaContoCorrelato : iconaConto;
    nodo.SetBold(correlato);
    nodo.SetForeColor(correlato ? coloreCorrelato : coloreNormale);
    nodo.SetImage(nodo.Expanded() ? immagineEspanso : immagineChiuso);
    nodo.SetSelectedImage(nodo.Expanded() ? IconExpanded() : IconCollapsed());
}

std::shared_ptr<ado::Command> CNodeInfo::GetCMDGetChildren() const {
    switch (fenmTipoNodo_) {
    case NodoRadiceContiOrdine:
        return fclsCommandFactory_->GetCMDChildrenRadice(Ordine);
    case NodoRadiceContiPatrimoniali:
        return fclsCommandFactory_->GetCMDChildrenRadice(Patrimoniale);
    case NodoRadiceContiEconomici:
        return fclsCommandFactory_->GetCMDChildrenRadice(Economico);
    case NodoRadiceContiNoStampa:
        return fclsCommandFactory_->GetCMDChildrenRadice(DaNonStampare);
    case NodoIntermedio:
        return fclsCommandFactory_->GetCMDChildrenContoIntermedio(
            flngCodicePDC_, fstrCodiceConto_, fintLivello_, fintLivelli_, fenmNaturaConto_);
    case NodoConto:
        break;
    }
    return nullptr;
}

} // namespace veldran
