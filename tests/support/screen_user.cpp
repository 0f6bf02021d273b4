#include "tests/support/screen_user.h"

namespace veldran::test {

namespace {

controls::TreeNode* findBelow(controls::TreeNode& node, std::string_view key) {
    if (node.Key() == key) {
        return &node;
    }
    for (int i = 0; i < node.Children(); ++i) {
        if (controls::TreeNode* found = findBelow(*node.ChildAt(i), key)) {
            return found;
        }
    }
    return nullptr;
}

bool isPlaceholder(const controls::TreeNode& node) {
    return node.Tag() == nullptr;
}

void describe(const controls::TreeNode& node, int depth, std::vector<std::string>& lines) {
    const std::string indent(static_cast<std::size_t>(depth) * 2, ' ');
    if (isPlaceholder(node)) {
        lines.push_back(indent + "...");
        return;
    }
    lines.push_back(indent + (node.Checked() ? "[x] " : "[ ] ") + node.Key());
    for (int i = 0; i < node.Children(); ++i) {
        describe(*node.ChildAt(i), depth + 1, lines);
    }
}

/// A left button on the node's check box, and a hit tester that says so while it lives.
class CheckBoxUnderPointer {
public:
    CheckBoxUnderPointer(controls::TreeView& tree, controls::TreeNode& node) : tree_(tree) {
        tree_.SetHitTester([&node](int x, int y) {
            const bool onBox = x == pixelX && y == pixelY;
            return onBox ? controls::TreeHit{&node, controls::treeHitStateIcon} : controls::TreeHit{};
        });
    }
    ~CheckBoxUnderPointer() { tree_.SetHitTester({}); }
    CheckBoxUnderPointer(const CheckBoxUnderPointer&) = delete;
    CheckBoxUnderPointer& operator=(const CheckBoxUnderPointer&) = delete;

    /// Twips of a screen with 15 of them to a pixel across and 12 down.
    static controls::MouseEvent event() {
        return {controls::buttonLeft, controls::shiftNone, pixelX * 15, pixelY * 12};
    }

private:
    static constexpr int pixelX = 30;
    static constexpr int pixelY = 70;
    controls::TreeView& tree_;
};

} // namespace

std::string accountKey(int nature, std::string_view code) {
    return std::string("*") + "OPEN"[nature] + std::string(code) + "*";
}

controls::TreeNode& ScreenUser::root(int nature) const {
    return node(rootKeys[nature]);
}

controls::TreeNode* ScreenUser::find(std::string_view key) const {
    controls::TreeView& view = tree();
    for (int i = 0; i < view.RootCount(); ++i) {
        if (controls::TreeNode* found = findBelow(*view.RootAt(i), key)) {
            return found;
        }
    }
    return nullptr;
}

controls::TreeNode& ScreenUser::node(std::string_view key) const {
    controls::TreeNode* found = find(key);
    if (found == nullptr) {
        throw std::out_of_range("the tree does not show " + std::string(key));
    }
    return *found;
}

void ScreenUser::checkByMouse(controls::TreeNode& node) const {
    const CheckBoxUnderPointer pointer(tree(), node);
    tree().MouseDownFromView(CheckBoxUnderPointer::event());
    tree().CheckFromView(node);
    tree().MouseUpFromView(CheckBoxUnderPointer::event());
}

void ScreenUser::checkByMouseSilently(controls::TreeNode& node) const {
    const CheckBoxUnderPointer pointer(tree(), node);
    tree().MouseDownFromView(CheckBoxUnderPointer::event());
    node.SetChecked(!node.Checked());
    tree().MouseUpFromView(CheckBoxUnderPointer::event());
}

void ScreenUser::addFilterTabs() const {
    filters().AddTab("Corr.", "Conti correlati");
    filters().AddTab("Non corr.", "Conti non correlati");
    filters().AddTab("Att. corr.", "Conti attivati e correlati");
    filters().AddTab("Att. non corr.", "Conti attivati e non correlati");
    filters().AddTab("Non att. corr.", "Conti non attivati e correlati");
    filters().AddTab("Non att. non corr.", "Conti non attivati e non correlati");
}

void ScreenUser::search(std::string code) const {
    control<controls::LookupField>("TXT_CONTORICERCA").TypeFromView(std::move(code));
    control<controls::Button>("BUT_RICERCA").ClickFromView();
}

std::vector<std::string> ScreenUser::outline() const {
    std::vector<std::string> lines;
    controls::TreeView& view = tree();
    for (int i = 0; i < view.RootCount(); ++i) {
        describe(*view.RootAt(i), 0, lines);
    }
    return lines;
}

std::vector<std::string> ScreenUser::childKeys(const controls::TreeNode& node) {
    std::vector<std::string> keys;
    for (int i = 0; i < node.Children(); ++i) {
        keys.push_back(node.ChildAt(i)->Key());
    }
    return keys;
}

bool ScreenUser::hasPlaceholder(const controls::TreeNode& node) {
    return node.Children() == 1 && isPlaceholder(*node.Child());
}

} // namespace veldran::test
