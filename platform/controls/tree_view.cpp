#include "platform/controls/tree_view.h"

#include <algorithm>
#include <utility>

namespace veldran::controls {

namespace {

bool isInside(const TreeNode* node, const TreeNode& ancestor) {
    while (node != nullptr && node != &ancestor) {
        node = node->Parent();
    }
    return node != nullptr;
}

} // namespace

/// Tells a routine that raises events whether its node is still there.
class TreeView::NodeWatch {
public:
    NodeWatch(TreeView& tree, TreeNode* node) : watches_(tree.watches_), node_(node) {
        watches_->push_back(this);
    }
    ~NodeWatch() { std::erase(*watches_, this); }
    NodeWatch(const NodeWatch&) = delete;
    NodeWatch& operator=(const NodeWatch&) = delete;

    TreeNode* node() const { return node_; }
    void forget() { node_ = nullptr; }

private:
    std::shared_ptr<std::vector<NodeWatch*>> watches_; // shared: the tree may go first
    TreeNode* node_;
};

TreeView::TreeView(Container& parent, std::string name)
    : Control(parent, std::move(name)), root_(*this, nullptr, {}, 0, 0),
      watches_(std::make_shared<std::vector<NodeWatch*>>()) {}

TreeView::~TreeView() {
    observer_ = nullptr;
    dropNodes();
}

TreeNode& TreeView::Add(TreeNode* parent, TextPair texts, int image, int selectedImage) {
    TreeNode& owner = parent != nullptr ? *parent : root_;
    TreeNode::Below& below = owner.below();
    below.nodes.push_back(std::make_unique<TreeNode>(*this, &owner, std::move(texts), image, selectedImage));
    TreeNode& node = *below.nodes.back();
    node.index_ = owner.Children() - 1;
    if (observer_ == nullptr || !isShown(owner)) {
        below.shown = owner.Children(); // shown together with its owner
    } else if (locks_ == 0) {
        showAppended(owner);
    } else if (below.shown == node.index_) {
        pending_.push_back(&owner);
    }
    return node;
}

void TreeView::Remove(TreeNode& node) {
    TreeNode& owner = *node.parent_;
    if (isInside(selected_, node)) {
        selected_ = nullptr;
        if (observer_ != nullptr) {
            observer_->selectionChanged(nullptr);
        }
    }
    forgetBelow(&node);
    const bool shown = observer_ != nullptr && isShown(node);
    if (shown) {
        observer_->beforeRemove(node);
    }
    TreeNode::Below& below = owner.below();
    const auto at = below.nodes.begin() + node.index_;
    if (node.index_ < below.shown) {
        --below.shown;
    }
    const std::unique_ptr<TreeNode> gone = std::move(*at); // its tag goes last, when the tree is whole again
    for (auto next = below.nodes.erase(at); next != below.nodes.end(); ++next) {
        --(*next)->index_;
    }
    if (below.shown == owner.Children()) {
        std::erase(pending_, &owner);
    }
    if (shown) {
        observer_->afterRemove();
    }
}

void TreeView::Clear() {
    if (observer_ != nullptr) {
        observer_->beforeClear();
    }
    dropNodes();
    if (observer_ != nullptr) {
        observer_->afterClear();
    }
}

void TreeView::dropNodes() {
    forgetBelow(nullptr);
    selected_ = nullptr;
    const auto gone = std::move(root_.below_);
}

void TreeView::forgetBelow(const TreeNode* node) {
    const auto below = [node](const TreeNode* other) { return node == nullptr || isInside(other, *node); };
    std::erase_if(pending_, below);
    for (NodeWatch* watch : *watches_) {
        if (watch->node() != nullptr && below(watch->node())) {
            watch->forget();
        }
    }
}

void TreeView::SetSelectedItem(TreeNode* node) {
    if (node == selected_) {
        return;
    }
    selected_ = node;
    if (observer_ != nullptr) {
        showAllAppended();
        observer_->selectionChanged(node);
    }
}

void TreeView::SelectFromView(TreeNode& node) {
    const NodeWatch watch(*this, &node);
    SetSelectedItem(&node);
    if (watch.node() != nullptr) {
        NodeClick.raise(node);
    }
}

void TreeView::CheckFromView(TreeNode& node) {
    node.SetChecked(!node.Checked());
    NodeCheck.raise(node);
}

void TreeView::SetExpanded(TreeNode& node, bool expanded) {
    if (expanded == node.expanded_ || node.Children() == 0) {
        return;
    }
    const NodeWatch watch(*this, &node);
    node.expanded_ = expanded;
    const bool hidesSelection = !expanded && selected_ != &node && isInside(selected_, node);
    if (hidesSelection) {
        SetSelectedItem(&node);
    }
    if (observer_ != nullptr) {
        showAllAppended();
        observer_->expandedChanged(node);
    }
    (expanded ? Expand : Collapse).raise(node);
    if (hidesSelection && watch.node() != nullptr && watch.node() == selected_) {
        NodeClick.raise(node);
    }
}

void TreeView::EnsureVisible(TreeNode& node) {
    const NodeWatch watch(*this, &node);
    std::vector<TreeNode*> path;
    for (TreeNode* at = node.Parent(); at != nullptr; at = at->Parent()) {
        path.push_back(at);
    }
    for (auto at = path.rbegin(); at != path.rend() && watch.node() != nullptr; ++at) {
        SetExpanded(**at, true); // while the node is there, so are its ancestors
    }
    if (watch.node() != nullptr && observer_ != nullptr) {
        showAllAppended();
        observer_->scrollTo(node);
    }
}

void TreeView::Refresh() {
    if (observer_ != nullptr) {
        observer_->refresh();
    }
}

void TreeView::SetObserver(TreeViewObserver* observer) {
    observer_ = nullptr;
    showAllAppended();
    observer_ = observer;
}

void TreeView::nodeChanged(TreeNode& node) {
    if (observer_ != nullptr && isShown(node)) {
        observer_->nodeChanged(node);
    }
}

bool TreeView::isShown(const TreeNode& node) const {
    for (const TreeNode* at = &node; at != &root_; at = at->parent_) {
        if (at->index_ >= at->parent_->ShownChildren()) {
            return false;
        }
    }
    return true;
}

void TreeView::showAppended(TreeNode& owner) {
    const int first = owner.ShownChildren();
    const int count = owner.Children() - first;
    TreeNode* parent = &owner == &root_ ? nullptr : &owner;
    if (observer_ != nullptr) {
        observer_->beforeAppend(parent, first, count);
    }
    owner.below().shown = owner.Children();
    if (observer_ != nullptr) {
        observer_->afterAppend(parent, first, count);
    }
}

void TreeView::showAllAppended() {
    const std::vector<TreeNode*> owners = std::exchange(pending_, {});
    for (auto at = owners.begin(); at != owners.end(); ++at) {
        try {
            showAppended(**at);
        } catch (...) {
            const bool shown = (*at)->ShownChildren() == (*at)->Children();
            pending_.insert(pending_.begin(), shown ? at + 1 : at, owners.end());
            throw;
        }
    }
}

void TreeView::lockRedraw() {
    if (locks_ == 0 && observer_ != nullptr) {
        observer_->redrawLocked(true); // when the view fails there is no lock
    }
    ++locks_;
}

void TreeView::unlockRedraw() {
    if (--locks_ != 0) {
        return;
    }
    const auto paint = [this] {
        if (observer_ != nullptr) {
            observer_->redrawLocked(false);
        }
    };
    try {
        showAllAppended();
    } catch (...) {
        paint();
        throw;
    }
    paint();
}

TreeRedrawLock::~TreeRedrawLock() noexcept(false) {
    try {
        tree_.unlockRedraw();
    } catch (...) {
        if (std::uncaught_exceptions() == errors_) {
            throw;
        }
    }
}

} // namespace veldran::controls
