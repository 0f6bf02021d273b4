#include "benchmarks/round.h"

#include "benchmarks/floor.h"
#include "benchmarks/screen.h"

#include <functional>
#include <memory>
#include <set>
#include <stdexcept>

namespace veldran::bench {

namespace {

class Round {
public:
    Round(const ChartKind& kind, bool screenFirst, Results& results)
        : kind_(kind), screenFirst_(screenFirst), results_(results), screenCopy_(chartFile(kind), ".screen"),
          floorCopy_(chartFile(kind), ".floor"), file_(screenCopy_.file),
          screen_(makeScreen(screenCopy_.file)), floor_(makeFloor(floorCopy_.file)) {}

    void play() {
        open();
        changeFilters();
        expand();
        search();
        // The same on a tree that is closed again: nothing has to be made ready any more.
        prepare([](Subject& s) { s.filter(1); });
        expand();
        search();
        check();
        editCorrelations();
        both(
            "close the screen", [](Subject& subject) { subject.close(); },
            [&] {
                require(storedState(screenCopy_.file.path) == storedState(floorCopy_.file.path),
                        "what is stored");
            });
    }

private:
    using Action = std::function<void(Subject&)>;

    /// Each way to do an action begins alike, whichever comes first.
    static Cost coolCostOf(const std::function<void()>& action) {
        coolDown();
        return costOf(action);
    }
    /// A scenario's first time is told apart, because both ways then make ready what they use again.
    std::string timeOf(const std::string& scenario) {
        return begun_.insert(scenario).second ? scenario + ", first time" : scenario;
    }
    /// Runs an action both ways, lets `verify` look, and only then counts what it cost.
    void both(
        const std::string& scenario, const Action& action, const std::function<void()>& verify = [] {}) {
        doing_ = scenario;
        const Costs costs = costsOf(action);
        verify();
        results_.add(kind_, scenario, costs.screen, costs.floor);
    }
    struct Costs {
        Cost screen;
        Cost floor;
    };
    /// Of the two, each is the first in every other round.
    Costs costsOf(const Action& action) {
        Costs costs;
        const auto ofScreen = [&] { costs.screen = coolCostOf([&] { action(*screen_); }); };
        if (screenFirst_) {
            ofScreen();
        }
        costs.floor = coolCostOf([&] { action(*floor_); });
        if (!screenFirst_) {
            ofScreen();
        }
        return costs;
    }
    void prepare(const Action& action) {
        action(*screen_);
        action(*floor_);
    }
    void require(bool holds, const std::string& what) const {
        if (!holds) {
            throw std::runtime_error(doing_ + ": " + what + " is wrong");
        }
    }
    template<typename Look>
    auto same(Look look, const std::string& what) {
        auto shown = look(*screen_);
        require(shown == look(*floor_), what);
        return shown;
    }

    void verifyTables(int filter) {
        const Sums chart = same([](Subject& s) { return s.chart(); }, "the chart's working table");
        require(chart.rows == file_.accounts && chart.active == file_.activated &&
                    chart.correlated == file_.correlated,
                "the chart");
        const Sums selection = same([](Subject& s) { return s.selection(); }, "the selection");
        require(filter != 1 || selection == chart, "the selection of all accounts");
        require(filter != 2 || selection.active == file_.activated, "the selection of activated accounts");
        same([](Subject& s) { return s.rootChecks(); }, "a root's check box");
    }

    void open() {
        both(
            "open the screen", [](Subject& s) { s.open(); }, [&] { verifyTables(1); });
    }

    void changeFilters() {
        for (const auto& [filter, name] : {std::pair(2, "filter Att."), std::pair(3, "filter Non att."),
                                           std::pair(2, "filter Att."), std::pair(1, "filter Tutti")}) {
            both(
                filter == 2 ? timeOf(name) : name, [&](Subject& s) { s.filter(filter); },
                [&] { verifyTables(filter); });
        }
    }

    /// Beside an expansion: what it costs to build the rows as plain data from what was read.
    double dataCost(const TreeRows& shown) {
        struct Read {
            std::string display;
            std::string description;
            bool active;
        };
        std::vector<Read> read;
        for (const TreeRow& row : shown) {
            const std::size_t dash = row.text.find(" - ");
            read.push_back({row.text.substr(0, dash), row.text.substr(dash + 3), row.checked});
        }
        TreeRows built;
        const Cost cost = coolCostOf([&] {
            built.reserve(read.size());
            for (const Read& row : read) {
                built.push_back({row.display + " - " + row.description, row.active});
            }
        });
        require(built == shown, "the plain data");
        return cost.processor;
    }

    void expandAt(const Place& place, const std::string& scenario) {
        doing_ = scenario;
        prepare([&](Subject& s) { s.aim(place); });
        const Costs costs = costsOf([](Subject& s) { s.expand(); });
        const TreeRows shown = same([](Subject& s) { return s.children(); }, "a level");
        require(!shown.empty(), "the number of children");
        const bool widest = place.code == file_.branch.back().code;
        require(!widest || static_cast<std::int64_t>(shown.size()) == file_.widest, "the widest level");
        results_.add(kind_, scenario, costs.screen, costs.floor, dataCost(shown));
    }

    void expand() {
        for (const Place& place : file_.branch) {
            const bool accounts = place.level + 1 == kind_.levels;
            expandAt(place, accounts && kind_.wide > 0 ? "expand " + std::to_string(kind_.wide) + " accounts"
                                                       : timeOf(accounts           ? "expand accounts"
                                                                : place.level == 0 ? "expand a root"
                                                                                   : "expand a level"));
        }
        for (const Place& place : file_.siblings) {
            expandAt(place, timeOf(kind_.levels == 2 ? "expand accounts" : "expand a level"));
        }
        prepare([&](Subject& s) { s.aim(file_.branch.back()); });
        // By hand there is nothing to do but to turn a mark.
        const TreeRows before = screen_->children();
        doing_ = "collapse and expand again";
        const Cost again = coolCostOf([&] {
            screen_->collapse();
            screen_->expand();
        });
        require(screen_->children() == before, "the level");
        results_.add(kind_, doing_, again, std::nullopt);
    }

    void search() {
        both(
            timeOf("search in a closed branch"), [&](Subject& s) { s.search(file_.hidden); },
            [&] { same([](Subject& s) { return s.selectedText(); }, "the selected account"); });
    }

    void toggle(const Place& place, const std::string& scenario) {
        prepare([&](Subject& s) { s.aim(place); });
        both(
            scenario, [](Subject& s) { s.toggleCheck(); },
            [&] {
                const Sums chart = same([](Subject& s) { return s.chart(); }, "the chart's working table");
                const Sums selection = same([](Subject& s) { return s.selection(); }, "the selection");
                require(chart == selection, "the write-back");
                same([](Subject& s) { return s.rootChecks(); }, "a root's check box");
                for (const Place& level : file_.branch) {
                    prepare([&](Subject& s) { s.aim(level); });
                    same([](Subject& s) { return s.children(); }, "a level's check boxes");
                }
            });
    }

    void check() {
        for (int i = 0; i < 4; ++i) {
            toggle(file_.leaf, timeOf("check an account"));
        }
        // There and back cost different things.
        const std::string grouping = kind_.levels == 2 ? "check the wide grouping" : "check a grouping";
        for (const std::string way : {"", ", and back"}) {
            toggle(file_.branch.back(), grouping + way);
        }
        for (const std::string way : {"", ", and back"}) {
            toggle(file_.branch.front(), "check a root" + way);
        }
    }

    void verifyRows(const CorrelationRows& expected) {
        const CorrelationRows rows = same([](Subject& s) { return s.shownRows(); }, "the rows");
        require(!rows.empty() && rows == expected, "the correlation");
    }
    void enter(std::size_t causali) {
        prepare([&](Subject& s) { s.aim(file_.edited); });
        both(
            timeOf("enter the correlations"), [](Subject& s) { s.enterCorrelations(); },
            [&] {
                same([](Subject& s) { return s.shownRows(); }, "the rows");
                verifyListed(causali);
            });
    }
    void verifyListed(std::size_t causali) {
        const auto listed = same([](Subject& s) { return s.listedCausali().size(); }, "the list");
        require(listed == causali, "the number of causali");
    }
    void leave() {
        both(
            timeOf("leave the correlations"), [](Subject& s) { s.leaveCorrelations(); },
            [&] { same([](Subject& s) { return s.chart(); }, "the correlation marks"); });
    }
    void moveTo(const std::string& causale, const CorrelationRows& expected) {
        prepare([&](Subject& s) { s.choose(causale); });
        both(
            timeOf("move to another causale"), [](Subject& s) { s.moveToCausale(); },
            [&] { verifyRows(expected); });
    }

    void editCorrelations() {
        const CorrelationRows six = sixRows();
        std::size_t causali = 2;
        enter(causali);
        const CorrelationRows stored = screen_->shownRows();
        for (int i = 0; i < 3; ++i) {
            moveTo(otherCausale, six);
            moveTo(storedCausale, stored);
        }
        for (const char* causale : newCausali) {
            prepare([&](Subject& s) { s.key(causale, six); });
            both(
                timeOf("save six rows"), [](Subject& s) { s.save(); }, [&] { verifyRows(six); });
            verifyListed(++causali);
        }
        for (int i = 0; i < 3; ++i) {
            prepare([](Subject& s) { s.copyCausale(storedCausale, otherCausale); });
            both(
                timeOf("paste onto a causale"), [](Subject& s) { s.pasteOntoCausale(); },
                [&] { verifyRows(stored); });
        }
        for (const char* causale : freeCausali) {
            prepare([](Subject& s) {
                s.choose(storedCausale);
                s.moveToCausale();
            });
            both(
                timeOf("duplicate"), [&](Subject& s) { s.duplicateOnto(causale); },
                [&] { verifyListed(++causali); });
        }
        leave();
        for (int i = 0; i < 3; ++i) {
            enter(causali);
            leave();
        }
        prepare([&](Subject& s) { s.aim(file_.edited); });
        prepare([](Subject& s) { s.copyAccount(); });
        prepare([&](Subject& s) { s.aim(file_.bare); });
        for (int i = 0; i < 3; ++i) {
            both(
                timeOf("paste onto an account"), [](Subject& s) { s.pasteOntoAccount(); },
                [&] {
                    const Sums chart = same([](Subject& s) { return s.chart(); }, "the correlation marks");
                    require(chart.correlated == file_.correlated + 1, "the pasted account's mark");
                });
        }
    }

    ChartKind kind_;
    bool screenFirst_;
    Results& results_;
    ChartCopy screenCopy_;
    ChartCopy floorCopy_;
    const ChartFile& file_;
    std::unique_ptr<Subject> screen_;
    std::unique_ptr<Subject> floor_;
    std::string doing_;
    std::set<std::string> begun_; ///< scenarios that were played already
};

} // namespace

void playRound(const ChartKind& kind, bool screenFirst, Results& results) {
    Round(kind, screenFirst, results).play();
}

} // namespace veldran::bench
