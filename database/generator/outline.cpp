#include "database/generator/outline.h"

#include "database/generator/account_code.h"
#include "database/generator/source_error.h"

#include <algorithm>
#include <map>
#include <set>

namespace veldran::chartgen {
namespace {

struct Node {
    std::string description;
    int number = 0; // 0: numbered by its place among its siblings
    int nature = 0;
    SourceLine line;
    std::vector<Node> children;
};

const std::map<std::string, int>& natures() {
    static const std::map<std::string, int> values = {
        {"ordine", 0}, {"patrimoniale", 1}, {"economico", 2}, {"da non stampare", 3}};
    return values;
}

class Builder {
public:
    Builder(const SourceText& source, int levels) : source_(source), levels_(levels) {}

    Chart build() {
        std::vector<Node> roots = readTree();
        Chart chart;
        chart.levels = levels_;
        std::vector<int> groups;
        std::vector<std::string> path;
        emit(roots, groups, path, chart);
        return chart;
    }

private:
    [[noreturn]] void fail(const SourceLine& line, const std::string& message) const {
        throw SourceError(source_.name, line.number, message);
    }

    std::vector<Node> readTree() {
        std::vector<Node> roots;
        std::size_t at = 0;
        while (at < source_.lines.size()) {
            const SourceLine& line = source_.lines[at];
            if (line.indent == 0 && line.text.rfind("lista ", 0) == 0) {
                readList(line);
                ++at;
            } else if (line.indent == 0 && line.text.rfind("natura ", 0) == 0) {
                readNature(line);
                ++at;
            } else {
                for (Node& node : readNodes(at, 1))
                    roots.push_back(std::move(node));
            }
        }
        return roots;
    }

    void readList(const SourceLine& line) {
        const auto parts = splitTrimmed(std::string_view(line.text).substr(6), "=");
        if (parts.size() != 2 || parts[0].empty() || parts[1].empty())
            fail(line, "a list is written \"lista NOME = voce; voce\"");
        if (!lists_.emplace(parts[0], splitTrimmed(parts[1], ";")).second)
            fail(line, "the list " + parts[0] + " is defined twice");
    }

    void readNature(const SourceLine& line) {
        const auto found = natures().find(std::string(trimmed(std::string_view(line.text).substr(7))));
        if (found == natures().end())
            fail(line, "unknown nature in \"" + line.text + "\"");
        nature_ = found->second;
    }

    // The accounts of the line at `at`, with what is indented below it; leaves `at` on the next line of this
    // level.
    std::vector<Node> readNodes(std::size_t& at, int level) {
        const SourceLine line = source_.lines[at++];
        if (line.indent != level - 1)
            fail(line, "an account of level " + std::to_string(level) + " was expected here");
        if (nature_ < 0)
            fail(line, "no nature has been given yet");
        std::vector<Node> nodes = expandLine(line, level);

        std::vector<Node> children;
        while (at < source_.lines.size() && source_.lines[at].indent >= level) {
            if (level == levels_)
                fail(source_.lines[at], "the chart has " + std::to_string(levels_) + " levels only");
            for (Node& child : readNodes(at, level + 1))
                children.push_back(std::move(child));
        }
        if (level < levels_ && children.empty())
            fail(line, "the grouping \"" + line.text + "\" has no accounts below it");
        for (Node& node : nodes)
            node.children = children;
        return nodes;
    }

    std::vector<Node> expandLine(const SourceLine& line, int level) {
        std::string text = line.text;
        int number = 0;
        if (level == 1) {
            const auto blank = text.find(' ');
            if (blank == std::string::npos)
                fail(line, "a level-1 account is its number and its description");
            number = parseNumber(source_, line, text.substr(0, blank), 1, groupCapacity(levels_, 1));
            text = text.substr(blank + 1);
        }
        std::vector<Node> nodes;
        for (const std::string& part : splitTrimmed(text, ";"))
            for (const std::string& description : expandLists(line, part))
                nodes.push_back({description, number, nature_, line, {}});
        if (level == 1 && nodes.size() != 1)
            fail(line, "a line of level 1 is one account");
        return nodes;
    }

    std::vector<std::string> expandLists(const SourceLine& line, const std::string& text) {
        if (text.empty())
            fail(line, "an account without a description");
        const auto open = text.find('{');
        if (open == std::string::npos)
            return {text};
        const auto close = text.find('}', open);
        const std::string name = text.substr(open + 1, close == std::string::npos ? close : close - open - 1);
        const auto found = lists_.find(name);
        if (close == std::string::npos || found == lists_.end())
            fail(line, "unknown list {" + name + "}");
        std::vector<std::string> descriptions;
        for (const std::string& entry : found->second)
            for (std::string& description :
                 expandLists(line, text.substr(0, open) + entry + text.substr(close + 1)))
                descriptions.push_back(std::move(description));
        return descriptions;
    }

    void emit(const std::vector<Node>& siblings, std::vector<int>& groups, std::vector<std::string>& path,
              Chart& chart) const {
        const int level = static_cast<int>(groups.size()) + 1;
        const int count = static_cast<int>(siblings.size());
        const int capacity = groupCapacity(levels_, level);
        const int step = level < levels_ && count * 5 <= capacity ? 5 : 1;
        if (count > capacity)
            fail(siblings.front().line,
                 "more than " + std::to_string(capacity) + " accounts in one grouping");
        std::set<std::string> descriptions;
        int previous = 0;
        for (const Node& node : siblings) {
            const int number = node.number != 0 ? node.number : previous + step;
            if (number <= previous)
                fail(node.line, "account numbers must rise");
            if (!descriptions.insert(node.description).second)
                fail(node.line, "\"" + node.description + "\" appears twice in one grouping");
            previous = number;
            groups.push_back(number);
            path.push_back(node.description);
            chart.accounts.push_back({composeCode(levels_, groups), path, node.nature});
            if (!node.children.empty())
                emit(node.children, groups, path, chart);
            groups.pop_back();
            path.pop_back();
        }
    }

    const SourceText& source_;
    int levels_;
    int nature_ = -1;
    std::map<std::string, std::vector<std::string>> lists_;
};

bool endsWith(const std::vector<std::string>& path, const std::vector<std::string>& tail) {
    return path.size() >= tail.size() && std::equal(tail.rbegin(), tail.rend(), path.rbegin());
}

bool passesThrough(const std::vector<std::string>& path, const std::vector<std::string>& stretch) {
    const auto parents = path.end() - 1;
    return std::search(path.begin(), parents, stretch.begin(), stretch.end()) != parents;
}

} // namespace

Chart buildChart(const SourceText& outline, int levels) {
    return Builder(outline, levels).build();
}

std::vector<const ChartAccount*> findByPath(const Chart& chart, const std::string& path) {
    std::vector<std::string> parts = splitTrimmed(path, " / ");
    const bool below = parts.size() > 1 && parts.back() == "*";
    if (below)
        parts.pop_back();
    std::vector<const ChartAccount*> found;
    for (const ChartAccount& account : chart.accounts)
        if (below ? chart.isAnalytic(account) && passesThrough(account.path, parts)
                  : endsWith(account.path, parts))
            found.push_back(&account);
    return found;
}

} // namespace veldran::chartgen
