#include "tests/tsql/screen_statements.h"

#include "tests/tsql/screen_statements_by_subject.h"

#include <stdexcept>

namespace veldran::tsql::test {

std::string sent(std::string_view lines) {
    std::string text;
    for (const char character : lines) {
        if (character == '\n') {
            text += '\r';
        }
        text += character;
    }
    return text;
}

const std::vector<ScreenStatement>& screenStatements() {
    static const std::vector<ScreenStatement> statements = [] {
        std::vector<ScreenStatement> all;
        for (const auto& ofSubject :
             {chartStatements(), selectionStatements(), treeStatements(), correlationStatements()}) {
            all.insert(all.end(), ofSubject.begin(), ofSubject.end());
        }
        return all;
    }();
    return statements;
}

const std::string& screenStatement(const std::string& name) {
    for (const ScreenStatement& statement : screenStatements()) {
        if (statement.name == name) {
            return statement.text;
        }
    }
    throw std::out_of_range("no such statement: " + name);
}

} // namespace veldran::tsql::test
