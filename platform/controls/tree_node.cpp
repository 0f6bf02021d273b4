#include "platform/controls/tree_node.h"

#include "platform/controls/tree_view.h"

#include <utility>

namespace veldran::controls {

TreeNode::TreeNode(TreeView& tree, TreeNode* parent, TextPair texts, int image, int selectedImage)
    : tree_(tree), parent_(parent), texts_(std::move(texts)), image_(static_cast<std::int16_t>(image)),
      selectedImage_(static_cast<std::int16_t>(selectedImage)) {}

TreeNode::~TreeNode() = default;

TreeNode* TreeNode::Parent() const {
    return parent_ == nullptr || parent_->parent_ == nullptr ? nullptr : parent_;
}

TreeNode* TreeNode::Next() const {
    return parent_ == nullptr || index_ + 1 >= parent_->Children() ? nullptr : parent_->ChildAt(index_ + 1);
}

TreeNode::Below& TreeNode::below() {
    if (below_ == nullptr) {
        below_ = std::make_unique<Below>();
    }
    return *below_;
}

void TreeNode::SetText(std::string_view text) {
    if (text != texts_.second()) {
        texts_ = TextPair(texts_.first(), text);
        changed();
    }
}

void TreeNode::SetImage(int image) {
    if (image != image_) {
        image_ = static_cast<std::int16_t>(image);
        changed();
    }
}

void TreeNode::SetSelectedImage(int image) {
    if (image != selectedImage_) {
        selectedImage_ = static_cast<std::int16_t>(image);
        changed();
    }
}

void TreeNode::SetChecked(bool checked) {
    if (checked != checked_) {
        checked_ = checked;
        changed();
    }
}

void TreeNode::SetBold(bool bold) {
    if (bold != bold_) {
        bold_ = bold;
        changed();
    }
}

void TreeNode::SetForeColor(std::int32_t color) {
    if (color != foreColor_) {
        foreColor_ = color;
        changed();
    }
}

void TreeNode::changed() {
    tree_.nodeChanged(*this);
}

} // namespace veldran::controls
