#pragma once

#include "benchmarks/chart_file.h"
#include "benchmarks/clock.h"

#include <optional>
#include <string>
#include <vector>

namespace veldran::bench {

/// Medians of one scenario on one chart, in milliseconds.
struct Line {
    ChartKind chart;
    std::string scenario;
    std::size_t samples = 0;
    Cost screen;
    std::optional<Cost> floor;  ///< empty where by hand there is nothing to do
    std::optional<double> data; ///< building the plain data that the tree shows, without reading it

    /// Of processor times; empty without a floor.
    std::optional<double> ratio() const;
};

/// What was measured, in the order in which scenarios first came.
class Results {
public:
    void add(const ChartKind& chart, const std::string& scenario, const Cost& screen,
             const std::optional<Cost>& floor, const std::optional<double>& data = std::nullopt);
    std::vector<Line> lines() const;

private:
    struct Samples {
        ChartKind chart;
        std::string scenario;
        std::vector<Cost> screen;
        std::vector<Cost> floor;
        std::vector<double> data;
    };
    std::vector<Samples> all_;
};

void printTable(const std::vector<Line>& lines);
/// \throws std::runtime_error when the file cannot be written; so does `drawPicture`.
void writeCsv(const std::vector<Line>& lines, const std::string& path);
/// Cost against the size of the chart, a small diagram for each scenario, as SVG.
void drawPicture(const std::vector<Line>& lines, const std::string& path);

} // namespace veldran::bench
