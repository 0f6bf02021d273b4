#include "tests/support/account_rules.h"

#include <bitset>
#include <map>
#include <stdexcept>

namespace veldran::test {
namespace {

// Positions are 1-based and inclusive, as in an accountant's description of the code.
struct Positions {
    int from;
    int to;
};

struct LevelRow {
    Positions group;  // the level's own digits
    Positions header; // digits that name an account of this level
};

// Chart by chart, the rows of levels 1, 2, ... The last level is named by the whole code.
const std::map<int, std::vector<LevelRow>>& charts() {
    static const std::map<int, std::vector<LevelRow>> rows = {
        {2, {{{1, 2}, {1, 2}}, {{6, 10}, {1, 10}}}},
        {3, {{{1, 2}, {1, 2}}, {{5, 6}, {1, 6}}, {{7, 10}, {1, 10}}}},
        {4, {{{1, 2}, {1, 2}}, {{3, 4}, {1, 4}}, {{5, 6}, {1, 6}}, {{7, 10}, {1, 10}}}},
        {5, {{{1, 2}, {1, 2}}, {{3, 4}, {1, 4}}, {{5, 6}, {1, 6}}, {{7, 8}, {1, 8}}, {{9, 10}, {1, 10}}}},
    };
    return rows;
}

std::string cut(const std::string& code, Positions positions) {
    return code.substr(static_cast<std::size_t>(positions.from - 1),
                       static_cast<std::size_t>(positions.to - positions.from + 1));
}

std::string filled(std::string prefix) {
    prefix.resize(10, '0');
    return prefix;
}

bool isZero(const std::string& digits) {
    return digits.find_first_not_of('0') == std::string::npos;
}

} // namespace

AccountFacts factsOf(int levels, const std::string& code) {
    if (code.size() != 10)
        throw std::invalid_argument("an account code has ten characters: " + code);
    AccountFacts facts;
    facts.ancestors[0] = filled(cut(code, {1, 2}));
    const auto chart = charts().find(levels);
    if (chart == charts().end())
        return facts;

    const std::vector<LevelRow>& rows = chart->second;
    std::size_t level = rows.size();
    while (level > 1 && isZero(cut(code, rows[level - 1].group)))
        --level;

    std::string display;
    for (const LevelRow& row : rows)
        display += (display.empty() ? "" : "/") + cut(code, row.group);
    facts.display = display;
    facts.level = static_cast<int>(level);
    facts.analytic = level == rows.size();
    facts.header = cut(code, rows[level - 1].header);
    if (level > 1)
        facts.parent = filled(cut(code, rows[level - 2].header));
    for (std::size_t index = 0; index < rows.size(); ++index)
        facts.ancestors[index] = filled(cut(code, rows[index].header));
    return facts;
}

std::vector<std::string> everyCodeShape() {
    std::vector<std::string> codes;
    for (unsigned pattern = 0; pattern < 1024; ++pattern) {
        const std::bitset<10> nonZero(pattern);
        std::string code(10, '0');
        for (std::size_t position = 0; position < code.size(); ++position)
            if (nonZero[code.size() - 1 - position])
                code[position] = "1234567891"[position];
        codes.push_back(code);
    }
    return codes;
}

} // namespace veldran::test
