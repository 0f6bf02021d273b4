#pragma once

#include <QString>

namespace veldran::controls {
class TreeNode;
class TreeView;
} // namespace veldran::controls

namespace veldran::qt {

/// Type-to-find. The first node on an open row, from `start` on and around the end of the tree, whose code
/// begins with what was typed (with or without its slashes) or one of whose words does, blind to case and
/// accents. Nothing is expanded and nothing is loaded.
/// \param start where to begin; nullptr is the first root
/// \param afterStart leaves `start` itself for last
/// \return nullptr when nothing matches
controls::TreeNode* findTyped(const controls::TreeView& tree, controls::TreeNode* start, bool afterStart,
                              const QString& typed);

} // namespace veldran::qt
