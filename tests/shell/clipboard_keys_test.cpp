// The two clipboards in the real host, with real events.
#include "adapters/qt/tree_widget.h"
#include "platform/ado/recordset.h"
#include "tests/shell/host_window.h"

#include <QMenu>
#include <QPushButton>
#include <QTabBar>
#include <QTableView>

namespace veldran::test {
namespace {

using qt::fromQt;
using qt::toQt;

// Accounts of one group of the demo company, both activated; the first has correlations.
constexpr const char* source = "6505050001";
constexpr const char* target = "6505050003";
constexpr const char* group = "65/05/05";

class ClipboardKeys : public ScreenKeysTest {
protected:
    void SetUp() override {
        ScreenKeysTest::SetUp();
        ASSERT_GT(stored(source), 0);
        ASSERT_EQ(stored(target), 0);
    }
    qt::TreeWidget& tree() { return *part<qt::TreeWidget>("TRW_CONTI"); }
    QTableView& list() { return *part<QTableView>("LST_CAUSALI"); }
    std::string current() { return fromQt(tree().currentIndex().data().toString()); }
    bool shows(const std::string& display) {
        return !tree()
                    .model()
                    ->match(tree().model()->index(0, 0), Qt::DisplayRole, toQt(display), 1,
                            Qt::MatchStartsWith | Qt::MatchRecursive)
                    .isEmpty();
    }
    /// Rows of the correlations of an account, whatever their causali.
    int stored(const std::string& account) {
        return openDatabase(folder_.path() / "demo.vdb")
            ->Execute("SELECT COUNT(*) AS QUANTE FROM CI15_CORRCONTICOGE WHERE CI15_DITTA_CG18 = 1 AND "
                      "CI15_CODPDC_CG10 = 1 AND CI15_CONTO_CG24 = '" +
                      account + "'")
            ->Fields()["QUANTE"]
            .Value()
            .toInt32();
    }
    /// A click on the button that collapses the parent of the current row.
    void collapseParent() {
        const QModelIndex parent = tree().currentIndex().parent();
        tree().scrollTo(parent);
        const int y = tree().visualRect(parent).center().y();
        for (int x = 0; x < tree().viewport()->width(); ++x) {
            if (tree().hitTest(x, y).flags == controls::treeHitButton) {
                QTest::mouseClick(tree().viewport(), Qt::LeftButton, Qt::NoModifier, {x + 2, y});
                return;
            }
        }
        FAIL() << "the row has no button";
    }
    void edit(const std::string& account) {
        find(account);
        QTest::mouseClick(part<QPushButton>("CMD_ATTIVAZIONI"), Qt::LeftButton);
        list().setFocus();
        key(Qt::Key_Home);
    }
    static QMenu* menu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
    static std::string entries(const QMenu& menu) {
        std::string texts;
        for (const QAction* action : menu.actions()) {
            texts += (action->isSeparator() ? "-" : fromQt(action->text())) + "|";
        }
        return texts;
    }
};

constexpr const char* entriesWithoutCopy = "Copia correlazione|Taglia correlazione|Incolla correlazione|-|"
                                           "Annulla|-|DuplicaCorrelazione|Elimina correlazione|";

TEST_F(ClipboardKeys, PasteNothingOntoTheGroupThatAnAccountWasCollapsedInto) {
    const int rows = stored(source);
    find(source);
    key(Qt::Key_C, Qt::ControlModifier);
    find(target);
    collapseParent();
    EXPECT_TRUE(current().starts_with(group)) << current();
    tree().setFocus();
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(stored(target), 0);
    find(target);
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(stored(target), rows) << "the copy is still there once the account is";
    EXPECT_EQ(stored(source), rows);
}

TEST_F(ClipboardKeys, MoveACutWhoseAccountAFilterHasDroppedFromTheTree) {
    const int rows = stored(source);
    find(source);
    const std::string display = current();
    key(Qt::Key_X, Qt::ControlModifier);
    key(Qt::Key_Space); // no longer activated
    auto& tabs = *part<QTabBar>("STR_FILTRI");
    QTest::mouseClick(&tabs, Qt::LeftButton, Qt::NoModifier, tabs.tabRect(1).center());
    find(target);
    EXPECT_FALSE(shows(display)) << display;
    key(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(stored(target), rows);
    EXPECT_EQ(stored(source), 0);
}

TEST_F(ClipboardKeys, OpenTheMenuOfTheRowUnderTheRightButtonAtThePointer) {
    edit(source);
    const QPoint at = list().visualRect(list().model()->index(1, 0)).center();
    QTest::mouseClick(list().viewport(), Qt::RightButton, Qt::NoModifier, at);
    ASSERT_NE(menu(), nullptr);
    EXPECT_EQ(entries(*menu()), entriesWithoutCopy);
    EXPECT_LE((menu()->pos() - list().viewport()->mapToGlobal(at)).manhattanLength(), 4);
    EXPECT_EQ(list().currentIndex().row(), 1) << "the menu is of the row that it was asked for";
    QTest::keyClick(menu(), Qt::Key_Escape);
}

TEST_F(ClipboardKeys, OpenTheMenuAtTheChosenRowByBothKeys) {
    edit(source);
    const QPoint under =
        list().viewport()->mapToGlobal(list().visualRect(list().model()->index(0, 0)).bottomLeft());
    for (const auto& [code, modifiers] :
         {std::pair(Qt::Key_Menu, Qt::NoModifier), std::pair(Qt::Key_F10, Qt::ShiftModifier)}) {
        key(code, modifiers);
        ASSERT_NE(menu(), nullptr);
        EXPECT_EQ(entries(*menu()), entriesWithoutCopy);
        EXPECT_EQ(menu()->pos(), under);
        ASSERT_NE(menu()->activeAction(), nullptr) << "the keyboard goes on from an entry";
        EXPECT_EQ(fromQt(menu()->activeAction()->text()), "Copia correlazione");
        QTest::keyClick(menu(), Qt::Key_Escape);
        EXPECT_EQ(menu(), nullptr);
    }
}

} // namespace
} // namespace veldran::test
