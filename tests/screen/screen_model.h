#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace veldran::test {

/// One account of a model's chart and what the company has done on it.
struct ModelAccount {
    std::string code;
    int nature = 0;
    bool activated = false;
    bool correlated = false;
};

/// A simple rendering of what the screen shows and stores: lists and loops where the screen has tables,
/// indexes and statements. It keeps the screen's deliberate habits: an activation reaches accounts that the
/// filter hides in the database but not in the working tables, and boxes that are not loaded take their state
/// when they are.
class ScreenModel {
public:
    /// \param accounts in code order.
    ScreenModel(int levels, std::vector<ModelAccount> accounts);

    void open();
    void filter(int index);
    void expand(const std::string& key);
    void check(const std::string& key);
    /// \return false when the account is not an analytic one of the selection.
    bool search(const std::string& code);
    /// Every ancestor of the account is in the chart, so that a search can open its path.
    bool hasPath(const std::string& code) const;

    const std::vector<ModelAccount>& accounts() const { return accounts_; }
    /// Keys of the loaded nodes, from top to bottom.
    std::vector<std::string> keys() const;
    /// As `ScreenUser::outline`.
    std::vector<std::string> outline() const;
    /// "code activated correlated" of the rows of the two working tables, in chart order.
    std::vector<std::string> workingTable() const;
    std::vector<std::string> selection() const;
    /// Codes of CI35_CONTIATTIVI.
    std::vector<std::string> activations() const { return {database_.begin(), database_.end()}; }

private:
    struct Account {
        ModelAccount data;
        std::string header;
        std::string parent; ///< empty at the top
        int level = 0;
        bool analytic = false;
        bool active = false;         ///< in the table of the whole chart
        bool selected = false;       ///< the filter lets it through, or a descendant of it
        bool selectedActive = false; ///< in the table of the selection
    };
    struct Node {
        std::string key;
        std::string code; ///< empty for a root
        int nature = 0;
        int level = 0;
        bool checked = false;
        bool explored = false;
        Node* parent = nullptr;
        std::vector<std::unique_ptr<Node>> children;
    };

    bool passes(const Account& account) const;
    void completeSelection();
    void loadRoots();
    void load(Node& node);
    bool rootState(int nature) const;
    bool anyAnalytic(int nature, const std::string& prefix, bool onlyInactive) const;
    void activate(Node& node, bool on);
    void setBelow(Node& node, bool on);
    void mark(Node& node, bool on);
    void bubble(Node& node);
    Account* find(const std::string& code);
    const Account* find(const std::string& code) const;
    Node* node(const std::string& key);
    void walk(const std::function<void(const Node&, int depth)>& visit) const;

    int levels_;
    std::vector<ModelAccount> accounts_;
    std::vector<Account> chart_;
    std::set<std::string> database_;
    std::vector<std::unique_ptr<Node>> roots_;
    int filter_ = 1;
};

} // namespace veldran::test
