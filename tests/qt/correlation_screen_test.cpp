#include "adapters/qt/form_view.h"
#include "host/main_form_controls.h"
#include "platform/controls/form.h"
#include "platform/controls/popup_menu.h"

#include <gtest/gtest.h>

#include <QAbstractScrollArea>
#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>
#include <QSplitter>
#include <QTableView>
#include <QTest>
#include <QToolButton>

namespace veldran::qt {
namespace {

using controls::Control;

/// The main form's controls as designed, in correlation mode.
class CorrelationScreen : public testing::Test {
protected:
    CorrelationScreen() {
        form.LAY_CORRELAZIONI.SetVisible(true);
        form.CMD_ATTIVAZIONI.SetVisible(true);
        form.CBO_SEGNO.AddItem("Avere", 2);
        form.CBO_SEGNO.AddItem("Dare", 1);
        form.INV_TESTATA.SetButtonEnabled("Nuovo", true);
        form.GNV_DETTAGLIO.SetButtonEnabled("Nuovo", true);
    }
    void show(const QSize& size = QSize(820, 600)) {
        view.resize(size);
        view.show();
        view.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&view));
        QApplication::processEvents();
    }
    template<class T>
    T* part(const char* name) const {
        return view.findChild<T*>(QString::fromUtf8(name));
    }
    bool focused(const Control& control) const {
        return control.HasFocus() && view.viewOf(control)->hasFocus();
    }
    void key(Qt::Key code, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(QApplication::focusWidget(), code, modifiers);
    }
    QRect placeOf(const QWidget& widget) const { return {widget.mapTo(&view, QPoint()), widget.size()}; }
    /// Every control that the user sees in this mode.
    std::vector<Control*> drawn() {
        return {&form.TXT_CONTOSELEZIONATO,
                &form.LST_CAUSALI,
                &form.TXT_CAUSALE,
                &form.TXT_DESCRCAUSALE,
                &form.INV_TESTATA,
                &form.GRD_DETTAGLIO,
                &form.CMD_SU,
                &form.CMD_GIU,
                &form.CBO_SEGNO,
                &form.TXT_PERC,
                &form.TXT_CONTO,
                &form.TXT_DESCRCONTO,
                &form.LBL_VOCEDISPESA,
                &form.TXT_VDS,
                &form.TXT_DESCRVDS,
                &form.GNV_DETTAGLIO,
                &form.CMD_ATTIVAZIONI};
    }
    /// Where the Tab key stops, in the order of the design.
    std::vector<Control*> tabOrder() {
        return {&form.LST_CAUSALI,    &form.TXT_CAUSALE, &form.INV_TESTATA,    &form.GRD_DETTAGLIO,
                &form.CMD_SU,         &form.CMD_GIU,     &form.CBO_SEGNO,      &form.TXT_PERC,
                &form.TXT_CONTO,      &form.TXT_VDS,     &form.PIC_FOCUSCATCH, &form.GNV_DETTAGLIO,
                &form.CMD_ATTIVAZIONI};
    }
    void expectAllInside() {
        for (const Control* control : drawn()) {
            const QWidget* widget = view.findChild<QWidget*>(QString::fromStdString(control->Name()));
            ASSERT_NE(widget, nullptr) << control->Name();
            EXPECT_TRUE(widget->isVisible()) << control->Name();
            EXPECT_TRUE(view.rect().contains(placeOf(*widget))) << control->Name();
            EXPECT_GE(widget->width(), 10) << control->Name();
        }
    }

    controls::Form window{"FRM_PRINCIPALE"};
    ControlliFormPrincipale form{window};
    FormView view{window};
};

TEST_F(CorrelationScreen, HasRoomForAllItsControls) {
    show();
    expectAllInside();
}

TEST_F(CorrelationScreen, KeepsRoomForAllItsControlsInASmallWindow) {
    show();
    const QSize least = view.minimumSizeHint();
    EXPECT_LE(least.width(), 820);
    EXPECT_LE(least.height(), 600);
    view.resize(least);
    QApplication::processEvents();
    expectAllInside();
    EXPECT_GE(part<QWidget>("GRD_DETTAGLIO")->height(), 80);
}

TEST_F(CorrelationScreen, IsScrolledInAWindowThatIsTooSmallForItsControls) {
    show();
    const QSize least = view.minimumSizeHint();
    view.resize(least.width() - 100, least.height() - 100);
    QApplication::processEvents();
    EXPECT_FALSE(placeOf(*part<QWidget>("GRD_DETTAGLIO")).intersects(placeOf(*part<QWidget>("CBO_SEGNO"))))
        << "nothing lies over the rows";
    for (Control* control : std::initializer_list<Control*>{&form.CMD_ATTIVAZIONI, &form.TXT_CAUSALE}) {
        EXPECT_FALSE(view.rect().contains(placeOf(*view.viewOf(*control)))) << control->Name();
        control->SetFocus();
        EXPECT_TRUE(view.rect().contains(placeOf(*view.viewOf(*control)))) << control->Name();
    }
    view.resize(least);
    QApplication::processEvents();
    expectAllInside();
}

TEST_F(CorrelationScreen, GivesALargerWindowToTheGridAndNotToTheFields) {
    show();
    const QSize grid = part<QWidget>("GRD_DETTAGLIO")->size();
    const QSize field = part<QWidget>("TXT_CONTO")->size();
    view.resize(1200, 800);
    QApplication::processEvents();
    EXPECT_GT(part<QWidget>("GRD_DETTAGLIO")->height(), grid.height() + 150);
    EXPECT_GT(part<QWidget>("GRD_DETTAGLIO")->width(), grid.width() + 250);
    EXPECT_EQ(part<QWidget>("TXT_CONTO")->size(), field);
}

TEST_F(CorrelationScreen, ShowsAllColumnsOfItsGridInAWindowOfItsOwnSize) {
    show(view.sizeHint());
    const auto* grid = part<QTableView>("GRD_DETTAGLIO");
    EXPECT_FALSE(grid->horizontalScrollBar()->isVisible());
    EXPECT_EQ(grid->horizontalHeader()->length(), grid->viewport()->width()) << "and leaves no room over";
}

TEST_F(CorrelationScreen, PutsADescriptionBehindTheFieldThatItsFormNames) {
    show();
    const auto isBehind = [this](const Control& description, const Control& field) {
        QApplication::processEvents();
        const QRect text = placeOf(*part<QWidget>(description.Name().c_str()));
        const QRect before = placeOf(*part<QWidget>(field.Name().c_str()));
        return text.left() > before.right() && std::abs(text.center().y() - before.center().y()) <= 2;
    };
    EXPECT_TRUE(isBehind(form.TXT_DESCRCONTO, form.TXT_CONTO)) << "as designed";
    form.TXT_DESCRCONTO.StandBehind(&form.TXT_VDS);
    form.TXT_DESCRVDS.StandBehind(&form.TXT_CONTO);
    EXPECT_TRUE(isBehind(form.TXT_DESCRCONTO, form.TXT_VDS));
    EXPECT_TRUE(isBehind(form.TXT_DESCRVDS, form.TXT_CONTO));
    form.TXT_DESCRCONTO.StandBehind(&form.TXT_CONTO);
    form.TXT_DESCRVDS.StandBehind(nullptr);
    EXPECT_TRUE(isBehind(form.TXT_DESCRCONTO, form.TXT_CONTO));
    EXPECT_TRUE(isBehind(form.TXT_DESCRVDS, form.TXT_VDS));
}

TEST_F(CorrelationScreen, KeepsTheShapeOfAFieldWhoseListIsNotToBeHad) {
    show();
    const auto button = [this](const char* field) { return part<QWidget>(field)->findChild<QToolButton*>(); };
    form.TXT_CONTO.SetEnabled(false);
    form.TXT_CONTO.SetLookupEnabled(false);
    form.TXT_VDS.SetEnabled(false);
    QApplication::processEvents();
    EXPECT_TRUE(button("TXT_CONTO")->isVisible());
    EXPECT_FALSE(button("TXT_CONTO")->isEnabled());
    EXPECT_EQ(button("TXT_CONTO")->grab().toImage(), button("TXT_VDS")->grab().toImage());
}

TEST_F(CorrelationScreen, DividesListAndEditorByASplitter) {
    show();
    auto* halves = view.findChild<QSplitter*>();
    const int before = form.LST_CAUSALI.Width();
    halves->setSizes({320, 480});
    QApplication::processEvents();
    EXPECT_GT(form.LST_CAUSALI.Width(), before);
    halves->setSizes({0, 800});
    EXPECT_GT(part<QWidget>("LST_CAUSALI")->width(), 50) << "neither half goes away";
}

TEST_F(CorrelationScreen, LabelsItsFieldsWithTheirCaptions) {
    show();
    const auto captionOf = [this](const Control& control) {
        for (const QLabel* label : view.findChildren<QLabel*>()) {
            if (label->buddy() != nullptr && label->buddy() == view.viewOf(control)) {
                return label->text().toStdString();
            }
        }
        return std::string();
    };
    EXPECT_EQ(captionOf(form.TXT_CAUSALE), "Causale");
    EXPECT_EQ(captionOf(form.CBO_SEGNO), "Segno");
    EXPECT_EQ(captionOf(form.TXT_PERC), "% ripartizione");
    EXPECT_EQ(captionOf(form.TXT_CONTO), "Codice conto");
    EXPECT_EQ(captionOf(form.TXT_VDS), "Voce di spesa");
}

TEST_F(CorrelationScreen, PutsEachDescriptionRightBehindItsCode) {
    show();
    for (const auto& [code, description] :
         std::initializer_list<std::pair<const char*, const char*>>{{"TXT_CAUSALE", "TXT_DESCRCAUSALE"},
                                                                    {"TXT_CONTO", "TXT_DESCRCONTO"},
                                                                    {"TXT_VDS", "TXT_DESCRVDS"}}) {
        const QRect field = placeOf(*part<QWidget>(code));
        const QRect text = placeOf(*part<QWidget>(description));
        EXPECT_GT(text.left(), field.right()) << code;
        EXPECT_LE(text.left(), field.right() + 20) << code;
        EXPECT_LE(std::abs(text.center().y() - field.center().y()), 2) << code;
    }
}

TEST_F(CorrelationScreen, NamesEveryControlForScreenReaders) {
    for (const Control* control : tabOrder()) {
        const QWidget* widget = view.viewOf(*control);
        ASSERT_NE(widget, nullptr) << control->Name();
        EXPECT_FALSE(widget->accessibleName().isEmpty()) << control->Name();
    }
}

TEST_F(CorrelationScreen, TabsThroughItsControlsAsDesigned) {
    show();
    form.LST_CAUSALI.SetFocus();
    const auto order = tabOrder();
    for (std::size_t i = 1; i < order.size(); ++i) {
        key(Qt::Key_Tab);
        EXPECT_TRUE(focused(*order[i])) << order[i]->Name();
    }
    key(Qt::Key_Tab);
    EXPECT_TRUE(focused(form.LST_CAUSALI));
    for (std::size_t i = order.size(); i-- > 1;) {
        key(Qt::Key_Backtab, Qt::ShiftModifier);
        EXPECT_TRUE(focused(*order[i])) << order[i]->Name();
    }
}

TEST_F(CorrelationScreen, TellsItsControlsWhereTheUserMovedTheFocus) {
    show();
    for (Control* control :
         {static_cast<Control*>(&form.TXT_PERC), static_cast<Control*>(&form.GRD_DETTAGLIO),
          static_cast<Control*>(&form.LST_CAUSALI), static_cast<Control*>(&form.CBO_SEGNO)}) {
        QWidget* widget = view.viewOf(*control);
        auto* rows = qobject_cast<QAbstractScrollArea*>(widget);
        QTest::mouseClick(rows != nullptr ? rows->viewport() : widget, Qt::LeftButton);
        if (QWidget* list = QApplication::activePopupWidget()) {
            list->close();
        }
        EXPECT_TRUE(focused(*control)) << control->Name();
    }
}

TEST_F(CorrelationScreen, MovesTheFocusWithItsControls) {
    show();
    for (Control* control : tabOrder()) {
        control->SetFocus();
        EXPECT_TRUE(focused(*control)) << control->Name();
    }
    form.INV_TESTATA.SetButtonEnabled("Elimina", true);
    form.INV_TESTATA.FocusButton("Elimina");
    EXPECT_TRUE(part<QToolButton>("INV_TESTATA_Elimina")->hasFocus());
}

TEST_F(CorrelationScreen, MovesOnByEnterInItsFields) {
    show();
    form.CBO_SEGNO.SetFocus();
    for (const Control* next :
         {static_cast<const Control*>(&form.TXT_PERC), static_cast<const Control*>(&form.TXT_CONTO),
          static_cast<const Control*>(&form.TXT_VDS), static_cast<const Control*>(&form.PIC_FOCUSCATCH)}) {
        key(Qt::Key_Return);
        EXPECT_TRUE(focused(*next)) << next->Name();
    }
}

TEST_F(CorrelationScreen, EntersTheFocusCatcherOnlyByTheUsersKeys) {
    show();
    int caught = 0;
    const auto kept = form.PIC_FOCUSCATCH.GotFocus.subscribe([&] { ++caught; });
    form.TXT_VDS.SetFocus();
    form.TXT_VDS.SetEnabled(false);
    EXPECT_TRUE(focused(form.GNV_DETTAGLIO));
    form.TXT_CONTO.SetFocus();
    form.GRB_DETTAGLIO.SetEnabled(false);
    EXPECT_TRUE(focused(form.CMD_ATTIVAZIONI));
    EXPECT_EQ(caught, 0);
}

TEST_F(CorrelationScreen, SendsTheFocusBackFromTheCatcher) {
    show();
    const auto kept = form.PIC_FOCUSCATCH.GotFocus.subscribe([this] { form.CBO_SEGNO.SetFocus(); });
    form.TXT_VDS.SetFocus();
    key(Qt::Key_Tab);
    EXPECT_TRUE(focused(form.CBO_SEGNO)) << "typing on starts the next row";
    form.GNV_DETTAGLIO.SetFocus();
    key(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_TRUE(focused(form.CBO_SEGNO));
}

TEST_F(CorrelationScreen, ChangesPlacesWithTheActivationArea) {
    form.LAY_CORRELAZIONI.SetVisible(false);
    form.LAY_ATTIVAZIONE.SetVisible(true);
    show();
    EXPECT_FALSE(part<QWidget>("LST_CAUSALI")->isVisible());
    EXPECT_TRUE(part<QWidget>("TRW_CONTI")->isVisible());
    form.TRW_CONTI.SetFocus();
    form.LAY_ATTIVAZIONE.SetVisible(false);
    form.LAY_CORRELAZIONI.SetVisible(true);
    form.TXT_CAUSALE.SetFocus();
    QApplication::processEvents();
    EXPECT_TRUE(focused(form.TXT_CAUSALE));
    EXPECT_FALSE(part<QWidget>("TRW_CONTI")->isVisible());
    const QRect mode = placeOf(*part<QWidget>("CMD_ATTIVAZIONI"));
    EXPECT_GT(mode.right(), view.width() - 30) << "below on the right";
    EXPECT_GT(mode.bottom(), view.height() - 30);
    expectAllInside();
}

TEST_F(CorrelationScreen, ShowsTheMenusOfItsForm) {
    show();
    form.LST_CAUSALI.Add("*ACQ*", "ACQ");
    controls::PopupMenu menu(window);
    menu.SetName("PopupList");
    menu.AddItem("Copia correlazione", "ListCopia");
    menu.ShowAt(form.LST_CAUSALI);
    ASSERT_NE(part<QMenu>("PopupList"), nullptr);
    EXPECT_TRUE(part<QMenu>("PopupList")->isVisible());
    std::string clicked;
    const auto kept = menu.AfterItemClick.subscribe([&](const std::string& item) { clicked = item; });
    QTest::keyClick(part<QMenu>("PopupList"), Qt::Key_Return);
    QApplication::processEvents();
    EXPECT_EQ(clicked, "ListCopia");
}

TEST_F(CorrelationScreen, FollowsTheTabOrderOfACustomerLayout) {
    show();
    form.TXT_PERC.SetTabIndex(1);
    form.TXT_CAUSALE.SetTabIndex(2);
    form.TXT_PERC.SetFocus();
    key(Qt::Key_Tab);
    EXPECT_TRUE(focused(form.TXT_CAUSALE));
}

} // namespace
} // namespace veldran::qt
