#include "bench/chart_file.h"
#include "bench/floor.h"
#include "bench/screen.h"

#include <benchmark/benchmark.h>
#include <sqlite3.h>

#include <chrono>
#include <ctime>
#include <memory>
#include <string>
#include <utility>

/// How long a user waits. Every step is measured twice: by the statements of the screen on the embedded
/// database, and by hand. Times of the steps and the memory that SQLite held are counters.
namespace veldran::bench {

namespace {

using Maker = std::unique_ptr<Subject> (*)(const ChartFile&);
using Seconds = std::chrono::duration<double>;

/// Processor time of a step, which other programs on the machine do not stretch.
template<typename Step>
void timed(benchmark::State& state, const char* name, Step step) {
    const std::clock_t begin = std::clock();
    step();
    state.counters[name] = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

/// What is wrong with the working tables; empty when nothing is.
std::string faultOf(Subject& subject, const ChartFile& file, int filter) {
    const Sums chart = subject.chart();
    if (chart.rows != file.accounts || chart.active != file.activated ||
        chart.correlated != file.correlated) {
        return "the chart's working table is not the chart";
    }
    const Sums selection = subject.selection();
    if (filter == 1) {
        return selection == chart ? "" : "the selection of all accounts is not the chart";
    }
    return selection.active == file.activated && selection.rows > selection.active &&
                   selection.rows <= chart.rows
               ? ""
               : "the selection of the activated accounts is wrong";
}

void select(benchmark::State& state, Subject& subject, int filter) {
    timed(state, "6_select", [&] { subject.select(filter); });
    if (filter != 1) {
        timed(state, "7_complete", [&] { subject.complete(); });
    }
    timed(state, "8_indexes", [&] { subject.indexSelection(); });
}

void buildChart(benchmark::State& state, Subject& subject) {
    timed(state, "1_chart", [&] { subject.buildChart(); });
    timed(state, "2_indexes", [&] { subject.indexChart(); });
    timed(state, "3_active", [&] { subject.markActive(); });
    timed(state, "4_correlated", [&] { subject.markCorrelated(); });
}

/// A screen that is open on all accounts.
std::unique_ptr<Subject> opened(Maker make, const ChartFile& file) {
    std::unique_ptr<Subject> subject = make(file);
    subject->buildChart();
    subject->indexChart();
    subject->markActive();
    subject->markCorrelated();
    subject->select(1);
    subject->indexSelection();
    return subject;
}

/// The screen that was opened last, kept while benchmarks ask for the same.
struct Kept {
    Maker make = nullptr;
    std::string path;
    std::unique_ptr<Subject> subject;
};

Kept& kept() {
    static Kept last;
    return last;
}

Subject& shared(Maker make, const ChartFile& file) {
    Kept& last = kept();
    if (!last.subject || last.make != make || last.path != file.path) {
        last.subject.reset();
        last = {make, file.path, opened(make, file)};
    }
    return *last.subject;
}

void startUp(benchmark::State& state, Maker make, int filter) {
    const ChartFile& file = chartFile(state.range(0), 5);
    kept() = {};
    for (auto _ : state) {
        sqlite3_memory_highwater(1);
        const std::unique_ptr<Subject> subject = make(file);
        const auto begin = std::chrono::steady_clock::now();
        buildChart(state, *subject);
        select(state, *subject, filter);
        timed(state, "9_root", [&] { subject->expandRoot(); });
        state.SetIterationTime(Seconds(std::chrono::steady_clock::now() - begin).count());
        state.counters["MB"] = static_cast<double>(sqlite3_memory_highwater(0)) / 1048576.0;
        if (const std::string fault = faultOf(*subject, file, filter); !fault.empty()) {
            state.SkipWithError(fault.c_str());
            return;
        }
    }
}

template<typename Step>
void repeated(benchmark::State& state, std::int64_t expected, Step step) {
    for (auto _ : state) {
        if (const std::int64_t count = step(); count != expected) {
            state.SkipWithError(("rows: " + std::to_string(count)).c_str());
            return;
        }
    }
}

void expandRoot(benchmark::State& state, Maker make) {
    const ChartFile& file = chartFile(state.range(0), 5);
    Subject& subject = shared(make, file);
    repeated(state, file.roots, [&] { return subject.expandRoot(); });
}

void expandWide(benchmark::State& state, Maker make) {
    const ChartFile& file = chartFile(100000, 2);
    Subject& subject = shared(make, file);
    repeated(state, file.children, [&] { return subject.expandChildren(file.parent); });
}

void lookup(benchmark::State& state, Maker make) {
    const ChartFile& file = chartFile(state.range(0), 5);
    Subject& subject = shared(make, file);
    repeated(state, 1, [&] { return subject.lookup(file.analytic); });
}

enum class Reach { Branch, Account };

void activation(benchmark::State& state, Maker make, Reach reach) {
    kept() = {};
    const ChartCopy copy(chartFile(state.range(0), 5));
    const ChartFile& file = copy.file;
    const std::unique_ptr<Subject> subject = opened(make, file);
    const bool branch = reach == Reach::Branch;
    const std::string header = branch ? file.root.substr(0, 2) : file.analytic;
    const std::int64_t others = file.activated - (branch ? file.activatedBelow : 1);
    bool on = false;
    for (auto _ : state) {
        subject->activate(header, on);
        state.PauseTiming();
        const std::int64_t expected = others + (!on ? 0 : branch ? file.below : 1);
        const bool right = subject->chart().active == expected && subject->selection().active == expected;
        state.ResumeTiming();
        if (!right) {
            state.SkipWithError("wrong accounts are active");
            return;
        }
        on = !on;
    }
}

void registerAll(const std::string& way, Maker make) {
    const auto sizes = [](benchmark::internal::Benchmark* benchmark) {
        benchmark->Arg(100'000)->Arg(1'000'000)->Unit(benchmark::kMillisecond);
        return benchmark;
    };
    const auto name = [&](const char* what) { return what + ("/" + way); };
    for (const int filter : {1, 2}) {
        const std::string what = "StartUp/filter" + std::to_string(filter);
        sizes(benchmark::RegisterBenchmark(name(what.c_str()).c_str(), startUp, make, filter))
            ->Iterations(1)
            ->UseManualTime();
    }
    sizes(benchmark::RegisterBenchmark(name("ExpandRoot").c_str(), expandRoot, make));
    benchmark::RegisterBenchmark(name("ExpandWide").c_str(), expandWide, make)->Unit(benchmark::kMillisecond);
    sizes(benchmark::RegisterBenchmark(name("Lookup").c_str(), lookup, make));
    sizes(benchmark::RegisterBenchmark(name("ActivateBranch").c_str(), activation, make, Reach::Branch))
        ->Iterations(4);
    sizes(benchmark::RegisterBenchmark(name("ActivateAccount").c_str(), activation, make, Reach::Account))
        ->Iterations(4);
}

} // namespace

} // namespace veldran::bench

int main(int argc, char** argv) {
    veldran::bench::registerAll("screen", &veldran::bench::makeScreen);
    veldran::bench::registerAll("floor", &veldran::bench::makeFloor);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
