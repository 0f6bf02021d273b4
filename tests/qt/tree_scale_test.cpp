#include "adapters/qt/tree_delegate.h"
#include "tests/qt/tree_screen.h"

#include <QScrollBar>

namespace veldran::qt {
namespace {

constexpr int manyChildren = 100000;

/// Counts the rows whose data a view asks for.
class CountingDelegate : public TreeDelegate {
public:
    mutable int asked = 0;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        ++asked;
        TreeDelegate::initStyleOption(option, index);
    }
};

class CountingTree : public TreeWidget {
public:
    using TreeWidget::TreeWidget;
    mutable int painted = 0;

protected:
    void drawRow(QPainter* painter, const QStyleOptionViewItem& option,
                 const QModelIndex& index) const override {
        ++painted;
        TreeWidget::drawRow(painter, option, index);
    }
};

class ManyRows : public testing::Test {
protected:
    ManyRows() {
        widget.setItemDelegate(&delegate);
        widget.resize(500, 400);
        widget.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&widget));
        form.tree.Add(&root, "placeholder");
        expand_ = form.tree.Expand.subscribe([this](controls::TreeNode& node) {
            const controls::TreeRedrawLock lock(form.tree);
            form.tree.Remove(*node.Child());
            for (int i = 0; i < manyChildren; ++i) {
                form.tree.Add(&node, "k", "01/02/03/0001 - Conto", 5, 5);
            }
        });
    }

    int rowsInSight() const {
        return widget.viewport()->height() / widget.visualRect(widget.currentIndex()).height() + 2;
    }
    void settle() {
        QApplication::processEvents();
        widget.painted = 0;
        delegate.asked = 0;
    }

    TreeForm form;
    controls::TreeNode& root = form.tree.Add(nullptr, "root", "Conti economici", 1, 1);
    CountingDelegate delegate;
    CountingTree widget{form.tree};

private:
    Subscription expand_;
};

TEST_F(ManyRows, CostOnlyTheRowsInSight) {
    form.tree.SetSelectedItem(&root);
    settle();
    const auto widgetsBefore = widget.findChildren<QObject*>().size();
    form.tree.SetExpanded(root, true);
    QApplication::processEvents();
    EXPECT_EQ(root.Children(), manyChildren);
    EXPECT_GT(widget.painted, 5);
    EXPECT_LE(widget.painted, 2 * rowsInSight());
    EXPECT_LE(delegate.asked, 6 * rowsInSight());
    EXPECT_EQ(widget.findChildren<QObject*>().size(), widgetsBefore) << "no object stands for a node";
}

TEST_F(ManyRows, AreScrolledAtThePriceOfTheRowsInSight) {
    form.tree.SetSelectedItem(&root);
    form.tree.SetExpanded(root, true);
    settle();
    widget.verticalScrollBar()->setValue(widget.verticalScrollBar()->maximum());
    QApplication::processEvents();
    EXPECT_GT(widget.painted, 5);
    EXPECT_LE(widget.painted, 2 * rowsInSight());
    EXPECT_LE(delegate.asked, 6 * rowsInSight());
}

TEST_F(ManyRows, AreCheckedAtThePriceOfOneRepaint) {
    form.tree.SetSelectedItem(&root);
    form.tree.SetExpanded(root, true);
    settle();
    for (controls::TreeNode* node = root.Child(); node != nullptr; node = node->Next()) {
        node->SetChecked(true);
    }
    QApplication::processEvents();
    EXPECT_GT(widget.painted, 5);
    EXPECT_LE(widget.painted, 2 * rowsInSight());
    EXPECT_LE(delegate.asked, 6 * rowsInSight());
}

TEST_F(ManyRows, ShowTheLastOfThemWhenAsked) {
    form.tree.SetExpanded(root, true);
    controls::TreeNode& last = *root.ChildAt(manyChildren - 1);
    form.tree.SetSelectedItem(&last);
    form.tree.EnsureVisible(last);
    QApplication::processEvents();
    EXPECT_TRUE(widget.viewport()->rect().contains(widget.visualRect(widget.currentIndex())));
}

TEST_F(ManyRows, AreNotPaintedWhileTheRedrawIsLocked) {
    form.tree.SetExpanded(root, true);
    settle();
    {
        const controls::TreeRedrawLock lock(form.tree);
        form.tree.Refresh();
        root.SetText("Altro");
        QApplication::processEvents();
        EXPECT_EQ(widget.painted, 0);
    }
    QApplication::processEvents();
    EXPECT_GT(widget.painted, 0);
}

} // namespace
} // namespace veldran::qt
