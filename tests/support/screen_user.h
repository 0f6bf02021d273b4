#pragma once

#include "platform/controls/edit_controls.h"
#include "platform/controls/form.h"
#include "platform/controls/lookup_field.h"
#include "platform/controls/simple_controls.h"
#include "platform/controls/tab_strip.h"
#include "platform/controls/tree_view.h"

#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace veldran::test {

/// Keys of the four roots, by nature.
inline constexpr std::string_view rootKeys[] = {"CONTIORDINE", "CONTIPATRIMONIALI", "CONTIECONOMICI",
                                                "CONTINOSTAMPA"};

/// The user before the screen: reaches controls by the names of the design and acts as a view reports it.
class ScreenUser {
public:
    explicit ScreenUser(controls::Form& form) : form_(form) {}

    /// The control of that name and kind. \throws std::out_of_range when the form has none.
    template<class ControlType>
    ControlType& control(std::string_view name) const {
        auto* found = dynamic_cast<ControlType*>(form_.FindControl(name));
        if (found == nullptr) {
            throw std::out_of_range("the form has no such control: " + std::string(name));
        }
        return *found;
    }
    controls::TreeView& tree() const { return control<controls::TreeView>("TRW_CONTI"); }
    controls::TabStrip& filters() const { return control<controls::TabStrip>("STR_FILTRI"); }

    /// \throws std::out_of_range when the tree lacks the root.
    controls::TreeNode& root(int nature) const;
    /// The loaded node of that key, wherever it is; nullptr when it is not loaded.
    controls::TreeNode* find(std::string_view key) const;
    /// As `find`. \throws std::out_of_range when it is not loaded.
    controls::TreeNode& node(std::string_view key) const;

    void expand(controls::TreeNode& node) const { tree().SetExpanded(node, true); }
    void collapse(controls::TreeNode& node) const { tree().SetExpanded(node, false); }
    void click(controls::TreeNode& node) const { tree().SelectFromView(node); }
    /// The space bar: the control's own check event alone.
    void checkByKeyboard(controls::TreeNode& node) const { tree().CheckFromView(node); }
    /// A click on the check box: button down, the control's own check event, button up.
    void checkByMouse(controls::TreeNode& node) const;
    /// The same on a control that toggles its box without raising an event of its own.
    void checkByMouseSilently(controls::TreeNode& node) const;
    bool key(int keyCode, int shift = controls::shiftNone) const {
        return tree().KeyDownFromView(keyCode, shift);
    }
    void filter(int index) const { filters().Select(index); }
    /// Offers all nine filters, as a tab strip of another design does.
    void addFilterTabs() const;
    void search(std::string code) const;

    /// The loaded tree, one line a node: depth, check box, key. Placeholders are "...".
    std::vector<std::string> outline() const;
    /// Keys of the children of a node, in order.
    static std::vector<std::string> childKeys(const controls::TreeNode& node);
    static bool hasPlaceholder(const controls::TreeNode& node);

private:
    controls::Form& form_;
};

/// Keys a text into a code or number field, as its view reports it: focus, typing, leaving.
/// \return of a number field: whether it took the text
template<class Field>
auto keyInto(Field& field, std::string text) {
    field.SetFocus();
    field.TypeFromView(std::move(text));
    return field.LeaveFromView();
}

/// "*P0102030005*"
std::string accountKey(int nature, std::string_view code);

} // namespace veldran::test
