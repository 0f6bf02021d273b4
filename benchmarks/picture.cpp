#include "benchmarks/results.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <map>
#include <stdexcept>

/// Both axes are logarithmic: a cost that follows the chart's size climbs, one that does not stays level.
namespace veldran::bench {

namespace {

constexpr int panelWidth = 250;
constexpr int panelHeight = 190;
constexpr int columns = 4;
constexpr int marginLeft = 46;
constexpr int marginTop = 30;
constexpr int plotWidth = panelWidth - marginLeft - 14;
constexpr int plotHeight = panelHeight - marginTop - 30;
constexpr int headHeight = 46;

struct Point {
    double accounts;
    double milliseconds;
};

struct Curve {
    std::string name; ///< "5 levels, screen"
    std::string colour;
    bool dashed = false;
    std::vector<Point> points;
};

struct Panel {
    std::string scenario;
    std::vector<Curve> curves;
};

std::vector<Panel> panelsOf(const std::vector<Line>& lines) {
    std::vector<Panel> panels;
    const auto panelOf = [&](const std::string& scenario) -> Panel& {
        const auto found = std::find_if(panels.begin(), panels.end(),
                                        [&](const Panel& panel) { return panel.scenario == scenario; });
        return found != panels.end() ? *found : panels.emplace_back(Panel{scenario, {}});
    };
    const auto add = [](Panel& panel, const std::string& name, const char* colour, bool dashed, Point point) {
        auto found = std::find_if(panel.curves.begin(), panel.curves.end(),
                                  [&](const Curve& curve) { return curve.name == name; });
        if (found == panel.curves.end()) {
            panel.curves.push_back({name, colour, dashed, {}});
            found = std::prev(panel.curves.end());
        }
        found->points.push_back(point);
    };
    for (const Line& line : lines) {
        Panel& panel = panelOf(line.scenario);
        const char* colour = line.chart.wide > 0 ? "#2a7f3f" : line.chart.levels == 4 ? "#b3541e" : "#1f4e8c";
        const std::string of = std::to_string(line.chart.levels);
        const auto accounts = static_cast<double>(line.chart.accounts);
        add(panel, of, colour, false, {accounts, std::max(line.screen.processor, 1e-4)});
        if (line.floor) {
            add(panel, of + " by hand", colour, true, {accounts, std::max(line.floor->processor, 1e-4)});
        }
    }
    return panels;
}

/// Whole powers of ten around all values.
struct Scale {
    int low;
    int high;
    static Scale around(double smallest, double largest) {
        const int low = static_cast<int>(std::floor(std::log10(smallest)));
        return {low, std::max(low + 1, static_cast<int>(std::ceil(std::log10(largest))))};
    }
    double place(double value) const { return (std::log10(value) - low) / (high - low); }
};

std::string power(int exponent) {
    return exponent >= 0 ? std::to_string(std::llround(std::pow(10, exponent)))
                         : "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + "1";
}

void drawPanel(std::ostream& out, const Panel& panel, int left, int top) {
    std::vector<double> costs;
    std::vector<double> sizes;
    for (const Curve& curve : panel.curves) {
        for (const Point& point : curve.points) {
            costs.push_back(point.milliseconds);
            sizes.push_back(point.accounts);
        }
    }
    const Scale x = Scale::around(*std::min_element(sizes.begin(), sizes.end()),
                                  *std::max_element(sizes.begin(), sizes.end()));
    const Scale y = Scale::around(*std::min_element(costs.begin(), costs.end()),
                                  *std::max_element(costs.begin(), costs.end()));
    const auto placeX = [&](double value) { return marginLeft + x.place(value) * plotWidth; };
    const auto placeY = [&](double value) { return marginTop + (1 - y.place(value)) * plotHeight; };
    out << "<g transform=\"translate(" << left << ' ' << top << ")\"><text x=\"" << marginLeft
        << "\" y=\"20\" font-weight=\"bold\">" << panel.scenario << "</text>\n";
    for (int exponent = y.low; exponent <= y.high; ++exponent) {
        const double at = placeY(std::pow(10, exponent));
        out << "<path d=\"M" << marginLeft << ' ' << at << "h" << plotWidth
            << "\" stroke=\"#ddd\"/><text x=\"" << marginLeft - 4 << "\" y=\"" << at + 3
            << "\" text-anchor=\"end\">" << power(exponent) << "</text>\n";
    }
    for (int exponent = x.low; exponent <= x.high; ++exponent) {
        const double at = placeX(std::pow(10, exponent));
        out << "<path d=\"M" << at << ' ' << marginTop << "v" << plotHeight
            << "\" stroke=\"#eee\"/><text x=\"" << at << "\" y=\"" << marginTop + plotHeight + 14
            << "\" text-anchor=\"middle\">10^" << exponent << "</text>\n";
    }
    for (const Curve& curve : panel.curves) {
        out << "<polyline fill=\"none\" stroke=\"" << curve.colour << "\" stroke-width=\"1.6\""
            << (curve.dashed ? " stroke-dasharray=\"4 3\"" : "") << " points=\"";
        for (const Point& point : curve.points) {
            out << placeX(point.accounts) << ',' << placeY(point.milliseconds) << ' ';
        }
        out << "\"/>\n";
        for (const Point& point : curve.points) {
            out << "<circle cx=\"" << placeX(point.accounts) << "\" cy=\"" << placeY(point.milliseconds)
                << "\" r=\"2\" fill=\"" << (curve.dashed ? "#fff" : curve.colour) << "\" stroke=\""
                << curve.colour << "\"/>\n";
        }
    }
    out << "</g>\n";
}

} // namespace

void drawPicture(const std::vector<Line>& lines, const std::string& path) {
    const std::vector<Panel> panels = panelsOf(lines);
    const int rows = (static_cast<int>(panels.size()) + columns - 1) / columns;
    std::ofstream out(path);
    out << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" << columns * panelWidth << "\" height=\""
        << headHeight + rows * panelHeight
        << "\" font-family=\"sans-serif\" font-size=\"9\"><rect width=\"100%\" height=\"100%\" "
           "fill=\"#fff\"/>\n"
        << "<text x=\"12\" y=\"20\" font-size=\"14\">Processor time in milliseconds against accounts of the "
           "chart</text><text x=\"12\" y=\"36\">blue: 5 levels; brown: 4 levels; green: 2 levels with one "
           "wide "
           "grouping. Whole: the screen; dashed: the same work by hand on SQLite.</text>\n";
    int number = 0;
    for (const Panel& panel : panels) {
        drawPanel(out, panel, number % columns * panelWidth, headHeight + number / columns * panelHeight);
        ++number;
    }
    out << "</svg>\n";
    if (!out.flush()) {
        throw std::runtime_error("cannot write " + path);
    }
}

} // namespace veldran::bench
