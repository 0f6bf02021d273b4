#include "benchmarks/round.h"

#include <CLI/CLI.hpp>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

/// How long a user waits: every action of the screen beside the same work done by hand on SQLite.
namespace veldran::bench {

namespace {

struct Options {
    std::vector<std::int64_t> sizes{1'000, 10'000, 100'000, 1'000'000};
    std::vector<int> levels{4, 5};
    int rounds = 0; ///< 0: as many as the size allows
    bool quick = false;
    std::string folder = VELDRAN_BENCH_DIR;
};

int roundsOf(std::int64_t accounts) {
    return accounts <= 10'000 ? 9 : accounts <= 100'000 ? 5 : 3;
}

std::string nameOf(const ChartKind& kind) {
    return "round/accounts:" + std::to_string(kind.accounts) + "/levels:" + std::to_string(kind.levels) +
           (kind.wide > 0 ? "/wide:" + std::to_string(kind.wide) : "");
}

std::vector<ChartKind> chartsOf(const Options& options) {
    std::vector<ChartKind> kinds;
    for (const std::int64_t accounts : options.sizes) {
        for (const int levels : options.levels) {
            kinds.push_back({accounts, levels, 0});
        }
        if (accounts >= 100'000) {
            // Five digits number the accounts of one grouping.
            kinds.push_back({accounts, 2, std::min<std::int64_t>(accounts / 10, 99'999)});
        }
    }
    return kinds;
}

void registerRounds(const Options& options, Results& results) {
    for (const ChartKind& kind : chartsOf(options)) {
        const auto rounds = [kind, &results](benchmark::State& state) {
            bool screenFirst = true;
            for (auto _ : state) {
                try {
                    playRound(kind, screenFirst, results);
                    screenFirst = !screenFirst;
                } catch (const std::exception& error) {
                    state.SkipWithError(error.what());
                    std::fprintf(stderr, "%s: %s\n", nameOf(kind).c_str(), error.what());
                    std::exit(1);
                }
            }
        };
        benchmark::RegisterBenchmark(nameOf(kind).c_str(), rounds)
            ->Iterations(options.quick        ? 1
                         : options.rounds > 0 ? options.rounds
                                              : roundsOf(kind.accounts))
            ->Unit(benchmark::kSecond)
            ->MeasureProcessCPUTime();
    }
}

/// The command line, which fills `options`.
std::unique_ptr<CLI::App> commandLine(Options& options) {
    auto app = std::make_unique<CLI::App>(
        "Every action of the screen, measured beside the same work by hand on SQLite.", "bench");
    app->add_option("--sizes", options.sizes, "Accounts of the charts")
        ->delimiter(',')
        ->capture_default_str();
    app->add_option("--levels", options.levels, "Levels of the charts")
        ->delimiter(',')
        ->capture_default_str();
    app->add_option("--rounds", options.rounds, "Rounds on each chart; 0 lets the size decide");
    app->add_flag("--quick", options.quick, "One round on each chart");
    app->add_option("--folder", options.folder, "Where the table and the picture are left");
    return app;
}

/// What the benchmark library shows instead of its own help.
void printHelp() {
    Options options;
    std::fputs(commandLine(options)->help().c_str(), stdout);
}

Options read(int argc, char** argv) {
    Options options;
    const std::unique_ptr<CLI::App> app = commandLine(options);
    try {
        app->parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        std::exit(app->exit(error));
    }
    return options;
}

} // namespace

} // namespace veldran::bench

int main(int argc, char** argv) {
    using namespace veldran::bench;
    benchmark::Initialize(&argc, argv, printHelp);
    const Options options = read(argc, argv);
    Results results;
    registerRounds(options, results);
    benchmark::RunSpecifiedBenchmarks();
    const std::vector<Line> lines = results.lines();
    printTable(lines);
    std::filesystem::create_directories(options.folder);
    writeCsv(lines, options.folder + "/actions.csv");
    drawPicture(lines, options.folder + "/actions.svg");
    std::printf("\n%s/actions.csv\n%s/actions.svg\n", options.folder.c_str(), options.folder.c_str());
    return 0;
}
