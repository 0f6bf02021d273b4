#pragma once

#include <QIcon>
#include <QString>

namespace veldran::qt {

/// The images of the accounts tree, by their 1-based index: 1 and 2 a nature of accounts, closed and open; 3
/// and 4 a grouping account, closed and open; 5 an analytic account; 6 an analytic account with correlations.
/// Drawn as lines and surfaces, so they are crisp at every scale of the screen.
inline constexpr int treeIconCount = 6;

/// \return an icon without pictures for any other index
QIcon treeIcon(int image);

/// What assistive programs say of an image that tells more than the node's text and level; else empty.
QString spokenTreeIcon(int image);

} // namespace veldran::qt
