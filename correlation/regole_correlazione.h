#pragma once

#include "correlation/ambiente_correlazioni.h"
#include "platform/ado/recordset.h"

#include <memory>
#include <optional>

namespace veldran {

class FrameCorrelazioni;

/// The rules that keep the percentages of a correlation consistent, and the numbering of its rows.
///
/// Rows form groups: an origin row (sign Avere) and the destination rows (sign Dare) behind it that share it
/// out. Each rule walks a cursor of its own over the detail's rows, so that no current row moves.
class RegoleCorrelazione {
public:
    RegoleCorrelazione(AmbienteCorrelazioni& ambiente, FrameCorrelazioni& frame)
        : ambiente_(ambiente), frame_(frame) {}

    /// The origin rows together are at most 100. \return false when they are more, and after a failure.
    bool CheckTotaleRigheOrigine();
    /// Every run of destination rows is at most 100: as accumulated in double precision where an origin row
    /// closes it, rounded to two decimals where the rows end. \return false when one is more, and after a
    /// failure.
    bool CheckTotalePartiteProposte();
    /// The first row without an account; nothing when each has one. \throws ado::AdoError
    std::optional<ado::Bookmark> RigaSenzaConto() const;
    /// Sets the sign of the new row, which is the last: an origin first, then destinations until their run is
    /// full.
    void ImpostaDefaultSegno();
    /// Numbers the rows 1, 2, 3 ... in their order. \return false after a failure; a 16-bit number that
    /// overflows is one.
    bool EnumerazioneRigheDettaglio();

private:
    std::shared_ptr<ado::Recordset> copiaRighe() const;

    AmbienteCorrelazioni& ambiente_;
    FrameCorrelazioni& frame_;
};

} // namespace veldran
