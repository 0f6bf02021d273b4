#include "benchmarks/results.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>
#include <stdexcept>

/// Both axes are logarithmic: a cost that follows the chart's size climbs, one that does not stays level.
namespace veldran::bench {

namespace {

constexpr int panelWidth = 280;
constexpr int panelHeight = 200;
constexpr int columns = 4;
constexpr int marginLeft = 52;
constexpr int marginTop = 30;
constexpr int plotWidth = panelWidth - marginLeft - 24;
constexpr int plotHeight = panelHeight - marginTop - 32;
constexpr int headHeight = 64;
constexpr int footHeight = 12;
constexpr int sampleWidth = 26;           ///< of a line in the legend
constexpr int letterWidth = 6;            ///< on the average, for the places of the legend's entries
constexpr const char* anyColour = "#555"; ///< in the legend, of a line that stands for all colours

struct Point {
    double accounts;
    double milliseconds;
};

/// What the colour of a line tells.
struct Shape {
    std::string name; ///< "5 levels"
    const char* colour;
};

struct Curve {
    Shape shape;
    bool byHand = false;
    std::vector<Point> points;
};

struct Panel {
    std::string scenario;
    std::vector<Curve> curves;
};

Shape shapeOf(const ChartKind& chart) {
    if (chart.wide > 0) {
        return {"2 levels, one wide grouping", "#2a7f3f"};
    }
    return {std::to_string(chart.levels) + " levels", chart.levels == 4 ? "#c2591b" : "#1f4e8c"};
}

std::vector<Panel> panelsOf(const std::vector<Line>& lines) {
    std::vector<Panel> panels;
    const auto panelOf = [&](const std::string& scenario) -> Panel& {
        const auto found = std::find_if(panels.begin(), panels.end(),
                                        [&](const Panel& panel) { return panel.scenario == scenario; });
        return found != panels.end() ? *found : panels.emplace_back(Panel{scenario, {}});
    };
    const auto add = [](Panel& panel, const Shape& shape, bool byHand, Point point) {
        auto found = std::find_if(panel.curves.begin(), panel.curves.end(), [&](const Curve& curve) {
            return curve.shape.name == shape.name && curve.byHand == byHand;
        });
        if (found == panel.curves.end()) {
            panel.curves.push_back({shape, byHand, {}});
            found = std::prev(panel.curves.end());
        }
        found->points.push_back(point);
    };
    for (const Line& line : lines) {
        Panel& panel = panelOf(line.scenario);
        const Shape shape = shapeOf(line.chart);
        const auto accounts = static_cast<double>(line.chart.accounts);
        add(panel, shape, false, {accounts, std::max(line.screen.processor, 1e-4)});
        if (line.floor) {
            add(panel, shape, true, {accounts, std::max(line.floor->processor, 1e-4)});
        }
    }
    return panels;
}

/// Whole powers of ten around all values.
struct Scale {
    int low;
    int high;
    static Scale around(const std::vector<double>& values) {
        const auto [smallest, largest] = std::minmax_element(values.begin(), values.end());
        const int low = static_cast<int>(std::floor(std::log10(*smallest)));
        return {low, std::max(low + 1, static_cast<int>(std::ceil(std::log10(*largest))))};
    }
    double place(double value) const { return (std::log10(value) - low) / (high - low); }
};

std::string power(int exponent) {
    return exponent >= 0 ? std::to_string(std::llround(std::pow(10, exponent)))
                         : "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + "1";
}

/// Of as many accounts: "1k", "1M".
std::string sizeLabel(int exponent) {
    return exponent >= 6   ? power(exponent - 6) + "M"
           : exponent >= 3 ? power(exponent - 3) + "k"
                           : power(exponent);
}

void drawPoint(std::ostream& out, double x, double y, const char* colour, bool byHand) {
    out << "<circle cx=\"" << x << "\" cy=\"" << y << "\" r=\"2.2\" fill=\"" << (byHand ? "#fff" : colour)
        << "\" stroke=\"" << colour << "\"/>\n";
}

const char* dashesOf(bool byHand) {
    return byHand ? " stroke-dasharray=\"4 3\"" : "";
}

void drawPanel(std::ostream& out, const Panel& panel, const Scale& x, int left, int top) {
    std::vector<double> costs;
    for (const Curve& curve : panel.curves) {
        for (const Point& point : curve.points) {
            costs.push_back(point.milliseconds);
        }
    }
    const Scale y = Scale::around(costs);
    const auto placeX = [&](double value) { return marginLeft + x.place(value) * plotWidth; };
    const auto placeY = [&](double value) { return marginTop + (1 - y.place(value)) * plotHeight; };
    out << "<g transform=\"translate(" << left << ' ' << top << ")\"><text x=\"" << marginLeft
        << "\" y=\"20\" font-weight=\"bold\">" << panel.scenario << "</text>\n";
    for (int exponent = y.low; exponent <= y.high; ++exponent) {
        const double at = placeY(std::pow(10, exponent));
        out << "<path d=\"M" << marginLeft << ' ' << at << "h" << plotWidth
            << "\" stroke=\"#ddd\"/><text x=\"" << marginLeft - 6 << "\" y=\"" << at + 4
            << "\" text-anchor=\"end\">" << power(exponent) << "</text>\n";
    }
    for (int exponent = x.low; exponent <= x.high; ++exponent) {
        const double at = placeX(std::pow(10, exponent));
        out << "<path d=\"M" << at << ' ' << marginTop << "v" << plotHeight
            << "\" stroke=\"#eee\"/><text x=\"" << at << "\" y=\"" << marginTop + plotHeight + 16
            << "\" text-anchor=\"middle\">" << sizeLabel(exponent) << "</text>\n";
    }
    for (const Curve& curve : panel.curves) {
        out << "<polyline fill=\"none\" stroke=\"" << curve.shape.colour << "\" stroke-width=\"1.6\""
            << dashesOf(curve.byHand) << " points=\"";
        for (const Point& point : curve.points) {
            out << placeX(point.accounts) << ',' << placeY(point.milliseconds) << ' ';
        }
        out << "\"/>\n";
        for (const Point& point : curve.points) {
            drawPoint(out, placeX(point.accounts), placeY(point.milliseconds), curve.shape.colour,
                      curve.byHand);
        }
    }
    out << "</g>\n";
}

/// The colours that occur, then what a whole and a dashed line are.
void drawLegend(std::ostream& out, const std::vector<Line>& lines) {
    int left = 12;
    constexpr int middle = 46;
    const auto entry = [&](const Shape& shape, bool byHand) {
        out << "<path d=\"M" << left << ' ' << middle << "h" << sampleWidth << "\" stroke=\"" << shape.colour
            << "\" stroke-width=\"1.6\"" << dashesOf(byHand) << "/>";
        drawPoint(out, left + sampleWidth / 2.0, middle, shape.colour, byHand);
        out << "<text x=\"" << left + sampleWidth + 6 << "\" y=\"" << middle + 4 << "\">" << shape.name
            << "</text>\n";
        left += sampleWidth + 30 + letterWidth * static_cast<int>(shape.name.size());
    };
    std::vector<std::string> told;
    for (const Line& line : lines) {
        const Shape shape = shapeOf(line.chart);
        if (std::find(told.begin(), told.end(), shape.name) == told.end()) {
            entry(shape, false);
            told.push_back(shape.name);
        }
    }
    left += 24;
    entry({"the screen", anyColour}, false);
    entry({"the same work by hand on SQLite", anyColour}, true);
}

} // namespace

void drawPicture(const std::vector<Line>& lines, const std::string& path) {
    if (lines.empty()) {
        return;
    }
    const std::vector<Panel> panels = panelsOf(lines);
    std::vector<double> sizes;
    for (const Line& line : lines) {
        sizes.push_back(static_cast<double>(line.chart.accounts));
    }
    const Scale accounts = Scale::around(sizes); // one for all panels, so that they compare
    const int rows = (static_cast<int>(panels.size()) + columns - 1) / columns;
    std::ofstream out(path);
    out << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << columns * panelWidth << "\" height=\""
        << headHeight + rows * panelHeight + footHeight
        << "\" font-family=\"sans-serif\" font-size=\"11\"><rect width=\"100%\" height=\"100%\" "
           "fill=\"#fff\"/>\n<text x=\"12\" y=\"24\" font-size=\"15\">Milliseconds of processor time of each "
           "action, by the number of accounts in the chart (both scales logarithmic)</text>\n";
    drawLegend(out, lines);
    int number = 0;
    for (const Panel& panel : panels) {
        drawPanel(out, panel, accounts, number % columns * panelWidth,
                  headHeight + number / columns * panelHeight);
        ++number;
    }
    out << "</svg>\n";
    if (!out.flush()) {
        throw std::runtime_error("cannot write " + path);
    }
}

} // namespace veldran::bench
