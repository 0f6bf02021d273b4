#include "tests/screen/screen_model.h"

#include "tests/support/account_rules.h"
#include "tests/support/screen_user.h"

#include <algorithm>

namespace veldran::test {

ScreenModel::ScreenModel(int levels, std::vector<ModelAccount> accounts)
    : levels_(levels), accounts_(std::move(accounts)) {
    for (const ModelAccount& account : accounts_) {
        const AccountFacts facts = factsOf(levels, account.code);
        Account entry;
        entry.data = account;
        entry.header = facts.header.value();
        entry.parent = facts.parent.value_or("");
        entry.level = facts.level.value();
        entry.analytic = facts.analytic.value();
        chart_.push_back(std::move(entry));
        if (account.activated) {
            database_.insert(account.code);
        }
    }
    open();
}

void ScreenModel::open() {
    for (Account& account : chart_) {
        account.active = database_.contains(account.data.code);
    }
    filter(1);
}

void ScreenModel::filter(int index) {
    filter_ = index;
    for (Account& account : chart_) {
        account.selected = passes(account);
    }
    completeSelection();
    for (Account& account : chart_) {
        account.selectedActive = account.active;
    }
    loadRoots();
}

bool ScreenModel::passes(const Account& account) const {
    if (filter_ == 1) {
        return true;
    }
    const bool wantsActive = filter_ == 2 || filter_ == 6 || filter_ == 7;
    const bool wantsInactive = filter_ == 3 || filter_ == 8 || filter_ == 9;
    const bool wantsCorrelated = filter_ == 4 || filter_ == 6 || filter_ == 8;
    const bool wantsUncorrelated = filter_ == 5 || filter_ == 7 || filter_ == 9;
    return account.analytic && !(wantsActive && !account.active) && !(wantsInactive && account.active) &&
           !(wantsCorrelated && !account.data.correlated) && !(wantsUncorrelated && account.data.correlated);
}

void ScreenModel::completeSelection() {
    for (const Account& account : chart_) {
        const Account* child = &account;
        while (child != nullptr && child->selected) {
            Account* parent = find(child->parent);
            if (parent != nullptr) {
                parent->selected = true;
            }
            child = parent;
        }
    }
}

void ScreenModel::loadRoots() {
    roots_.clear();
    for (int nature = 0; nature < 4; ++nature) {
        auto root = std::make_unique<Node>();
        root->key = rootKeys[nature];
        root->nature = nature;
        root->checked = rootState(nature);
        roots_.push_back(std::move(root));
    }
}

bool ScreenModel::rootState(int nature) const {
    return !anyAnalytic(nature, "", true) && anyAnalytic(nature, "", false);
}

bool ScreenModel::anyAnalytic(int nature, const std::string& prefix, bool onlyInactive) const {
    return std::any_of(chart_.begin(), chart_.end(), [&](const Account& account) {
        return account.selected && account.analytic && account.data.nature == nature &&
               account.data.code.starts_with(prefix) && !(onlyInactive && account.selectedActive);
    });
}

void ScreenModel::load(Node& node) {
    if (node.explored) {
        return;
    }
    node.explored = true;
    const bool root = node.code.empty();
    const bool leaves = !root && levels_ - node.level <= 1;
    for (const Account& account : chart_) {
        if (!account.selected) {
            continue;
        }
        const bool below = anyAnalytic(node.nature, account.header, false);
        bool shown = false;
        bool checked = false;
        if (root) {
            shown = account.level == 1 && below;
            checked = !anyAnalytic(node.nature, "", true);
        } else if (leaves) {
            shown = account.parent == node.code && account.data.nature == node.nature;
            checked = account.selectedActive;
        } else {
            shown = account.parent == node.code && !account.analytic &&
                    (account.data.nature == node.nature || below);
            checked = below && !anyAnalytic(node.nature, account.header, true);
        }
        if (shown) {
            auto child = std::make_unique<Node>();
            child->key = accountKey(node.nature, account.data.code);
            child->code = account.data.code;
            child->nature = node.nature;
            child->level = account.level;
            child->checked = checked;
            child->explored = account.analytic;
            child->parent = &node;
            node.children.push_back(std::move(child));
        }
    }
}

void ScreenModel::expand(const std::string& key) {
    load(*node(key));
}

void ScreenModel::check(const std::string& key) {
    Node& checked = *node(key);
    checked.checked = !checked.checked;
    const bool on = checked.checked;
    activate(checked, on);
    setBelow(checked, on);
    mark(checked, on);
    for (Account& account : chart_) {
        if (account.selected) {
            account.active = account.selectedActive;
        }
    }
    bubble(checked);
}

void ScreenModel::activate(Node& node, bool on) {
    if (node.code.empty()) {
        load(node);
        for (const auto& child : node.children) {
            activate(*child, on);
        }
        return;
    }
    const bool onlyCorrelated = filter_ == 4 || filter_ == 6 || filter_ == 8;
    const bool onlyUncorrelated = filter_ == 5 || filter_ == 7 || filter_ == 9;
    const std::string& header = find(node.code)->header;
    for (const Account& account : chart_) {
        if (!account.analytic || account.data.nature != node.nature ||
            !account.data.code.starts_with(header) || (onlyCorrelated && !account.data.correlated) ||
            (onlyUncorrelated && account.data.correlated)) {
            continue;
        }
        if (on) {
            database_.insert(account.data.code);
        } else {
            database_.erase(account.data.code);
        }
    }
}

void ScreenModel::setBelow(Node& node, bool on) {
    node.checked = on;
    for (const auto& child : node.children) {
        setBelow(*child, on);
    }
}

void ScreenModel::mark(Node& node, bool on) {
    if (node.code.empty()) {
        for (const auto& child : node.children) {
            mark(*child, on);
        }
        return;
    }
    const std::string& header = find(node.code)->header;
    for (Account& account : chart_) {
        if (account.selected && account.data.nature == node.nature && account.data.code.starts_with(header)) {
            account.selectedActive = on;
        }
    }
}

void ScreenModel::bubble(Node& node) {
    for (Node* above = node.parent; above != nullptr; above = above->parent) {
        if (node.checked && !std::all_of(above->children.begin(), above->children.end(),
                                         [](const auto& child) { return child->checked; })) {
            return;
        }
        above->checked = node.checked;
    }
}

bool ScreenModel::hasPath(const std::string& code) const {
    for (const Account* account = find(code); account != nullptr; account = find(account->parent)) {
        if (account->level == 1) {
            return true;
        }
    }
    return false;
}

bool ScreenModel::search(const std::string& code) {
    const Account* account = find(code);
    if (account == nullptr || !account->selected || !account->analytic) {
        return false;
    }
    std::vector<std::string> path = {std::string(rootKeys[account->data.nature])};
    for (const Account* above = find(account->parent); above != nullptr; above = find(above->parent)) {
        path.insert(path.begin() + 1, accountKey(account->data.nature, above->data.code));
    }
    for (const std::string& key : path) {
        expand(key);
    }
    return true;
}

std::vector<std::string> ScreenModel::keys() const {
    std::vector<std::string> all;
    walk([&all](const Node& node, int) { all.push_back(node.key); });
    return all;
}

std::vector<std::string> ScreenModel::outline() const {
    std::vector<std::string> lines;
    walk([&lines](const Node& node, int depth) {
        const std::string indent(static_cast<std::size_t>(depth) * 2, ' ');
        lines.push_back(indent + (node.checked ? "[x] " : "[ ] ") + node.key);
        if (!node.explored) {
            lines.push_back(indent + "  ...");
        }
    });
    return lines;
}

void ScreenModel::walk(const std::function<void(const Node&, int)>& visit) const {
    const std::function<void(const Node&, int)> below = [&](const Node& node, int depth) {
        visit(node, depth);
        for (const auto& child : node.children) {
            below(*child, depth + 1);
        }
    };
    for (const auto& root : roots_) {
        below(*root, 0);
    }
}

std::vector<std::string> ScreenModel::workingTable() const {
    std::vector<std::string> rows;
    for (const Account& account : chart_) {
        rows.push_back(account.data.code + (account.active ? " 1" : " 0") +
                       (account.data.correlated ? " 1" : " 0"));
    }
    return rows;
}

std::vector<std::string> ScreenModel::selection() const {
    std::vector<std::string> rows;
    for (const Account& account : chart_) {
        if (account.selected) {
            rows.push_back(account.data.code + (account.selectedActive ? " 1" : " 0") +
                           (account.data.correlated ? " 1" : " 0"));
        }
    }
    return rows;
}

ScreenModel::Account* ScreenModel::find(const std::string& code) {
    return const_cast<Account*>(std::as_const(*this).find(code));
}

const ScreenModel::Account* ScreenModel::find(const std::string& code) const {
    const auto at = std::find_if(chart_.begin(), chart_.end(),
                                 [&code](const Account& account) { return account.data.code == code; });
    return at == chart_.end() ? nullptr : &*at;
}

ScreenModel::Node* ScreenModel::node(const std::string& key) {
    Node* found = nullptr;
    walk([&](const Node& candidate, int) {
        if (candidate.key == key) {
            found = const_cast<Node*>(&candidate);
        }
    });
    return found;
}

} // namespace veldran::test
