#pragma once

#include "platform/event.h"

#include <string>
#include <string_view>
#include <vector>

namespace veldran::controls {

class Control;
class Form;

struct PopupItem {
    std::string caption; ///< "-" is a separator
    std::string key;
    bool disabled = false;

    bool IsSeparator() const { return caption == "-"; }
};

/// Where a menu opens: at a point of the screen, or at its default place beside a control.
struct PopupPlace {
    const Control* anchor = nullptr; ///< nullptr: at the point
    int x = 0;                       ///< screen pixels
    int y = 0;
};

/// A menu that a form fills and opens. The form's view shows it and reports the item that the user clicks;
/// without a view nothing opens.
class PopupMenu {
public:
    /// \param form whose view shows the menu; it outlives the menu.
    explicit PopupMenu(const Form& form) : form_(form) {}
    PopupMenu(const PopupMenu&) = delete;
    PopupMenu& operator=(const PopupMenu&) = delete;

    const std::string& Name() const { return name_; }
    void SetName(std::string name) { name_ = std::move(name); }
    const std::vector<PopupItem>& Items() const { return items_; }
    void Clear() { items_.clear(); }
    void AddItem(std::string caption, std::string key, bool disabled = false);

    /// Raise the form's `PopupRequested`; a menu without items does not open.
    void ShowAt(int screenX, int screenY);
    void ShowAt(const Control& anchor);

    /// The user clicked the item with that key. Separators, disabled items and unknown keys do nothing.
    void ClickFromView(std::string_view key);

    mutable Event<const std::string&> AfterItemClick; ///< key of the item

private:
    void show(const PopupPlace& place);

    const Form& form_;
    std::string name_;
    std::vector<PopupItem> items_;
};

} // namespace veldran::controls
