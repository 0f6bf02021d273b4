#pragma once

#include "shell/tour/tour_part.h"

namespace veldran::shell {

/// The clipboards of tree and list, and the duplication, by the keyboard alone. The screen is open in
/// activation mode before and after. Before, the account has correlations for two causali; afterwards no
/// account of the tour has any.
class ClipboardJob : private TourPart {
public:
    explicit ClipboardJob(TourGround& ground) : TourPart(ground) {}

    /// \throws TourFailure at the first step that does not show what it should
    void run();

private:
    void copyInTree();
    void moveInTree();
    void duplicate();
    void copyInList();
    void moveInList();
    void removeAll();

    /// In the dialog of the duplication, which is open and closes.
    void chooseDestination(QWidget& dialog);
    /// The arrow keys choose that causale in the list.
    void chooseCausale(const std::string& causale);
    void pasteInList(const Shot& shot);

    StoredData::Rows rows_; ///< of each correlation, from the first to the last step
};

} // namespace veldran::shell
