#include "tests/qt/tree_screen.h"

#include <QAbstractItemModelTester>
#include <QColor>
#include <QFont>
#include <QIcon>
#include <memory>
#include <optional>
#include <random>

namespace veldran::qt {
namespace {

using controls::TreeNode;

/// Turns the warnings of Qt, and so the findings of its model tester, into failures of the test.
class WarningsFail {
public:
    WarningsFail() : before_(qInstallMessageHandler(fail)) {}
    ~WarningsFail() { qInstallMessageHandler(before_); }

private:
    static void fail(QtMsgType type, const QMessageLogContext&, const QString& text) {
        if (type != QtDebugMsg && type != QtInfoMsg) {
            ADD_FAILURE() << text.toStdString();
        }
    }
    QtMessageHandler before_;
};

using Model = TreeScreen;

TEST_F(Model, ShowsTextCheckBoxWeightAndColour) {
    const auto data = [&](int role) { return indexOf(first).data(role); };
    EXPECT_EQ(data(Qt::DisplayRole).toString(), QStringLiteral("Conti d'ordine"));
    EXPECT_EQ(data(Qt::CheckStateRole).toInt(), Qt::Unchecked);
    EXPECT_FALSE(data(Qt::FontRole).isValid());
    EXPECT_FALSE(data(Qt::ForegroundRole).isValid());
    first->SetChecked(true);
    first->SetBold(true);
    first->SetForeColor(255);
    EXPECT_EQ(data(Qt::CheckStateRole).toInt(), Qt::Checked);
    EXPECT_TRUE(data(Qt::FontRole).value<QFont>().bold());
    EXPECT_EQ(data(Qt::ForegroundRole).value<QColor>(), QColor(Qt::red)) << "255 is pure red";
    first->SetForeColor(0xFF0000);
    EXPECT_EQ(data(Qt::ForegroundRole).value<QColor>(), QColor(Qt::blue));
}

TEST_F(Model, ShowsTheSelectedImageOnTheSelectedRowAlone) {
    const auto imageOf = [&](TreeNode* node) {
        return indexOf(node).data(Qt::DecorationRole).value<QIcon>().pixmap(16, 16).toImage();
    };
    for (TreeNode* node : {first, second}) {
        node->SetImage(1);
        node->SetSelectedImage(6);
    }
    EXPECT_NE(imageOf(first), imageOf(second));
    const QImage selected = imageOf(first);
    form.tree.SetSelectedItem(second);
    EXPECT_EQ(imageOf(second), selected);
    EXPECT_NE(imageOf(first), selected);
}

TEST_F(Model, ShowsNoImageForAPlaceholder) {
    EXPECT_FALSE(indexOf(second->Child()).data(Qt::DecorationRole).isValid());
}

TEST_F(Model, TogglesByAnAssistiveProgramAsByTheUser) {
    EXPECT_TRUE(widget.model()->setData(indexOf(second), Qt::Checked, Qt::CheckStateRole));
    EXPECT_TRUE(widget.model()->setData(indexOf(second), Qt::Checked, Qt::CheckStateRole));
    EXPECT_EQ(lines, (Lines{"check second"}));
    EXPECT_FALSE(widget.model()->setData(indexOf(second), QStringLiteral("x"), Qt::EditRole));
}

TEST_F(Model, FollowsTheControlThroughSelectionAndExpansion) {
    form.tree.SetSelectedItem(second);
    EXPECT_EQ(widget.currentIndex(), indexOf(second));
    form.tree.SetExpanded(*second, true);
    EXPECT_TRUE(widget.isExpanded(indexOf(second)));
    form.tree.SetSelectedItem(nullptr);
    EXPECT_FALSE(widget.currentIndex().isValid());
    EXPECT_FALSE(widget.selectionModel()->hasSelection());
    EXPECT_EQ(lines, (Lines{"expand second"})) << "what the code does is no click";
}

TEST_F(Model, LosesTheSelectionWithItsNodeAndTakesNoOther) {
    form.tree.SetSelectedItem(second);
    form.tree.Remove(*second);
    EXPECT_EQ(form.tree.SelectedItem(), nullptr);
    EXPECT_FALSE(widget.currentIndex().isValid());
    EXPECT_TRUE(lines.empty());
}

TEST_F(Model, IsFilledAgainAfterClearUnderOneLock) {
    {
        const controls::TreeRedrawLock lock(form.tree);
        form.tree.Clear();
        TreeNode& root = form.tree.Add(nullptr, "r", "Nuovo", 1, 1);
        form.tree.Add(&root, "p");
        form.tree.SetSelectedItem(&root);
        EXPECT_FALSE(widget.updatesEnabled());
    }
    EXPECT_TRUE(widget.updatesEnabled());
    EXPECT_EQ(widget.model()->rowCount(), 1);
    EXPECT_EQ(widget.currentIndex(), indexOf(form.tree.FirstRoot()));
}

TEST_F(Model, OpensTheWayToANodeAddedUnderTheLock) {
    TreeNode* deep = nullptr;
    {
        const controls::TreeRedrawLock lock(form.tree);
        TreeNode& middle = form.tree.Add(second, "middle", "02/00 - Passività", 3, 3);
        deep = &form.tree.Add(&middle, "deep", "02/01 - Fornitori", 5, 5);
        form.tree.EnsureVisible(*deep);
        form.tree.SetSelectedItem(deep);
    }
    EXPECT_TRUE(widget.isExpanded(indexOf(second)));
    EXPECT_TRUE(widget.isExpanded(indexOf(deep->Parent())));
    EXPECT_EQ(widget.currentIndex(), indexOf(deep));
    EXPECT_TRUE(widget.viewport()->rect().contains(rowOf(deep)));
}

TEST(ModelLate, ShowsWhatTheControlHeldBeforeItsViewCame) {
    TreeForm form;
    TreeNode& root = form.tree.Add(nullptr, "r", "Radice", 1, 1);
    TreeNode& leaf = form.tree.Add(&root, "l", "Foglia", 5, 5);
    form.tree.EnsureVisible(leaf);
    form.tree.SetSelectedItem(&leaf);
    TreeWidget widget(form.tree);
    const auto* model = static_cast<TreeModel*>(widget.model());
    EXPECT_TRUE(widget.isExpanded(model->indexOf(&root)));
    EXPECT_EQ(widget.currentIndex(), model->indexOf(&leaf));
}

TEST(ModelLife, LeavesTheControlFreeForAnotherView) {
    TreeForm form;
    form.tree.Add(nullptr, "r", "Radice", 1, 1);
    { const TreeWidget widget(form.tree); }
    form.tree.Add(nullptr, "s", "Altra", 1, 1);
    EXPECT_EQ(form.tree.HitTest(5, 5).node, nullptr);
    const TreeWidget again(form.tree);
    EXPECT_EQ(again.model()->rowCount(), 2);
}

/// Compares the whole model with the control, node by node.
void expectSame(const controls::TreeView& tree, const TreeWidget& widget, const QModelIndex& parent = {}) {
    const auto* node = TreeModel::nodeOf(parent);
    const int count = node != nullptr ? node->Children() : tree.RootCount();
    ASSERT_EQ(widget.model()->rowCount(parent), count);
    for (int i = 0; i < count; ++i) {
        const QModelIndex index = widget.model()->index(i, 0, parent);
        const TreeNode* child = node != nullptr ? node->ChildAt(i) : tree.RootAt(i);
        ASSERT_EQ(TreeModel::nodeOf(index), child);
        if (child->Children() > 0) {
            ASSERT_EQ(widget.isExpanded(index), child->Expanded()) << child->Key();
        }
        expectSame(tree, widget, index);
    }
}

/// Any sequence of what a form does to its tree, with locks around some of it.
class RandomLife {
public:
    RandomLife(controls::TreeView& tree, unsigned seed) : tree_(tree), random_(seed) {}

    void step() {
        switch (below(12)) {
        case 0:
        case 1:
        case 2:
        case 3:
            tree_.Add(anyNode(), "n" + std::to_string(++keys_), "Nodo", 3, 4);
            break;
        case 4:
            if (TreeNode* node = anyNode()) {
                tree_.Remove(*node);
            }
            break;
        case 5:
        case 6:
            if (TreeNode* node = anyNode()) {
                tree_.SetExpanded(*node, !node->Expanded());
            }
            break;
        case 7:
            tree_.SetSelectedItem(anyNode());
            break;
        case 8:
            if (TreeNode* node = anyNode()) {
                tree_.EnsureVisible(*node);
            }
            break;
        case 9:
            if (TreeNode* node = anyNode()) {
                node->SetChecked(!node->Checked());
            }
            break;
        case 10:
            locks_.size() < 2 && below(2) == 0
                ? locks_.push_back(std::make_unique<controls::TreeRedrawLock>(tree_))
                : locks_.clear();
            break;
        default:
            if (below(60) == 0) {
                tree_.Clear();
            }
        }
    }
    void unlock() { locks_.clear(); }

private:
    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }

    TreeNode* anyNode() {
        TreeNode* node = nullptr;
        for (int depth = below(6); depth > 0; --depth) {
            const int count = node != nullptr ? node->Children() : tree_.RootCount();
            if (count == 0) {
                break;
            }
            node = node != nullptr ? node->ChildAt(below(count)) : tree_.RootAt(below(count));
        }
        return node;
    }

    controls::TreeView& tree_;
    std::mt19937 random_;
    std::vector<std::unique_ptr<controls::TreeRedrawLock>> locks_;
    int keys_ = 0;
};

TEST_F(Model, HoldsThroughAnySequenceOfChanges) {
    const WarningsFail warningsFail;
    QAbstractItemModelTester tester(widget.model(), QAbstractItemModelTester::FailureReportingMode::Warning);
    for (const unsigned seed : {1U, 7U, 23U}) {
        RandomLife life(form.tree, seed);
        for (int i = 0; i < 1200; ++i) {
            life.step();
            if (i % 100 == 99) {
                life.unlock();
                expectSame(form.tree, widget);
                QApplication::processEvents();
                ASSERT_EQ(widget.currentIndex(), indexOf(form.tree.SelectedItem()));
            }
        }
    }
}

} // namespace
} // namespace veldran::qt
