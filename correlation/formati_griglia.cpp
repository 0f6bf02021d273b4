#include "correlation/formati_griglia.h"

#include "correlation/campi_analitici.h"
#include "platform/number_format.h"

namespace veldran {

FormatiGriglia::FormatiGriglia(AmbienteCorrelazioni& ambiente, CampiAnalitici& campi)
    : ambiente_(ambiente), campi_(campi) {
    const auto risponde = [this](const Formato& formato, void (FormatiGriglia::*routine)(Value&)) {
        eventi_.push_back(
            formato->Format.subscribe([this, routine](Value& valore) { (this->*routine)(valore); }));
    };
    risponde(gclsFormatConto_, &FormatiGriglia::gclsFormatConto_Format);
    risponde(gclsFormatDescrizioneConto_, &FormatiGriglia::gclsFormatDescrizioneConto_Format);
    risponde(gclsFormatVDS_, &FormatiGriglia::gclsFormatVDS_Format);
    risponde(gclsFormatDescrizioneVDS_, &FormatiGriglia::gclsFormatDescrizioneVDS_Format);
    risponde(gclsFormatPercentuale_, &FormatiGriglia::gclsFormatPercentuale_Format);
}

FormatiGriglia::Formato FormatiGriglia::formatoDi(const controls::GridColumn& colonna) const {
    if (colonna.dataField == "AVERE" || colonna.dataField == "DARE") {
        return gclsFormatConto_;
    }
    if (colonna.dataField == "CONTO") {
        return gclsFormatDescrizioneConto_;
    }
    if (colonna.dataField == "CONTOVDS") {
        return colonna.caption == "V.d.s." ? gclsFormatVDS_ : gclsFormatDescrizioneVDS_;
    }
    return colonna.dataField == "PERCENTUALE" ? gclsFormatPercentuale_ : nullptr;
}

void FormatiGriglia::Assegna(controls::DataGrid& griglia) const {
    for (std::size_t colonna = 0; colonna < griglia.Columns().size(); ++colonna) {
        griglia.SetColumnFormat(colonna, formatoDi(griglia.Columns()[colonna]));
    }
}

void FormatiGriglia::Togli(controls::DataGrid& griglia) {
    for (std::size_t colonna = 0; colonna < griglia.Columns().size(); ++colonna) {
        griglia.SetColumnFormat(colonna, nullptr);
    }
}

void FormatiGriglia::gclsFormatConto_Format(Value& valore) {
    ambiente_.form.errori.Esegui("gclsFormatConto_Format", [&] {
        const std::string conto = nullSafeText(valore);
        if (!conto.empty()) {
            valore = campi_.FormaConto(conto);
        }
    });
}

void FormatiGriglia::gclsFormatVDS_Format(Value& valore) {
    ambiente_.form.errori.Esegui("gclsFormatVDS_Format", [&] {
        const std::string vds = nullSafeText(valore);
        if (ambiente_.gestioneVds && !vds.empty()) {
            valore = campi_.FormaVDS(vds);
        }
    });
}

void FormatiGriglia::gclsFormatDescrizioneConto_Format(Value& valore) {
    ambiente_.form.errori.Esegui("gclsFormatDescrizioneConto_Format", [&] {
        const std::string conto = nullSafeText(valore);
        if (!conto.empty()) {
            valore = campi_.DescrizioneConto(conto);
        }
    });
}

void FormatiGriglia::gclsFormatDescrizioneVDS_Format(Value& valore) {
    ambiente_.form.errori.Esegui("gclsFormatDescrizioneVDS_Format", [&] {
        const std::string vds = nullSafeText(valore);
        if (ambiente_.gestioneVds && !vds.empty()) {
            valore = campi_.DescrizioneVDS(vds);
        }
    });
}

void FormatiGriglia::gclsFormatPercentuale_Format(Value& valore) {
    ambiente_.form.errori.Esegui("gclsFormatPercentuale_Format", [&] {
        if (!nullSafeText(valore).empty()) {
            valore = formatNumber(valore, "##0.00") + "%";
        }
    });
}

} // namespace veldran
