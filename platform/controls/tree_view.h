#pragma once

#include "platform/controls/tree_node.h"

#include <exception>
#include <functional>

namespace veldran::controls {

enum TreeHitFlags {
    treeHitNone = 0,
    treeHitIcon = 2,
    treeHitLabel = 4,
    treeHitIndent = 8,
    treeHitButton = 16,
    treeHitRight = 32, ///< beyond the label
    treeHitStateIcon = 64
};

/// What lies under a point of the tree.
struct TreeHit {
    TreeNode* node = nullptr;
    int flags = treeHitNone;
};

/// What a view of the tree is told. Additions are told once per parent when the redraw lock is released,
/// removals at once, so that a view never holds a node that is gone. What a view throws reaches whoever
/// changed the tree or held the lock; children that it failed to show stay due.
class TreeViewObserver {
public:
    virtual ~TreeViewObserver() = default;
    /// Children `first` .. `first + count - 1` of `parent` (nullptr: roots) are about to be shown, with all
    /// that is below them; `ShownChildren` of the parent counts them from here to `afterAppend`'s call.
    virtual void beforeAppend(TreeNode* parent, int first, int count) = 0;
    virtual void afterAppend(TreeNode* parent, int first, int count) = 0;
    virtual void beforeRemove(TreeNode& node) = 0;
    virtual void afterRemove() = 0;
    virtual void beforeClear() = 0;
    virtual void afterClear() = 0;
    /// Text, image, check box, bold or colour.
    virtual void nodeChanged(TreeNode& node) = 0;
    virtual void expandedChanged(TreeNode& node) = 0;
    virtual void selectionChanged(TreeNode* node) = 0;
    virtual void scrollTo(TreeNode& node) = 0;
    virtual void refresh() = 0;
    virtual void redrawLocked(bool locked) = 0;
};

/// A tree with check boxes, filled on demand. Owns its nodes.
class TreeView final : public Control {
public:
    TreeView(Container& parent, std::string name);
    ~TreeView() override;

    /// Appends a child of `parent`, or a root when it is nullptr.
    TreeNode& Add(TreeNode* parent, std::string_view key, std::string_view text = {}, int image = 0,
                  int selectedImage = 0) {
        return Add(parent, TextPair(key, text), image, selectedImage);
    }
    /// The same with key and text as a pair, which others may hold as well.
    TreeNode& Add(TreeNode* parent, TextPair texts, int image = 0, int selectedImage = 0);
    void Remove(TreeNode& node);
    void Clear();
    int RootCount() const { return root_.Children(); }
    TreeNode* FirstRoot() const { return root_.Child(); }
    TreeNode* RootAt(int index) const { return root_.ChildAt(index); }

    TreeNode* SelectedItem() const { return selected_; }
    /// Selects by code: no `NodeClick`.
    void SetSelectedItem(TreeNode* node);
    /// Expands the ancestors (raising `Expand` for each that was collapsed) and scrolls to the node.
    void EnsureVisible(TreeNode& node);
    void Refresh();

    /// Opens or closes a node that has children and raises `Expand` or `Collapse` when its state changes. A
    /// selection that a closing node would hide moves to that node, raising `NodeClick`.
    void SetExpanded(TreeNode& node, bool expanded);

    /// What the user does, reported by the view (or by a test).
    void SelectFromView(TreeNode& node); ///< selects and raises `NodeClick`
    void CheckFromView(TreeNode& node);  ///< toggles the check box and raises `NodeCheck`
    void MouseDownFromView(const MouseEvent& event) { MouseDown.raise(event); }
    void MouseUpFromView(const MouseEvent& event) { MouseUp.raise(event); }
    void DblClickFromView() { DblClick.raise(); }

    /// Hit test at a point in pixels; the view installs how. Nothing is hit while no view is attached.
    using HitTester = std::function<TreeHit(int x, int y)>;
    void SetHitTester(HitTester tester) { hitTester_ = std::move(tester); }
    TreeHit HitTest(int x, int y) const { return hitTester_ ? hitTester_(x, y) : TreeHit{}; }

    /// At most one view observes; nullptr detaches it. A new observer finds every node shown.
    void SetObserver(TreeViewObserver* observer);
    /// Children of `parent` (nullptr: roots) that the observer knows.
    int ShownChildren(const TreeNode* parent) const { return (parent ? *parent : root_).ShownChildren(); }

    mutable Event<TreeNode&> Expand;
    mutable Event<TreeNode&> Collapse;
    mutable Event<TreeNode&> NodeClick;
    mutable Event<TreeNode&> NodeCheck;
    mutable Event<const MouseEvent&> MouseDown;
    mutable Event<const MouseEvent&> MouseUp;
    mutable Event<> DblClick;

private:
    friend class TreeNode;
    friend class TreeRedrawLock;
    class NodeWatch;
    void nodeChanged(TreeNode& node);
    bool isShown(const TreeNode& node) const;
    void showAppended(TreeNode& parent);
    void showAllAppended();
    void forgetBelow(const TreeNode* node); ///< nullptr: every node
    void dropNodes();
    void lockRedraw();
    void unlockRedraw();

    TreeNode root_; ///< never shown; parent of the roots
    TreeNode* selected_ = nullptr;
    HitTester hitTester_;
    TreeViewObserver* observer_ = nullptr;
    int locks_ = 0;
    std::vector<TreeNode*> pending_; ///< parents with children that the observer does not know yet
    std::shared_ptr<std::vector<NodeWatch*>> watches_; // shared with the watches, which may outlive the tree
};

/// Holds back the tree's painting while it lives. Its end throws what the view throws while it shows the
/// additions, unless the lock ends because of another error, which then is the one to be reported.
class TreeRedrawLock {
public:
    explicit TreeRedrawLock(TreeView& tree) : tree_(tree) { tree_.lockRedraw(); }
    ~TreeRedrawLock() noexcept(false);
    TreeRedrawLock(const TreeRedrawLock&) = delete;
    TreeRedrawLock& operator=(const TreeRedrawLock&) = delete;

private:
    TreeView& tree_;
    int errors_ = std::uncaught_exceptions(); ///< on their way when the lock began
};

} // namespace veldran::controls
