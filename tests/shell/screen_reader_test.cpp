// What assistive programs are told of the whole host, in both modes of the screen.
#include "adapters/qt/text.h"
#include "tests/shell/host_window.h"

#include <QAccessible>
#include <QLabel>
#include <QPushButton>
#include <QTableView>
#include <QTreeView>
#include <functional>
#include <utility>
#ifdef VELDRAN_WITH_QT_PRIVATE
#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>
#endif

namespace veldran::test {
namespace {

using qt::fromQt;

std::string spoken(QAccessibleInterface& part, QAccessible::Text kind = QAccessible::Name) {
    return fromQt(part.text(kind));
}
QAccessibleInterface& accessible(QWidget& widget) {
    return *QAccessible::queryAccessibleInterface(&widget);
}
std::string spoken(QWidget& widget) {
    return spoken(accessible(widget));
}

// Accounts of the demo company whose first causale has two rows, and with none.
constexpr const char* correlated = "6505050001";
constexpr const char* uncorrelated = "6805100003";

class ScreenReader : public ScreenKeysTest {
protected:
    void enterCorrelations(const std::string& account) {
        find(account);
        QTest::mouseClick(part<QPushButton>("CMD_ATTIVAZIONI"), Qt::LeftButton);
    }
    /// What lacks a name or a role of all that takes the focus or is part of a control. Cells are named by
    /// what they hold, if anything.
    static std::vector<std::string> nameless(QWidget& window) {
        std::vector<std::string> found;
        walk(accessible(window), [&](QAccessibleInterface& part) {
            const auto* widget = qobject_cast<QWidget*>(part.object());
            const bool counts = widget == nullptr || widget->focusPolicy() != Qt::NoFocus ||
                                part.role() == QAccessible::Button;
            const bool mayBeEmpty = part.role() == QAccessible::Pane || part.role() == QAccessible::Cell;
            if (counts && ((spoken(part).empty() && !mayBeEmpty) || part.role() == QAccessible::NoRole)) {
                found.push_back(widget != nullptr
                                    ? fromQt(widget->objectName()) + " " + widget->metaObject()->className()
                                    : "in " + spoken(*part.parent()));
            }
        });
        return found;
    }

private:
    /// Every visible part, from the outermost inwards.
    static void walk(QAccessibleInterface& part, const std::function<void(QAccessibleInterface&)>& look) {
        if (part.state().invisible) {
            return;
        }
        look(part);
        for (int i = 0; i < part.childCount(); ++i) {
            if (QAccessibleInterface* child = part.child(i)) {
                walk(*child, look);
            }
        }
    }
};

TEST_F(ScreenReader, FindsANameAndARoleOnEveryControlOfBothModes) {
    EXPECT_EQ(nameless(*window_), std::vector<std::string>());
    enterCorrelations(correlated);
    EXPECT_EQ(nameless(*window_), std::vector<std::string>());
}

TEST_F(ScreenReader, FindsThemInAListOfCodes) {
    part<QWidget>("TXT_CONTORICERCA")->findChild<QLineEdit*>()->setFocus();
    std::vector<std::string> found{"no dialog"};
    EXPECT_TRUE(withModal([] { key(Qt::Key_F4); },
                          [&](QWidget& modal) {
                              found = nameless(modal);
                              QTest::keyClick(&modal, Qt::Key_Escape);
                          }));
    EXPECT_EQ(found, std::vector<std::string>());
}

TEST_F(ScreenReader, HearsWhatLabelsSayBehindTheirNames) {
    enterCorrelations(uncorrelated);
    type("FTAC");
    key(Qt::Key_Tab);
    EXPECT_EQ(spoken(*part<QLabel>("TXT_CONTOSELEZIONATO")),
              "Conto selezionato: 68/05/10/0003 - Compensi collegio sindacale");
    EXPECT_EQ(spoken(*part<QLabel>("TXT_DESCRCAUSALE")), "Descrizione causale: Fattura di acquisto");
    EXPECT_EQ(spoken(*part<QLabel>("TXT_DESCRCONTO")), "Descrizione conto") << "nothing is shown";
    EXPECT_EQ(spoken(*part<QLabel>("LBL_VOCEDISPESA")), "Voce di spesa") << "the caption of a field";
    EXPECT_EQ(spoken(*part<QLabel>("statoDitta")), "Ditta 1 - Officine Meccaniche Valdarno S.p.A.");
}

TEST_F(ScreenReader, HearsTheRowsOfTheTreeAndTheirCheckMarks) {
    find(uncorrelated);
    auto& tree = *part<QTreeView>("TRW_CONTI");
    QAccessibleInterface& row = *accessible(tree).focusChild();
    EXPECT_EQ(row.role(), QAccessible::TreeItem);
    EXPECT_EQ(spoken(row), "68/05/10/0003 - Compensi collegio sindacale");
    EXPECT_TRUE(row.state().checkable);
    EXPECT_FALSE(row.state().checked);
    EXPECT_EQ(spoken(row, QAccessible::Description), "");
    key(Qt::Key_Space);
    EXPECT_TRUE(row.state().checked);
    key(Qt::Key_Space);
    EXPECT_FALSE(row.state().checked);
}

#ifdef VELDRAN_WITH_QT_PRIVATE

/// While one lives an assistive program runs, and the changes of check marks that it is told of are kept.
class RunningReader {
public:
    RunningReader() : before_(QAccessible::installUpdateHandler(hear)) {
        heard_.clear();
        setActive(true);
    }
    ~RunningReader() {
        setActive(false);
        QAccessible::installUpdateHandler(before_);
    }
    RunningReader(const RunningReader&) = delete;
    RunningReader& operator=(const RunningReader&) = delete;

    /// Rows whose box has changed, each with what its box was when that was said. Forgets them.
    static std::vector<std::string> heard() { return std::exchange(heard_, {}); }

private:
    static void setActive(bool active) {
        QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(active);
    }
    static void hear(QAccessibleEvent* event) {
        const auto* change = dynamic_cast<QAccessibleStateChangeEvent*>(event);
        if (change != nullptr && change->changedStates().checked) {
            QAccessibleInterface& part = *event->accessibleInterface();
            heard_.push_back(spoken(part) + (part.state().checked ? ": checked" : ": not checked"));
        }
    }

    static inline std::vector<std::string> heard_; // the toolkit's handler is a plain function
    QAccessible::UpdateHandler before_;
};

TEST_F(ScreenReader, IsToldOfABoxWhenItIsCheckedByKeyboard) {
    using Told = std::vector<std::string>;
    const std::string row = "68/05/10/0003 - Compensi collegio sindacale";
    const RunningReader reader;
    find(uncorrelated);
    key(Qt::Key_Space);
    EXPECT_EQ(RunningReader::heard(), Told{row + ": checked"});
    key(Qt::Key_Up);
    key(Qt::Key_Down);
    EXPECT_EQ(RunningReader::heard(), Told{}) << "a row that is come to says its state itself";
    key(Qt::Key_Space);
    EXPECT_EQ(RunningReader::heard(), Told{row + ": not checked"});
}

#else

TEST_F(ScreenReader, IsToldOfABoxWhenItIsCheckedByKeyboard) {
    GTEST_SKIP() << "needs the private headers of Qt";
}

#endif

TEST_F(ScreenReader, HearsThatAnAccountHasCorrelations) {
    for (const auto& [account, says] : {std::pair(correlated, "Con correlazioni"), {uncorrelated, ""}}) {
        enterCorrelations(account);
        QTest::mouseClick(part<QPushButton>("CMD_ATTIVAZIONI"), Qt::LeftButton);
        EXPECT_EQ(spoken(*accessible(*part<QTreeView>("TRW_CONTI")).focusChild(), QAccessible::Description),
                  says);
    }
}

TEST_F(ScreenReader, HearsHeadersAndCellsOfTheRows) {
    enterCorrelations(correlated);
    QAccessibleInterface& grid = accessible(*part<QTableView>("GRD_DETTAGLIO"));
    QAccessibleTableInterface& table = *grid.tableInterface();
    EXPECT_EQ(grid.role(), QAccessible::Table);
    EXPECT_EQ(spoken(grid), "Righe della correlazione");
    ASSERT_EQ(table.rowCount(), 2);
    std::vector<std::string> headers;
    std::vector<std::string> cells;
    for (int column = 0; column < table.columnCount(); ++column) {
        headers.push_back(fromQt(table.columnDescription(column)));
        cells.push_back(spoken(*table.cellAt(1, column)));
        EXPECT_EQ(table.cellAt(1, column)->role(), QAccessible::Cell);
    }
    EXPECT_EQ(headers,
              (std::vector<std::string>{"Avere", "Dare", "Descr.", "Perc.", "V.d.s.", "Descr. v.d.s."}));
    EXPECT_EQ(cells,
              (std::vector<std::string>{"Dare MAG.MAT.0010, Descr. Materie prime, Perc. 100.00%, V.d.s. "
                                        "MAT.010, Descr. v.d.s. Acciai",
                                        "MAG.MAT.0010", "Materie prime", "100.00%", "MAT.010", "Acciai"}))
        << "the first cell, which a reader comes to, says the whole row";
    QAccessibleInterface& list = accessible(*part<QTableView>("LST_CAUSALI"));
    EXPECT_EQ(spoken(*list.tableInterface()->cellAt(0, 0)), "Cod. BOLD, Descrizione Bolletta doganale");
}

} // namespace
} // namespace veldran::test
