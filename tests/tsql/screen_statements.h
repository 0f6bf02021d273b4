#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace veldran::tsql::test {

// A statement as the screen sends it: lines joined by carriage return and line feed, literals in place.
struct ScreenStatement {
    std::string name;
    std::string text;
    std::size_t markers = 0;

    friend std::ostream& operator<<(std::ostream& stream, const ScreenStatement& statement) {
        return stream << statement.name;
    }
};

const std::vector<ScreenStatement>& screenStatements();

// The text of the statement with that name. \throws std::out_of_range when there is none.
const std::string& screenStatement(const std::string& name);

} // namespace veldran::tsql::test
