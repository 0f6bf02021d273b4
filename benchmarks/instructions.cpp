#include "benchmarks/screen.h"

#include <cstdio>
#include <exception>
#include <functional>
#include <stdexcept>
#include <string>

/// Four fixed pieces of work whose instructions are counted under callgrind, which counts only what runs
/// inside `veldran_counted`. Processor time would tell the machine's mood; instructions tell the program's.
namespace veldran::bench {

using Work = std::function<void()>;

} // namespace veldran::bench

/// What callgrind looks for by its name.
extern "C" [[gnu::noinline]] void veldran_counted(const veldran::bench::Work& work) {
    work();
    asm volatile(""); // keeps the call from becoming a jump
}

namespace veldran::bench {

namespace {

void openTheScreen(Subject& screen) {
    veldran_counted([&] { screen.open(); });
}

void expandManyAccounts(Subject& screen, const ChartFile& file) {
    screen.open();
    screen.aim(file.branch.front());
    screen.expand();
    screen.aim(file.branch.back());
    veldran_counted([&] { screen.expand(); });
    if (static_cast<std::int64_t>(screen.children().size()) != file.widest) {
        throw std::runtime_error("not all accounts are shown");
    }
}

/// Down one branch, an account of another one, a check and its opposite.
void workInTheTree(Subject& screen, const ChartFile& file) {
    screen.open();
    for (const Place& place : file.branch) {
        screen.aim(place);
        veldran_counted([&] { screen.expand(); });
    }
    veldran_counted([&] { screen.search(file.hidden); });
    screen.aim(file.leaf);
    for (int i = 0; i < 4; ++i) {
        veldran_counted([&] { screen.toggleCheck(); });
    }
}

void editACorrelation(Subject& screen, const ChartFile& file) {
    screen.open();
    screen.search(file.edited.code);
    veldran_counted([&] { screen.enterCorrelations(); });
    for (int i = 0; i < 3; ++i) {
        screen.choose(otherCausale);
        veldran_counted([&] { screen.moveToCausale(); });
        screen.choose(storedCausale);
        veldran_counted([&] { screen.moveToCausale(); });
    }
    veldran_counted([&] { screen.key(newCausali.front(), sixRows()); });
    veldran_counted([&] { screen.save(); });
    veldran_counted([&] { screen.leaveCorrelations(); });
    veldran_counted([&] { screen.enterCorrelations(); });
    if (screen.shownRows().empty() || screen.listedCausali().size() != 3) {
        throw std::runtime_error("the saved correlation is not shown");
    }
}

int run(const std::string& name) {
    const ChartFile& chart = chartFile(name == "wide" ? ChartKind{6000, 2, 5000} : ChartKind{2000, 4, 0});
    const ChartCopy copy(chart, "." + name);
    const std::unique_ptr<Subject> screen = makeScreen(copy.file);
    if (name == "open") {
        openTheScreen(*screen);
    } else if (name == "wide") {
        expandManyAccounts(*screen, copy.file);
    } else if (name == "tree") {
        workInTheTree(*screen, copy.file);
    } else if (name == "correlation") {
        editACorrelation(*screen, copy.file);
    } else {
        std::fprintf(stderr, "veldran_instructions open|wide|tree|correlation\n");
        return 2;
    }
    if (name != "correlation") {
        screen->rootChecks(); // complains when the screen has reported an error
    }
    screen->close();
    return 0;
}

} // namespace

} // namespace veldran::bench

int main(int argc, char** argv) {
    try {
        return veldran::bench::run(argc == 2 ? argv[1] : "");
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
