#include "adapters/odbc/catalogue.h"

#include "adapters/odbc/result_reader.h"
#include "adapters/odbc/utf16.h"

#include <algorithm>
#include <vector>

namespace veldran::odbc {

namespace {

/// A part of a name for a catalogue function; one that is not given is no pointer at all.
struct Part {
    explicit Part(const std::string& utf8) : text(textToSend(utf8)) {}
    SQLWCHAR* pointer() const { return text.empty() ? nullptr : wide(text); }
    SQLSMALLINT length() const { return static_cast<SQLSMALLINT>(text.size()); }

    std::u16string text;
};

template<class Call>
std::unique_ptr<ado::RowSet> ask(Link& link, const ObjectName& object, Call&& call) {
    link.requireUsable();
    const StatementHandle statement(SQL_HANDLE_DBC, link.handle());
    limitTime(statement.get(), ownTimeLimit);
    const Part catalogue(object.catalogue);
    const Part schema(object.schema);
    const Part name(object.name);
    try {
        if (!succeeded(call(statement.get(), catalogue, schema, name))) {
            failWithDiagnostics(SQL_HANDLE_STMT, statement.get());
        }
        SQLSMALLINT columns = 0;
        SQLNumResultCols(statement.get(), &columns);
        return ResultReader(statement.get(), columns).rows();
    } catch (const ado::AdoError& error) {
        link.fail(error.errors());
    }
}

} // namespace

ObjectName objectName(std::string_view text) {
    std::vector<std::string> parts(1);
    bool delimited = false;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char c = text[at];
        if (delimited && c == ']' && at + 1 < text.size() && text[at + 1] == ']') {
            parts.back().push_back(text[at++]);
        } else if (c == (delimited ? ']' : '[')) {
            delimited = !delimited;
        } else if (c == '.' && !delimited) {
            parts.emplace_back();
        } else {
            parts.back().push_back(c);
        }
    }
    std::reverse(parts.begin(), parts.end());
    parts.resize(std::max<std::size_t>(parts.size(), 3));
    return {parts[2], parts[1], parts[0]};
}

std::unique_ptr<ado::RowSet> procedureColumns(Link& link, const ObjectName& procedure) {
    return ask(
        link, procedure, [](SQLHSTMT statement, const Part& catalogue, const Part& schema, const Part& name) {
            return SQLProcedureColumnsW(statement, catalogue.pointer(), catalogue.length(), schema.pointer(),
                                        schema.length(), name.pointer(), name.length(), nullptr, 0);
        });
}

std::unique_ptr<ado::RowSet> procedureNames(Link& link, const ObjectName& procedure) {
    return ask(link, procedure,
               [](SQLHSTMT statement, const Part& catalogue, const Part& schema, const Part& name) {
                   return SQLProceduresW(statement, catalogue.pointer(), catalogue.length(), schema.pointer(),
                                         schema.length(), name.pointer(), name.length());
               });
}

std::unique_ptr<ado::RowSet> primaryKeys(Link& link, const ObjectName& table) {
    return ask(link, table,
               [](SQLHSTMT statement, const Part& catalogue, const Part& schema, const Part& name) {
                   return SQLPrimaryKeysW(statement, catalogue.pointer(), catalogue.length(),
                                          schema.pointer(), schema.length(), name.pointer(), name.length());
               });
}

} // namespace veldran::odbc
