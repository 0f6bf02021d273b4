#include "database/generator/account_code.h"

#include "database/generator/source_error.h"

#include <cstddef>

namespace veldran::chartgen {
namespace {

struct Group {
    int first; // 0-based position in the code
    int length;
};

// Where each level's group stands, by number of levels. Positions that no group covers stay zero.
const std::vector<Group>& groupsOf(int levels) {
    static const std::vector<std::vector<Group>> shapes = {
        {{0, 2}, {5, 5}},
        {{0, 2}, {4, 2}, {6, 4}},
        {{0, 2}, {2, 2}, {4, 2}, {6, 4}},
        {{0, 2}, {2, 2}, {4, 2}, {6, 2}, {8, 2}},
    };
    if (levels < minLevels || levels > maxLevels)
        throw SourceError("a chart has 2 to 5 levels, not " + std::to_string(levels));
    return shapes[static_cast<std::size_t>(levels - minLevels)];
}

int capacityOf(const Group& group) {
    int capacity = 1;
    for (int digit = 0; digit < group.length; ++digit)
        capacity *= 10;
    return capacity - 1;
}

} // namespace

int groupCapacity(int levels, int level) {
    const auto& shape = groupsOf(levels);
    if (level < 1 || level > levels)
        throw SourceError("a chart of " + std::to_string(levels) + " levels has no level " +
                          std::to_string(level));
    return capacityOf(shape[static_cast<std::size_t>(level - 1)]);
}

std::string composeCode(int levels, const std::vector<int>& groups) {
    const auto& shape = groupsOf(levels);
    if (groups.empty() || groups.size() > shape.size())
        throw SourceError("an account of this chart has 1 to " + std::to_string(levels) + " groups");
    std::string code(static_cast<std::size_t>(codeLength), '0');
    for (std::size_t index = 0; index < groups.size(); ++index) {
        const Group& group = shape[index];
        int number = groups[index];
        if (number < 1 || number > capacityOf(group))
            throw SourceError("number " + std::to_string(number) + " does not fit the group of level " +
                              std::to_string(index + 1));
        for (int digit = group.length - 1; digit >= 0; --digit) {
            code[static_cast<std::size_t>(group.first + digit)] = static_cast<char>('0' + number % 10);
            number /= 10;
        }
    }
    return code;
}

} // namespace veldran::chartgen
