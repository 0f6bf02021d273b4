#include "shell/form_window.h"
#include "shell/screen_windows.h"
#include "tests/shell/form_samples.h"
#include "tests/shell/shell_fixture.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QMainWindow>
#include <QMdiArea>
#include <QTest>

namespace veldran::test {
namespace {

/// Counts what its window does to a form, and refuses or unloads when told to.
struct WatchedForm : SampleForm {
    WatchedForm() {
        keep(Loaded.subscribe([this] { ++loads; }));
        keep(Activated.subscribe([this] {
            ++activations;
            if (unloadsAtOnce) {
                Unload();
            }
        }));
        keep(QueryUnload.subscribe([this](bool& refuse) { refuse = refusesToClose; }));
        keep(MDI.FormLoad.subscribe([this] { MDI.Embed(placeTop, placeLeft, 0, false); }));
    }
    void keep(Subscription subscription) { subscriptions.push_back(std::move(subscription)); }

    int loads = 0;
    int activations = 0;
    bool refusesToClose = false;
    bool unloadsAtOnce = false;
    int placeTop = 0;
    int placeLeft = 0;
    std::vector<Subscription> subscriptions;
};

class WindowLifeTest : public testing::Test {
protected:
    void SetUp() override {
        main_.resize(900, 700);
        main_.setCentralWidget(area_);
        main_.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&main_));
    }
    std::shared_ptr<WatchedForm> show() {
        auto form = std::make_shared<WatchedForm>();
        windows_.ShowForm(form, false, 0);
        return form;
    }
    QMdiSubWindow* windowOf(const controls::Form& form) {
        for (QMdiSubWindow* window : area_->subWindowList()) {
            if (&dynamic_cast<shell::FormWindow*>(window)->form() == &form) {
                return window;
            }
        }
        return nullptr;
    }
    static void settle() {
        QCoreApplication::processEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    QMainWindow main_;
    QMdiArea* area_ = new QMdiArea;
    int lastGone_ = 0;
    shell::ScreenWindows windows_{*area_, [this] { ++lastGone_; }};
};

TEST_F(WindowLifeTest, LoadsAndActivatesAFormOnce) {
    const auto form = show();
    settle();
    EXPECT_EQ(form->loads, 1);
    EXPECT_EQ(form->activations, 1);
    ASSERT_NE(windowOf(*form), nullptr);
    EXPECT_EQ(windowOf(*form)->windowTitle(), "Prova");
}

TEST_F(WindowLifeTest, ActivatesAFormEachTimeItsWindowComesToTheFront) {
    const auto first = show();
    const auto second = show();
    settle();
    EXPECT_EQ(first->activations, 1);
    area_->setActiveSubWindow(windowOf(*first));
    settle();
    EXPECT_EQ(first->activations, 2);
    EXPECT_EQ(second->activations, 1);
}

TEST_F(WindowLifeTest, ClosesAFormAndLetsItGo) {
    auto form = show();
    const std::weak_ptr<WatchedForm> watch = form;
    windowOf(*form)->close();
    EXPECT_FALSE(form->IsLoaded());
    form.reset();
    EXPECT_FALSE(watch.expired()) << "kept until its window has gone";
    settle();
    EXPECT_TRUE(watch.expired());
    EXPECT_TRUE(area_->subWindowList().isEmpty());
    EXPECT_EQ(lastGone_, 1);
}

TEST_F(WindowLifeTest, KeepsAFormThatRefusesToClose) {
    const auto form = show();
    form->refusesToClose = true;
    windowOf(*form)->close();
    settle();
    EXPECT_TRUE(form->IsLoaded());
    ASSERT_NE(windowOf(*form), nullptr);
    EXPECT_TRUE(windowOf(*form)->isVisible());
    form->refusesToClose = false;
    windowOf(*form)->close();
    settle();
    EXPECT_FALSE(form->IsLoaded());
}

TEST_F(WindowLifeTest, TakesTheWindowAwayWhenTheFormUnloadsItself) {
    const auto form = std::make_shared<WatchedForm>();
    form->unloadsAtOnce = true;
    windows_.ShowForm(form, false, 0);
    settle();
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_TRUE(area_->subWindowList().isEmpty());
    EXPECT_EQ(lastGone_, 1);
}

TEST_F(WindowLifeTest, OpensANewFormAfterTheOldOneHasGone) {
    windowOf(*show())->close();
    settle();
    const auto again = show();
    EXPECT_EQ(again->activations, 1);
    EXPECT_TRUE(windowOf(*again)->isVisible());
}

TEST_F(WindowLifeTest, TellsOnlyTheLastOfSeveralWindowsThatWent) {
    const auto first = show();
    const auto second = show();
    windowOf(*first)->close();
    settle();
    EXPECT_EQ(lastGone_, 0);
    windowOf(*second)->close();
    settle();
    EXPECT_EQ(lastGone_, 1);
}

TEST_F(WindowLifeTest, FollowsTheCaptionAndTheStateOfTheForm) {
    const auto form = show();
    form->SetCaption("Altro titolo");
    EXPECT_EQ(windowOf(*form)->windowTitle(), "Altro titolo");
    form->SetWindowState(controls::windowMaximized);
    EXPECT_TRUE(windowOf(*form)->isMaximized());
    windowOf(*form)->showNormal();
    EXPECT_EQ(form->WindowState(), controls::windowNormal);
}

TEST_F(WindowLifeTest, PutsTheWindowWhereItsContainerControlSays) {
    const auto form = std::make_shared<WatchedForm>();
    form->placeTop = 300;
    form->placeLeft = 450;
    windows_.ShowForm(form, false, 0);
    EXPECT_EQ(windowOf(*form)->pos(), QPoint(30, 20));
}

TEST_F(WindowLifeTest, PutsEachWindowWhereTheOneBehindItIsStillSeen) {
    QPoint before(-1, -1);
    for (int i = 0; i < 3; ++i) {
        const QMdiSubWindow& window = *windowOf(*show());
        EXPECT_GE(window.pos().y(), before.y() + (i == 0 ? 0 : 10)) << "its title can be clicked";
        EXPECT_GE(window.pos().x(), before.x());
        EXPECT_TRUE(area_->viewport()->rect().contains(window.geometry()));
        before = window.pos();
    }
}

TEST_F(WindowLifeTest, KeepsTheWindowsInItsAreaWhenThereAreMany) {
    for (int i = 0; i < 40; ++i) {
        const auto form = show();
        EXPECT_TRUE(area_->viewport()->rect().contains(windowOf(*form)->geometry())) << i;
    }
}

TEST_F(WindowLifeTest, ReturnsFromAModalFormOnceItHasUnloaded) {
    const auto form = std::make_shared<WatchedForm>();
    bool refusedOnce = false;
    EXPECT_TRUE(withModal([&] { windows_.ShowForm(form, true, 0); },
                          [&](QWidget& modal) {
                              EXPECT_EQ(modal.windowTitle(), "Prova");
                              EXPECT_EQ(form->activations, 1);
                              form->refusesToClose = true;
                              QTest::keyClick(&modal, Qt::Key_Escape);
                              refusedOnce = form->IsLoaded();
                              form->refusesToClose = false;
                              modal.close();
                          }));
    EXPECT_TRUE(refusedOnce);
    EXPECT_FALSE(form->IsLoaded());
}

TEST_F(WindowLifeTest, ReturnsAtOnceFromAModalFormThatUnloadsItself) {
    const auto form = std::make_shared<WatchedForm>();
    form->unloadsAtOnce = true;
    windows_.ShowForm(form, true, 0);
    EXPECT_FALSE(form->IsLoaded());
}

} // namespace
} // namespace veldran::test
