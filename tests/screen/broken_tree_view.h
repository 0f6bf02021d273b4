#pragma once

#include "platform/controls/tree_view.h"

#include <stdexcept>
#include <string>
#include <utility>

namespace veldran::test {

/// A view of the tree that fails once, when it is told of a change of some kind.
class BrokenTreeView final : public controls::TreeViewObserver {
public:
    enum Change { Appended, Removed, Node, Selection, Locked };
    /// \param key of the node whose change fails (of the parent, for Appended); "" for any. A lock is of
    /// none.
    BrokenTreeView(controls::TreeView& tree, Change change, std::string key)
        : tree_(tree), change_(change), key_(std::move(key)) {
        tree_.SetObserver(this);
    }
    ~BrokenTreeView() override { tree_.SetObserver(nullptr); }
    BrokenTreeView(const BrokenTreeView&) = delete;
    BrokenTreeView& operator=(const BrokenTreeView&) = delete;

    void beforeAppend(controls::TreeNode* parent, int, int) override { fail(Appended, parent); }
    void afterAppend(controls::TreeNode*, int, int) override {}
    void beforeRemove(controls::TreeNode& node) override { fail(Removed, &node); }
    void afterRemove() override {}
    void beforeClear() override {}
    void afterClear() override {}
    void nodeChanged(controls::TreeNode& node) override { fail(Node, &node); }
    void expandedChanged(controls::TreeNode&) override {}
    void selectionChanged(controls::TreeNode* node) override { fail(Selection, node); }
    void scrollTo(controls::TreeNode&) override {}
    void refresh() override {}
    void redrawLocked(bool locked) override {
        if (locked) {
            fail(Locked, nullptr);
        }
    }

private:
    void fail(Change change, const controls::TreeNode* node) {
        const bool meant = key_.empty() || (node != nullptr && node->Key() == key_);
        if (change == change_ && !failed_ && meant) {
            failed_ = true;
            throw std::runtime_error("albero guasto");
        }
    }

    controls::TreeView& tree_;
    Change change_;
    std::string key_;
    bool failed_ = false;
};

} // namespace veldran::test
