#pragma once

#include "correlation/ambiente_correlazioni.h"
#include "platform/controls/data_grid.h"

#include <memory>
#include <vector>

namespace veldran {

class CampiAnalitici;

/// The formats through which the grid shows the rows of a correlation; stored values are unchanged.
class FormatiGriglia {
public:
    FormatiGriglia(AmbienteCorrelazioni& ambiente, CampiAnalitici& campi);

    /// Gives each column its format, by its field (and by its caption, where two columns share a field).
    void Assegna(controls::DataGrid& griglia) const;
    static void Togli(controls::DataGrid& griglia);

    void gclsFormatConto_Format(Value& valore);
    void gclsFormatVDS_Format(Value& valore);
    void gclsFormatDescrizioneConto_Format(Value& valore);
    void gclsFormatDescrizioneVDS_Format(Value& valore);
    void gclsFormatPercentuale_Format(Value& valore);

private:
    using Formato = std::shared_ptr<controls::DataFormat>; // shared with the columns it was given to
    Formato formatoDi(const controls::GridColumn& colonna) const;

    AmbienteCorrelazioni& ambiente_;
    CampiAnalitici& campi_;
    Formato gclsFormatConto_ = std::make_shared<controls::DataFormat>();
    Formato gclsFormatDescrizioneConto_ = std::make_shared<controls::DataFormat>();
    Formato gclsFormatVDS_ = std::make_shared<controls::DataFormat>();
    Formato gclsFormatDescrizioneVDS_ = std::make_shared<controls::DataFormat>();
    Formato gclsFormatPercentuale_ = std::make_shared<controls::DataFormat>();
    std::vector<Subscription> eventi_;
};

} // namespace veldran
