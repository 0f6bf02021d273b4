#include "benchmarks/results.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace veldran::bench {

namespace {

double median(std::vector<double> values) {
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

Cost median(const std::vector<Cost>& costs) {
    std::vector<double> processor;
    std::vector<double> passed;
    for (const Cost& cost : costs) {
        processor.push_back(cost.processor);
        passed.push_back(cost.passed);
    }
    return {median(std::move(processor)), median(std::move(passed))};
}

std::string describe(const ChartKind& kind) {
    return std::to_string(kind.accounts) + " accounts, " + std::to_string(kind.levels) + " levels" +
           (kind.wide > 0 ? ", " + std::to_string(kind.wide) + " in one grouping" : "");
}

/// Empty without a value.
std::string number(const std::optional<double>& value, int decimals) {
    if (!value) {
        return "";
    }
    char text[32];
    std::snprintf(text, sizeof text, "%.*f", decimals, *value);
    return text;
}

} // namespace

std::optional<double> Line::ratio() const {
    return floor && floor->processor > 0 ? std::optional(screen.processor / floor->processor) : std::nullopt;
}

void Results::add(const ChartKind& chart, const std::string& scenario, const Cost& screen,
                  const std::optional<Cost>& floor, const std::optional<double>& data) {
    auto found = std::find_if(all_.begin(), all_.end(), [&](const Samples& samples) {
        return samples.chart == chart && samples.scenario == scenario;
    });
    if (found == all_.end()) {
        all_.push_back({chart, scenario, {}, {}, {}});
        found = std::prev(all_.end());
    }
    found->screen.push_back(screen);
    if (floor) {
        found->floor.push_back(*floor);
    }
    if (data) {
        found->data.push_back(*data);
    }
}

std::vector<Line> Results::lines() const {
    std::vector<Line> result;
    for (const Samples& samples : all_) {
        Line line{samples.chart, samples.scenario, samples.screen.size(), median(samples.screen), {}, {}};
        if (!samples.floor.empty()) {
            line.floor = median(samples.floor);
        }
        if (!samples.data.empty()) {
            line.data = median(samples.data);
        }
        result.push_back(std::move(line));
    }
    return result;
}

void printTable(const std::vector<Line>& lines) {
    const Line* previous = nullptr;
    for (const Line& line : lines) {
        if (previous == nullptr || previous->chart != line.chart) {
            std::printf("\n%s\n%-40s %11s %11s %7s %11s %11s %9s\n", describe(line.chart).c_str(),
                        "medians in ms", "screen", "by hand", "ratio", "passed", "by hand", "data");
        }
        const std::optional<double> floor = line.floor ? std::optional(line.floor->processor) : std::nullopt;
        const std::optional<double> passed = line.floor ? std::optional(line.floor->passed) : std::nullopt;
        std::printf("%-40s %11.3f %11s %7s %11.3f %11s %9s\n", line.scenario.c_str(), line.screen.processor,
                    number(floor, 3).c_str(), number(line.ratio(), 2).c_str(), line.screen.passed,
                    number(passed, 3).c_str(), number(line.data, 3).c_str());
        previous = &line;
    }
}

void writeCsv(const std::vector<Line>& lines, const std::string& path) {
    std::ofstream out(path);
    out << "accounts,levels,wide,scenario,samples,screen_ms,by_hand_ms,ratio,screen_passed_ms,by_hand_passed_"
           "ms,"
           "data_ms\n";
    for (const Line& line : lines) {
        const std::optional<double> floor = line.floor ? std::optional(line.floor->processor) : std::nullopt;
        const std::optional<double> passed = line.floor ? std::optional(line.floor->passed) : std::nullopt;
        out << line.chart.accounts << ',' << line.chart.levels << ',' << line.chart.wide << ",\""
            << line.scenario << "\"," << line.samples << ',' << line.screen.processor << ','
            << number(floor, 6) << ',' << number(line.ratio(), 3) << ',' << line.screen.passed << ','
            << number(passed, 6) << ',' << number(line.data, 6) << '\n';
    }
    if (!out.flush()) {
        throw std::runtime_error("cannot write " + path);
    }
}

} // namespace veldran::bench
