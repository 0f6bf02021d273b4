#pragma once

#include "platform/controls/list_view.h"

namespace veldran {

/// The clipboard of one causale's correlation, as the list's keys and menu reach it. The list asks only while
/// a row is selected.
class AppuntiCausali {
public:
    virtual ~AppuntiCausali() = default;
    /// A copied or cut correlation waits to be pasted.
    virtual bool CorrelazioneInSospeso() const = 0;
    virtual void AttivazioneCopiaList() = 0;
    virtual void AttivazioneTagliaList() = 0;
    virtual void IncollaCorrelazioneList() = 0;
    /// Opens the list's menu for a row: at a point of the list in twips, or beside `ancora` when it is given.
    virtual void PopupListMenu(const controls::ListView::Item& riga, int x, int y,
                               const controls::Control* ancora) = 0;
    /// The correlation of some causale of the account was deleted.
    virtual void CorrelazioneEliminata() = 0;
};

} // namespace veldran
