#include "benchmarks/floor.h"

#include "benchmarks/floor_correlations.h"
#include "benchmarks/floor_tables.h"

#include <map>
#include <optional>
#include <stdexcept>

namespace veldran::bench {

namespace {

/// A node of the tree as plain data.
struct Node {
    Place place;
    std::string text;
    bool checked = false;
    bool loaded = false;
    bool open = false;
    std::vector<Node> children;
};

class Floor : public Subject {
public:
    explicit Floor(const ChartFile& file) : file_(file) {}

    void open() override {
        tables_.emplace(file_);
        correlations_.emplace(*tables_);
        tables_->buildChart();
        filter(1);
    }
    void filter(int filter) override {
        tables_->select(filter);
        for (int nature = 0; nature < 4; ++nature) {
            Node& root = roots_[static_cast<std::size_t>(nature)];
            root = {};
            root.place.nature = nature;
            root.checked = tables_->allActive(nature);
        }
        path_.clear();
    }
    void expand() override { load(target()); }
    void collapse() override { target().open = false; }
    void toggleCheck() override {
        Node& node = target();
        const bool on = !node.checked;
        if (node.place.level == 0) {
            load(node);
            for (const Node& child : node.children) {
                tables_->activate(child.place, on);
            }
        } else {
            tables_->activate(node.place, on);
        }
        checkAll(node, on);
        for (std::size_t above = path_.size() - 1; above-- > 0;) {
            Node& parent = *path_[above];
            if (!on) {
                parent.checked = false;
                continue;
            }
            for (const Node& child : parent.children) {
                if (!child.checked) {
                    return;
                }
            }
            parent.checked = true;
        }
    }
    void search(const std::string& account) override {
        const std::vector<Place> path = tables_->pathTo(account);
        Node* node = &roots_[static_cast<std::size_t>(path.at(0).nature)];
        for (std::size_t level = 0; level < path.size(); ++level) {
            load(*node);
            node = find(*node, level + 1 < path.size() ? path[level + 1].code : account);
        }
        selected_ = node;
    }
    void enterCorrelations() override { correlations_->enter(target().place.code); }
    void moveToCausale() override { correlations_->moveTo(chosen_); }
    void save() override { correlations_->save(keyedCausale_, keyed_); }
    void pasteOntoCausale() override { correlations_->copyCausale(copied_, onto_, true); }
    void duplicateOnto(const std::string& causale) override {
        correlations_->copyCausale(storedCausale, causale, false);
    }
    void leaveCorrelations() override { correlations_->leave(); }
    void pasteOntoAccount() override { correlations_->copyAccount(copiedAccount_, target().place.code); }
    void close() override {
        correlations_.reset();
        tables_.reset();
        roots_ = {};
    }

    void aim(const Place& place) override {
        path_ = {&roots_[static_cast<std::size_t>(place.nature)]};
        for (int level = 1; level <= place.level; ++level) {
            Node* next = nullptr;
            for (Node& child : path_.back()->children) {
                if (place.code == child.place.code ||
                    (level < place.level && place.code.starts_with(tables_->headerOf(child.place)))) {
                    next = &child;
                }
            }
            if (next == nullptr) {
                throw std::runtime_error("the floor's tree lacks " + place.code);
            }
            path_.push_back(next);
        }
        selected_ = path_.back();
    }
    void choose(const std::string& causale) override { chosen_ = causale; }
    void key(const std::string& causale, const CorrelationRows& rows) override {
        keyedCausale_ = causale;
        keyed_ = rows;
    }
    void copyCausale(const std::string& from, const std::string& onto) override {
        copied_ = from;
        onto_ = onto;
        correlations_->moveTo(onto);
    }
    void copyAccount() override { copiedAccount_ = target().place.code; }

    std::array<bool, 4> rootChecks() override {
        return {roots_[0].checked, roots_[1].checked, roots_[2].checked, roots_[3].checked};
    }
    TreeRows children() override {
        TreeRows rows;
        for (const Node& child : target().children) {
            rows.push_back({child.text, child.checked});
        }
        return rows;
    }
    std::string selectedText() override { return selected_ == nullptr ? "" : selected_->text; }
    CorrelationRows shownRows() override { return correlations_->shown(); }
    std::vector<std::string> listedCausali() override { return correlations_->listed(); }
    Sums chart() override { return tables_->sums("chart"); }
    Sums selection() override { return tables_->sums("selection"); }

private:
    Node& target() { return *path_.back(); }
    void load(Node& node) {
        node.open = true;
        if (node.loaded) {
            return;
        }
        node.loaded = true;
        std::vector<ChartRow> rows = tables_->children(node.place);
        node.children.reserve(rows.size());
        for (ChartRow& row : rows) {
            Node& child = node.children.emplace_back();
            child.place = {node.place.nature, row.level, std::move(row.code)};
            child.text = row.display + " - " + row.description;
            child.checked = row.active;
        }
    }
    static void checkAll(Node& node, bool on) {
        node.checked = on;
        for (Node& child : node.children) {
            checkAll(child, on);
        }
    }
    static Node* find(Node& node, const std::string& code) {
        for (Node& child : node.children) {
            if (child.place.code == code) {
                return &child;
            }
        }
        throw std::runtime_error("the floor's tree lacks " + code);
    }

    ChartFile file_;
    std::optional<FloorTables> tables_;
    std::optional<FloorCorrelations> correlations_;
    std::array<Node, 4> roots_;
    std::vector<Node*> path_; ///< from a root to the node aimed at
    Node* selected_ = nullptr;
    std::string chosen_;
    std::string keyedCausale_;
    CorrelationRows keyed_;
    std::string copied_;
    std::string onto_;
    std::string copiedAccount_;
};

} // namespace

std::unique_ptr<Subject> makeFloor(const ChartFile& file) {
    return std::make_unique<Floor>(file);
}

} // namespace veldran::bench
