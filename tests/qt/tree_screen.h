#pragma once

#include "adapters/qt/tree_model.h"
#include "adapters/qt/tree_widget.h"
#include "adapters/qt/twips.h"
#include "platform/controls/form.h"
#include "platform/controls/tree_view.h"

#include <gtest/gtest.h>

#include <QTest>
#include <string>
#include <vector>

namespace veldran::qt {

struct TreeForm : controls::Form {
    TreeForm() : Form("FRM_TREE") {}
    controls::TreeView tree{*this, "TRW_CONTI"};
};

/// A shown tree with a real chart's shape: two roots, a branch with three accounts under the first. Writes
/// down the control's events.
class TreeScreen : public testing::Test {
protected:
    TreeScreen() {
        const auto log = [this](const char* event) {
            return [this, event](controls::TreeNode& node) { lines.push_back(event + (" " + node.Key())); };
        };
        keep(form.tree.Expand.subscribe(log("expand")));
        keep(form.tree.Collapse.subscribe(log("collapse")));
        keep(form.tree.NodeClick.subscribe(log("click")));
        keep(form.tree.NodeCheck.subscribe(log("check")));
        keep(form.tree.DblClick.subscribe([this] { lines.push_back("dblclick"); }));
        branch = &form.tree.Add(first, "branch", "01/02/03/0000 - Cassa", 3, 3);
        for (int i = 1; i <= 3; ++i) {
            const std::string number = std::to_string(i);
            accounts.push_back(
                &form.tree.Add(branch, "account" + number, "01/02/03/000" + number + " - Conto", 5, 5));
        }
        form.tree.Add(second, "placeholder");
        form.tree.SetSelectedItem(first);
        widget.resize(500, 400);
        widget.show();
        widget.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&widget));
        widget.setFocus();
    }

    void keep(Subscription subscription) { kept_.push_back(std::move(subscription)); }

    QModelIndex indexOf(const controls::TreeNode* node) const {
        return static_cast<const TreeModel*>(widget.model())->indexOf(node);
    }
    QRect rowOf(const controls::TreeNode* node) const { return widget.visualRect(indexOf(node)); }
    QPoint labelOf(const controls::TreeNode* node) const {
        return {rowOf(node).left() + 60, rowOf(node).center().y()};
    }
    QPoint checkBoxOf(const controls::TreeNode* node) const {
        return {rowOf(node).left() + 9, rowOf(node).center().y()};
    }
    QPoint arrowOf(const controls::TreeNode* node) const {
        return {rowOf(node).left() - widget.indentation() / 2, rowOf(node).center().y()};
    }
    void click(const QPoint& at, Qt::MouseButton button = Qt::LeftButton) {
        QTest::mouseClick(widget.viewport(), button, Qt::NoModifier, at);
    }
    void key(Qt::Key code, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(&widget, code, modifiers);
    }

    TreeForm form;
    controls::TreeNode* first = &form.tree.Add(nullptr, "first", "Conti d'ordine", 1, 1);
    controls::TreeNode* second = &form.tree.Add(nullptr, "second", "Conti patrimoniali", 1, 1);
    controls::TreeNode* branch = nullptr;
    std::vector<controls::TreeNode*> accounts;
    TreeWidget widget{form.tree};
    std::vector<std::string> lines;

private:
    std::vector<Subscription> kept_;
};

using Lines = std::vector<std::string>;

} // namespace veldran::qt
