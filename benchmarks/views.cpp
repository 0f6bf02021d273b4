// From the user's action to the painted frame, with the form's views off screen: the tree with as many
// accounts below one grouping as a chart can hold, and the grid with as many rows as a correlation can have.
#include "adapters/embedded/driver.h"
#include "adapters/qt/form_view.h"
#include "benchmarks/clock.h"
#include "benchmarks/screen_host.h"
#include "database/generator/synthetic_script.h"
#include "platform/controls/data_grid.h"
#include "platform/controls/list_view.h"

#include <QAbstractScrollArea>
#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>
#include <cstdio>
#include <exception>
#include <functional>
#include <stdexcept>

namespace veldran::bench {

namespace {

constexpr std::int64_t manyAccounts = 99'999; // of five digits
constexpr int manyRows = 999;                 // of three digits

/// Counts what widgets paint while it lives.
class PaintCount : public QObject {
public:
    PaintCount() { qApp->installEventFilter(this); }
    int count() const { return count_; }
    bool eventFilter(QObject*, QEvent* event) override {
        count_ += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }

private:
    int count_ = 0;
};

/// The frames of one kind of action.
class Frames {
public:
    explicit Frames(std::string name) : name_(std::move(name)) {}

    /// Runs the action and everything it leaves to do until the window is painted.
    void add(const std::function<void()>& action) {
        const PaintCount paints;
        costs_.push_back(costOf([&] {
            action();
            QApplication::processEvents();
        }));
        if (paints.count() == 0) {
            throw std::runtime_error(name_ + ": nothing was painted");
        }
    }
    void print() const {
        std::vector<double> processor;
        double longest = 0;
        for (const Cost& cost : costs_) {
            processor.push_back(cost.processor);
            longest = std::max(longest, cost.passed);
        }
        std::sort(processor.begin(), processor.end());
        std::printf("%-44s %7zu %11.2f %11.2f %13.2f\n", name_.c_str(), costs_.size(),
                    processor[processor.size() / 2], processor.back(), longest);
    }

private:
    std::string name_;
    std::vector<Cost> costs_;
};

/// The form of an open screen, shown.
class ShownForm {
public:
    explicit ShownForm(const ChartFile& file) : host(makeHost(file)) {
        host->open();
        view = std::make_unique<qt::FormView>(host->form());
        view->resize(1000, 700);
        view->show();
        QApplication::processEvents();
    }
    ~ShownForm() { view.reset(); }

    template<class ControlType>
    ControlType& control(const char* name) {
        return host->user().control<ControlType>(name);
    }
    QWidget& viewOf(const controls::Control& control) {
        QWidget* found = view->viewOf(control);
        if (found == nullptr) {
            throw std::runtime_error("a control is not drawn");
        }
        return *found;
    }
    QScrollBar& scrollBarOf(const controls::Control& control) {
        return *dynamic_cast<QAbstractScrollArea&>(viewOf(control)).verticalScrollBar();
    }
    void press(QWidget& widget, Qt::Key key) {
        QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier);
        QApplication::sendEvent(&widget, &down);
    }

    std::unique_ptr<test::TestHost> host;
    std::unique_ptr<qt::FormView> view;
};

void printHead() {
    std::printf("%-44s %7s %11s %11s %13s\n", "action to painted frame, in ms", "frames", "median", "longest",
                "longest passed");
}

void measureTree() {
    const ChartCopy copy(chartFile({manyAccounts + 6001, 2, manyAccounts}), ".views");
    ShownForm form(copy.file);
    controls::TreeView& tree = form.host->user().tree();
    tree.SetExpanded(nodeAt(*form.host, copy.file.branch.front()), true);
    controls::TreeNode& wide = nodeAt(*form.host, copy.file.branch.back());
    tree.SelectFromView(wide);
    QApplication::processEvents();

    Frames first("expand " + std::to_string(manyAccounts) + " accounts");
    first.add([&] { tree.SetExpanded(wide, true); });
    if (wide.Children() != manyAccounts) {
        throw std::runtime_error("not all accounts are shown");
    }
    first.print();
    Frames again("collapse or expand them again");
    for (int i = 0; i < 20; ++i) {
        again.add([&] { tree.SetExpanded(wide, !wide.Expanded()); });
    }
    again.print();
    Frames pages("scroll by a page");
    QWidget& widget = form.viewOf(tree);
    for (int i = 0; i < 200; ++i) {
        pages.add([&] { form.press(widget, Qt::Key_PageDown); });
    }
    pages.print();
    Frames jumps("scroll anywhere");
    QScrollBar& bar = form.scrollBarOf(tree);
    for (int i = 0; i < 50; ++i) {
        jumps.add([&] { bar.setValue(static_cast<int>(bar.maximum() * ((i * 37LL) % 50) / 50)); });
    }
    jumps.print();
    Frames check("check an account among them");
    controls::TreeNode& account = *wide.ChildAt(manyAccounts / 2);
    for (int i = 0; i < 20; ++i) {
        check.add([&] { tree.CheckFromView(account); });
    }
    check.print();
    Frames all("check them all at once");
    for (int i = 0; i < 2; ++i) {
        all.add([&] { tree.CheckFromView(wide); });
    }
    all.print();
    requireNoErrors(*form.host);
}

/// Gives an account a correlation of as many rows as there are numbers.
void storeManyRows(const ChartFile& file) {
    embedded::EmbeddedDriver driver;
    const auto session = driver.open("Provider=VeldranEmbedded;Data Source=" + file.path, {}, {});
    session->begin();
    for (int number = 1; number <= manyRows; ++number) {
        session->execute("INSERT INTO CI15_CORRCONTICOGE VALUES (" + std::to_string(company) + ", '" +
                             newCausali.front() + "', " + std::to_string(chartCode) + ", '" +
                             file.edited.code + "', " + std::to_string(number) + ", " +
                             std::to_string(chartgen::syntheticCostChart) +
                             ", 'CDC010', NULL, NULL, 1, 0.10)",
                         {}, {0, false});
    }
    session->commit();
}

void measureGrid() {
    const ChartCopy copy(chartFile({1000, 4, 0}), ".views");
    storeManyRows(copy.file);
    ShownForm form(copy.file);
    form.host->user().search(copy.file.edited.code);
    auto& grid = form.control<controls::DataGrid>("GRD_DETTAGLIO");
    auto& list = form.control<controls::ListView>("LST_CAUSALI");
    Frames enter("enter the correlations");
    enter.add([&] { form.control<controls::Button>("CMD_ATTIVAZIONI").ClickFromView(); });
    enter.print();
    Frames show("show " + std::to_string(manyRows) + " rows, or few again");
    list.SetFocus();
    for (int i = 0; i < 20; ++i) {
        show.add([&] {
            const std::string causale = i % 2 == 0 ? newCausali.front() : storedCausale;
            for (std::size_t row = 0; row < list.Items().size(); ++row) {
                if (list.Items()[row]->Text() == causale) {
                    list.SelectFromView(row);
                }
            }
        });
        if (i % 2 == 0 && grid.RowCount() != manyRows) {
            throw std::runtime_error("not all rows are shown");
        }
    }
    show.print();
    list.SelectFromView(0);
    QApplication::processEvents();
    Frames rows("move to another row");
    for (std::size_t row = 1; row < 100; ++row) {
        rows.add([&] { grid.MoveFromView(row * 9 % grid.RowCount()); });
    }
    rows.print();
    requireNoErrors(*form.host);
}

} // namespace

} // namespace veldran::bench

int main(int argc, char** argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    try {
        veldran::bench::printHead();
        veldran::bench::measureTree();
        veldran::bench::measureGrid();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
