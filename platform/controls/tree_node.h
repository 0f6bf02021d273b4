#pragma once

#include "platform/controls/control.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace veldran::controls {

class TreeView;

/// What the form hangs on a node.
class NodeTag {
public:
    virtual ~NodeTag() = default;
};

/// One node of a tree. Owned by its parent; its address is stable until it is removed.
class TreeNode {
public:
    TreeNode(TreeView& tree, TreeNode* parent, std::string key, std::string text, int image,
             int selectedImage);
    ~TreeNode();
    TreeNode(const TreeNode&) = delete;
    TreeNode& operator=(const TreeNode&) = delete;

    const std::string& Key() const { return key_; }
    const std::string& Text() const { return text_; }
    int Image() const { return image_; }
    int SelectedImage() const { return selectedImage_; }
    bool Checked() const { return checked_; }
    bool Expanded() const { return expanded_; }
    bool Bold() const { return bold_; }
    /// 0x00BBGGRR, as the control suite writes colours: 255 is pure red.
    std::int32_t ForeColor() const { return foreColor_; }

    void SetText(std::string text);
    void SetImage(int image);
    void SetSelectedImage(int image);
    void SetChecked(bool checked); ///< by code: no `NodeCheck`
    void SetBold(bool bold);
    void SetForeColor(std::int32_t color);

    TreeNode* Parent() const; ///< nullptr for a root
    TreeNode* Child() const { return children_.empty() ? nullptr : children_.front().get(); }
    TreeNode* Next() const;
    int Children() const { return static_cast<int>(children_.size()); }
    TreeNode* ChildAt(int index) const { return children_[static_cast<std::size_t>(index)].get(); }
    int IndexInParent() const { return index_; } ///< 0-based
    /// How many of the children the tree's observer knows: fewer than `Children` while additions are held
    /// back.
    int ShownChildren() const { return shown_; }

    NodeTag* Tag() const { return tag_.get(); }
    void SetTag(std::unique_ptr<NodeTag> tag) { tag_ = std::move(tag); }

private:
    friend class TreeView;
    void changed();

    TreeView& tree_;
    TreeNode* parent_;
    std::vector<std::unique_ptr<TreeNode>> children_;
    std::unique_ptr<NodeTag> tag_;
    std::string key_;
    std::string text_;
    std::int32_t foreColor_ = 0;
    int index_ = 0;
    int shown_ = 0;
    std::int16_t image_;
    std::int16_t selectedImage_;
    bool checked_ = false;
    bool expanded_ = false;
    bool bold_ = false;
};

} // namespace veldran::controls
