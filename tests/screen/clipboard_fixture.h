#pragma once

#include "platform/controls/popup_menu.h"
#include "tests/screen/correlation_fixture.h"
#include "tree/cnode_info.h"

#include <functional>
#include <string>
#include <vector>

namespace veldran::test {

/// Three analytic accounts of the small chart. The first one has `two` under ACQ and `one` under VEND, the
/// second one `one` under GIRO, the third one nothing.
inline const std::string a = editedAccount;
inline const std::string b = "0102030006";
inline const std::string c = "0101010001";
inline const Rows two = {{"2", "100.00"}, {"1", "100.00", "CDCPRO0010", "MATPRI"}};
inline const Rows one = {{"2", "50.00"}};
Chart storedChart();

/// The user of both clipboards, and the menu that was opened last.
class Clipboard : public EditorTest {
protected:
    Clipboard() { openOver(storedChart()); }
    /// Begins anew, over other correlations.
    void openOver(const Chart& chart);

    ScreenUser user() { return screen->host.user(); }
    controls::TreeNode& node(const std::string& account) { return user().node(accountKey(1, account)); }
    bool marked(const std::string& account) { return CNodeInfo::Di(node(account))->IsCorrelato(); }
    void select(const std::string& account);
    void treeKey(const std::string& account, int key);
    void listKey(const std::string& causale, int key);
    /// The same on the row that is highlighted, whatever the header shows.
    void listKey(int key) { e().listKey(key); }
    /// Opens the list's menu on the selected row by the keyboard and chooses an item.
    void choose(const std::string& key);
    /// Items of the menu that was opened last: key, caption, "(no)" when it is disabled.
    Texts menuTexts() const;
    std::string highlighted();
    /// Changes the percentage of a row of the shown correlation, unsaved.
    void change(std::size_t row, const std::string& percentage);
    std::vector<Texts> selectionMarks();
    Rows stored(const std::string& causale, const std::string& account = a) {
        return e().stored(causale, account);
    }

    controls::PopupMenu* shownMenu = nullptr;
    controls::PopupPlace shownAt;
    std::vector<bool> locked_;
    Subscription menu;
    Subscription locks;
};

/// What the user does in the dialog that asks for the destination of a duplication, while it stands; on the
/// first account, with ACQ highlighted.
class Duplication : public Clipboard {
protected:
    Duplication();
    template<class T>
    static T& in(controls::Form& dialog, std::string_view name) {
        return dynamic_cast<T&>(*dialog.FindControl(name));
    }
    /// Chooses "DuplicaCorrelazione", types a causale and confirms.
    void confirm(const std::string& causale);

    std::string caption;
    bool stillOpen = false;
};

} // namespace veldran::test
