#pragma once

#include "platform/controls/control.h"
#include "platform/text_pair.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace veldran::controls {

class TreeView;

/// What the form hangs on a node.
class NodeTag {
public:
    virtual ~NodeTag() = default;
};

/// One node of a tree, owned by its parent, at an address that stays. There may be a million: key and text
/// share one block (65,535 bytes each at most), and what belongs to children, if any, is kept apart.
class TreeNode {
public:
    TreeNode(TreeView& tree, TreeNode* parent, TextPair texts, int image, int selectedImage);
    ~TreeNode();
    TreeNode(const TreeNode&) = delete;
    TreeNode& operator=(const TreeNode&) = delete;

    std::string Key() const { return std::string(texts_.first()); }
    std::string Text() const { return std::string(texts_.second()); }
    /// Key and text as the node keeps them now, for a tag that would hold parts of them once more.
    const TextPair& Texts() const { return texts_; }
    int Image() const { return image_; }
    int SelectedImage() const { return selectedImage_; }
    bool Checked() const { return checked_; }
    bool Expanded() const { return expanded_; }
    bool Bold() const { return bold_; }
    /// 0x00BBGGRR, as the control suite writes colours: 255 is pure red.
    std::int32_t ForeColor() const { return foreColor_; }

    void SetText(std::string_view text);
    void SetImage(int image);
    void SetSelectedImage(int image);
    void SetChecked(bool checked); ///< by code: no `NodeCheck`
    void SetBold(bool bold);
    void SetForeColor(std::int32_t color);

    TreeNode* Parent() const; ///< nullptr for a root
    TreeNode* Child() const { return Children() == 0 ? nullptr : ChildAt(0); }
    TreeNode* Next() const;
    int Children() const { return below_ == nullptr ? 0 : static_cast<int>(below_->nodes.size()); }
    TreeNode* ChildAt(int index) const { return below_->nodes[static_cast<std::size_t>(index)].get(); }
    int IndexInParent() const { return index_; } ///< 0-based
    /// How many of the children the tree's observer knows: fewer than `Children` while additions are held
    /// back.
    int ShownChildren() const { return below_ == nullptr ? 0 : below_->shown; }

    NodeTag* Tag() const { return tag_.get(); }
    void SetTag(std::unique_ptr<NodeTag> tag) { tag_ = std::move(tag); }

private:
    friend class TreeView;
    struct Below {
        std::vector<std::unique_ptr<TreeNode>> nodes;
        int shown = 0; ///< how many of them the tree's observer knows
    };
    Below& below(); ///< made when it is first needed
    void changed();

    TreeView& tree_;
    TreeNode* parent_;
    std::unique_ptr<Below> below_;
    std::unique_ptr<NodeTag> tag_;
    TextPair texts_; ///< key and text
    std::int32_t foreColor_ = 0;
    int index_ = 0;
    std::int16_t image_;
    std::int16_t selectedImage_;
    bool checked_ = false;
    bool expanded_ = false;
    bool bold_ = false;
};

} // namespace veldran::controls
