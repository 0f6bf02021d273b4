#include "adapters/qt/simple_views.h"
#include "adapters/qt/tab_strip_view.h"
#include "tests/qt/field_form.h"

#include <gtest/gtest.h>

#include <QHelpEvent>
#include <QTest>
#include <QToolTip>

namespace veldran::qt {
namespace {

class Views : public testing::Test {
protected:
    void show(QWidget& view) {
        window.resize(400, 200);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        view.resize(view.sizeHint());
        view.show();
    }

    FieldForm form;
    QWidget window;
};

TEST_F(Views, OfALabelShowItsCaptionWithAnyAmpersand) {
    LabelView label(form.description, &window);
    form.description.SetCaption("Rossi & C.");
    EXPECT_EQ(label.text(), QStringLiteral("Rossi & C."));
    EXPECT_EQ(label.objectName(), QStringLiteral("LBB_DESCRCONTORICERCA"));
}

TEST_F(Views, OfALabelTellACaptionThatIsCut) {
    LabelView label(form.description, &window);
    show(label);
    const auto tip = [&] {
        QToolTip::hideText();
        QHelpEvent help(QEvent::ToolTip, QPoint(3, 3), label.mapToGlobal(QPoint(3, 3)));
        QApplication::sendEvent(&label, &help);
        return QToolTip::text();
    };
    form.description.SetCaption("Cassa contanti");
    label.resize(300, 20);
    EXPECT_EQ(tip(), QString());
    label.resize(40, 20);
    EXPECT_EQ(tip(), QStringLiteral("Cassa contanti"));
}

TEST_F(Views, OfAButtonClickByMouseSpaceEnterAndMnemonic) {
    ButtonView button(form.search, &window);
    show(button);
    int clicks = 0;
    const auto kept = form.search.Click.subscribe([&] { ++clicks; });
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(clicks, 1);
    EXPECT_TRUE(form.search.HasFocus());
    QTest::keyClick(&button, Qt::Key_Space);
    EXPECT_EQ(clicks, 2);
    QTest::keyClick(&button, Qt::Key_Return);
    QTest::keyClick(&button, Qt::Key_Enter);
    EXPECT_EQ(clicks, 4);
    QTest::keyClick(&window, Qt::Key_R, Qt::AltModifier);
    QTest::qWait(150); // the button shows itself pressed for a moment
    EXPECT_EQ(clicks, 5);
}

TEST_F(Views, OfAButtonDoNothingWhileItIsDisabled) {
    ButtonView button(form.search, &window);
    show(button);
    int clicks = 0;
    const auto kept = form.search.Click.subscribe([&] { ++clicks; });
    form.search.SetEnabled(false);
    QTest::mouseClick(&button, Qt::LeftButton);
    QTest::keyClick(&window, Qt::Key_R, Qt::AltModifier);
    QTest::qWait(150);
    EXPECT_EQ(clicks, 0);
    EXPECT_FALSE(button.isEnabled());
}

TEST_F(Views, OfAButtonAreReadWithoutTheMarkOfTheMnemonic) {
    const ButtonView button(form.search, &window);
    EXPECT_EQ(button.accessibleName(), QStringLiteral("Ricerca"));
}

TEST_F(Views, OfTabsShowCaptionsTipsAndSelection) {
    TabStripView tabs(form.filters, &window);
    ASSERT_EQ(tabs.count(), 3);
    EXPECT_EQ(tabs.tabText(1), QStringLiteral("Att."));
    EXPECT_EQ(tabs.tabToolTip(2), QStringLiteral("Conti non attivati"));
    EXPECT_EQ(tabs.currentIndex(), 0);
    form.filters.Select(3);
    EXPECT_EQ(tabs.currentIndex(), 2);
    form.filters.SetTabCaption(1, "Alle", "Alle Konten");
    EXPECT_EQ(tabs.tabText(0), QStringLiteral("Alle"));
    form.filters.AddTab("Corr.", "Conti correlati");
    EXPECT_EQ(tabs.count(), 4);
    EXPECT_EQ(tabs.currentIndex(), 2);
}

TEST_F(Views, OfTabsChooseNothingByBeingShown) {
    controls::TabStrip fresh(form, "STR_NUOVO");
    fresh.AddTab("A", "");
    fresh.AddTab("B", "");
    int clicks = 0;
    const auto kept = fresh.Click.subscribe([&] { ++clicks; });
    TabStripView tabs(fresh, &window);
    show(tabs);
    EXPECT_EQ(fresh.SelectedIndex(), 0);
    EXPECT_EQ(clicks, 0);
    QTest::mouseClick(&tabs, Qt::LeftButton, Qt::NoModifier, tabs.tabRect(0).center());
    EXPECT_EQ(fresh.SelectedIndex(), 1);
    EXPECT_EQ(clicks, 1);
}

TEST_F(Views, OfTabsClickOnceForEachChoiceOfTheUser) {
    TabStripView tabs(form.filters, &window);
    show(tabs);
    std::vector<int> clicks;
    const auto kept = form.filters.Click.subscribe([&] { clicks.push_back(form.filters.SelectedIndex()); });
    QTest::mouseClick(&tabs, Qt::LeftButton, Qt::NoModifier, tabs.tabRect(1).center());
    EXPECT_EQ(clicks, (std::vector<int>{2}));
    QTest::mouseClick(&tabs, Qt::LeftButton, Qt::NoModifier, tabs.tabRect(1).center());
    EXPECT_EQ(clicks, (std::vector<int>{2, 2})) << "the selected tab is chosen again";
    QTest::mouseClick(&tabs, Qt::RightButton, Qt::NoModifier, tabs.tabRect(2).center());
    EXPECT_EQ(clicks.size(), 2U);
    QTest::keyClick(&tabs, Qt::Key_Right);
    QTest::keyClick(&tabs, Qt::Key_Left);
    EXPECT_EQ(clicks, (std::vector<int>{2, 2, 3, 2}));
}

} // namespace
} // namespace veldran::qt
