#include "tree/cnode_info.h"

namespace veldran {

namespace {
constexpr std::int16_t iconaConto = 5;
constexpr std::int16_t iconaContoCorrelato = 6;
constexpr std::int32_t coloreCorrelato = 255; // pure red
constexpr std::int32_t coloreNormale = 0;

constexpr std::uint32_t massimo4Bit = 0xF;
constexpr std::uint32_t massimo9Bit = 0x1FF;

/// `valore` when it is one of 0 to `massimo`, else `altrimenti`: a bit field would make another number of it.
constexpr std::uint32_t entro(int valore, std::uint32_t massimo, std::uint32_t altrimenti) {
    const auto positivo = static_cast<std::uint32_t>(valore);
    return valore >= 0 && positivo <= massimo ? positivo : altrimenti;
}

} // namespace

std::int16_t CNodeInfo::IconExpanded() const {
    switch (TipoNodo()) {
    case NodoRadiceContiOrdine:
    case NodoRadiceContiPatrimoniali:
    case NodoRadiceContiEconomici:
    case NodoRadiceContiNoStampa:
        return 2;
    case NodoIntermedio:
        return 4;
    case NodoConto:
        return fbolAspettoCorrelato_ ? iconaContoCorrelato : iconaConto;
    }
    return 0;
}

std::int16_t CNodeInfo::IconCollapsed() const {
    switch (TipoNodo()) {
    case NodoRadiceContiOrdine:
    case NodoRadiceContiPatrimoniali:
    case NodoRadiceContiEconomici:
    case NodoRadiceContiNoStampa:
        return 1;
    case NodoIntermedio:
        return 3;
    case NodoConto:
        return IconExpanded();
    }
    return 0;
}

void CNodeInfo::Initialize(EnumTipoNodo tipoNodo, CCommandFactory& commandFactory, bool attivo,
                           bool correlato, EnumNaturaConto naturaConto, std::int32_t codicePDC,
                           std::string_view codiceConto, std::string_view descrizioneConto,
                           std::int16_t livello, std::int16_t livelli, const TextPair& testiNodo) {
    fclsCommandFactory_ = &commandFactory;
    testi_ = TextParts(codiceConto, descrizioneConto, testiNodo);
    flngCodicePDC_ = codicePDC;
    fenmTipoNodo_ = entro(tipoNodo, massimo4Bit, 0) & massimo4Bit;
    fenmNaturaConto_ = entro(naturaConto, massimo4Bit, massimo4Bit) & massimo4Bit;
    fintLivello_ = entro(livello, massimo9Bit, 0) & massimo9Bit;
    fintLivelli_ = entro(livelli, massimo9Bit, 0) & massimo9Bit;
    fbolAttivo_ = attivo;
    fbolCorrelato_ = correlato;
    fbolEsplorato_ = tipoNodo == NodoConto;
    fbolAspettoCorrelato_ = false;
}

void CNodeInfo::ChangeStatoCorrelazione(controls::TreeNode& nodo, bool correlato) {
    fbolCorrelato_ = correlato;
    if (TipoNodo() != NodoConto) {
        return;
    }
    fbolAspettoCorrelato_ = correlato;
    nodo.SetBold(correlato);
    nodo.SetForeColor(correlato ? coloreCorrelato : coloreNormale);
    nodo.SetImage(nodo.Expanded() ? immagineEspanso : immagineChiuso);
    nodo.SetSelectedImage(nodo.Expanded() ? IconExpanded() : IconCollapsed());
}

std::shared_ptr<ado::Command> CNodeInfo::GetCMDGetChildren() const {
    switch (TipoNodo()) {
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
            flngCodicePDC_, CodiceConto(), static_cast<std::int16_t>(fintLivello_),
            static_cast<std::int16_t>(fintLivelli_), NaturaConto());
    case NodoConto:
        break;
    }
    return nullptr;
}

} // namespace veldran
