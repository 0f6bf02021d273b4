#pragma once

#include "platform/controls/control.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace veldran::controls {

class ListView;

/// One row of a list: the text of the first column, and a sub-item for each further one.
class ListItem {
public:
    const std::string& Key() const { return key_; }
    const std::string& Text() const { return text_; }
    /// Of the columns after the first, from 0; "" where none was set.
    const std::string& SubItem(std::size_t index) const;
    const std::string& Tag() const { return tag_; }
    void SetText(std::string text);
    void SetSubItem(std::size_t index, std::string text);
    void SetTag(std::string tag) { tag_ = std::move(tag); }
    /// False once the row was removed from its list.
    bool IsInList() const { return list_ != nullptr; }

private:
    friend class ListView;
    ListItem(ListView& list, std::string key, std::string text)
        : list_(&list), key_(std::move(key)), text_(std::move(text)) {}

    ListView* list_; // nullptr once removed
    std::string key_;
    std::string text_;
    std::vector<std::string> subItems_;
    std::string tag_;
};

/// Where a point of the list lies; the bits are those of the list's hit-test message.
enum ListHitFlags {
    listHitNowhere = 1,
    listHitIcon = 2,
    listHitLabel = 4,
    listHitStateIcon = 8,
    listHitItem = 14
};
struct ListHit {
    int index = -1; ///< of the row, from 0; -1 is none
    int flags = listHitNowhere;
};

/// A list in report view. Rows stand in the order of their addition, at most one is selected.
class ListView final : public Control {
public:
    struct Column {
        std::string key;
        std::string caption;
        int width = 0; ///< twips
    };
    struct ScreenPoint {
        int x = 0; ///< pixels
        int y = 0;
    };
    /// Shared: a form may keep a row that has left the list.
    using Item = std::shared_ptr<ListItem>;

    using Control::Control;
    ~ListView() override;

    const std::vector<Column>& Columns() const { return columns_; }
    void AddColumn(std::string key, std::string caption, int width);
    /// By code or by the user who dragged the header. \throws std::out_of_range
    void SetColumnWidth(std::size_t column, int twips);
    /// Width of the list itself in twips: of its design, then as the view reports it.
    int Width() const { return width_; }
    void SetWidth(int twips) { width_ = twips; }

    const std::vector<Item>& Items() const { return items_; }
    /// \throws std::invalid_argument when the list has a row with that key.
    Item Add(std::string key, std::string text);
    /// nullptr when no row has that key.
    Item Find(std::string_view key) const;
    /// Nothing happens when no row has that key. A removed row is no longer selected.
    void Remove(std::string_view key);
    void Clear();

    /// nullptr while no row is selected.
    const Item& SelectedItem() const { return selected_; }
    /// Selects by code: `ItemClick` is raised when that is another row than before. nullptr selects none.
    /// \throws std::invalid_argument for a row of another list.
    void SetSelectedItem(const Item& item);

    /// What the user does, reported by the view. A click on the selected row raises `ItemClick` as well; the
    /// button that selects is reported by `MouseDownFromView` before.
    void SelectFromView(std::size_t index);
    void MouseDownFromView(const MouseEvent& event) { MouseDown.raise(event); }

    /// Hit test at a point in pixels from the list's corner; the view installs how. Nothing is hit without a
    /// view.
    using HitTester = std::function<ListHit(int x, int y)>;
    void SetHitTester(HitTester tester) { hitTester_ = std::move(tester); }
    ListHit HitTest(int x, int y) const { return hitTester_ ? hitTester_(x, y) : ListHit{}; }
    /// The row under a point in pixels; nullptr when there is none.
    Item ItemAt(int x, int y) const;
    /// Upper left corner on the screen; the view installs how. (0, 0) without a view.
    void SetScreenOrigin(std::function<ScreenPoint()> origin) { origin_ = std::move(origin); }
    ScreenPoint ScreenOrigin() const { return origin_ ? origin_() : ScreenPoint{}; }

    mutable Event<ListItem&> ItemClick;
    mutable Event<const MouseEvent&> MouseDown;
    mutable Event<> ItemsChanged;     ///< rows came, went or have another text
    mutable Event<> SelectionChanged; ///< for the view, which also scrolls to the selected row

private:
    friend class ListItem;
    void select(const Item& item);

    std::vector<Column> columns_;
    int width_ = 0;
    std::vector<Item> items_;
    Item selected_;
    HitTester hitTester_;
    std::function<ScreenPoint()> origin_;
};

} // namespace veldran::controls
