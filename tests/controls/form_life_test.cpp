#include "tests/controls/sample_form.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace veldran::controls {
namespace {

using Lines = std::vector<std::string>;

class FormLife : public testing::Test {
protected:
    FormLife() {
        kept.push_back(form->Loaded.subscribe([this] { lines.push_back("loaded"); }));
        kept.push_back(form->Activated.subscribe([this] { lines.push_back("activated"); }));
        kept.push_back(form->QueryUnload.subscribe([this](bool& refuse) {
            lines.push_back("query");
            refuse = refuses;
        }));
        kept.push_back(form->Unloading.subscribe([this] { lines.push_back("unloading"); }));
        kept.push_back(form->Unloaded.subscribe([this] { lines.push_back("unloaded"); }));
    }

    std::unique_ptr<SampleForm> form = std::make_unique<SampleForm>();
    std::vector<Subscription> kept;
    Lines lines;
    bool refuses = false;
};

TEST_F(FormLife, HoldsNoPaintingBackWhenItsViewCouldNot) {
    std::vector<bool> locks;
    {
        const Subscription broken =
            form->RedrawLocked.subscribe([](bool) { throw std::runtime_error("broken view"); });
        EXPECT_THROW(const FormRedrawLock lock(*form), std::runtime_error);
    }
    const Subscription view = form->RedrawLocked.subscribe([&](bool locked) { locks.push_back(locked); });
    { const FormRedrawLock lock(*form); }
    EXPECT_EQ(locks, (std::vector<bool>{true, false}));
}

TEST_F(FormLife, LoadsOnceAndActivatesEachTime) {
    form->Activate();
    form->Load();
    form->Load();
    form->Activate();
    form->Activate();
    EXPECT_EQ(lines, (Lines{"loaded", "activated", "activated"}));
}

TEST_F(FormLife, UnloadsInOrder) {
    form->Load();
    lines.clear();
    EXPECT_TRUE(form->Unload());
    EXPECT_EQ(lines, (Lines{"query", "unloading", "unloaded"}));
    EXPECT_FALSE(form->IsLoaded());
    EXPECT_TRUE(form->Unload()) << "there is nothing left to unload";
    EXPECT_EQ(lines.size(), 3U);
}

TEST_F(FormLife, StaysWhenTheCloseIsRefused) {
    form->Load();
    refuses = true;
    lines.clear();
    EXPECT_FALSE(form->Unload());
    EXPECT_EQ(lines, (Lines{"query"}));
    EXPECT_TRUE(form->IsLoaded());
    refuses = false;
    EXPECT_TRUE(form->Unload());
}

TEST_F(FormLife, IgnoresAnUnloadWithinAnUnload) {
    form->Load();
    kept.push_back(form->QueryUnload.subscribe([this](bool&) { EXPECT_FALSE(form->Unload()); }));
    kept.push_back(form->Unloading.subscribe([this] { EXPECT_FALSE(form->Unload()); }));
    lines.clear();
    EXPECT_TRUE(form->Unload());
    EXPECT_EQ(lines, (Lines{"query", "unloading", "unloaded"}));
}

TEST_F(FormLife, CanBeUnloadedAgainAfterAHandlerThrew) {
    form->Load();
    bool broken = true;
    kept.push_back(form->QueryUnload.subscribe([&](bool&) {
        if (broken) {
            throw std::runtime_error("broken");
        }
    }));
    EXPECT_THROW(form->Unload(), std::runtime_error);
    broken = false;
    EXPECT_TRUE(form->Unload());
}

TEST_F(FormLife, MayEndWithTheDestructionOfTheForm) {
    form->Load();
    kept.push_back(form->Unloaded.subscribe([this] { form.reset(); }));
    EXPECT_TRUE(form->Unload());
    EXPECT_EQ(form, nullptr);
}

TEST_F(FormLife, TellsItsStateOnce) {
    int told = 0;
    kept.push_back(form->Changed.subscribe([&] { ++told; }));
    form->SetWindowState(windowMaximized);
    form->SetWindowState(windowMaximized);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(form->WindowState(), windowMaximized);
}

} // namespace
} // namespace veldran::controls
