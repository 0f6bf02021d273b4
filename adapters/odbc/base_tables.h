#pragma once

#include "adapters/odbc/catalogue.h"
#include "adapters/odbc/link.h"
#include "adapters/odbc/select_shape.h"
#include "platform/ado/row_set.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace veldran::tsql {
struct AlterTableAdd;
}

namespace veldran::odbc {

struct BaseTable {
    struct Column {
        std::string name;
        bool nullable = true;
        bool identity = false;
    };
    std::vector<std::string> key;
    std::vector<Column> columns; ///< empty when only the key is known
};

/// Where the columns of a query's result come from, and the keys by which its rows can be written back. A
/// server does not tell that with a result, so the query's text tells the table. The keys of working tables
/// are remembered from the statements of this session that made them; for other tables the catalogue is
/// asked, once.
class BaseTables {
public:
    explicit BaseTables(Link& link) : link_(link) {}

    /// To be told of every text without parameters that was executed.
    void executed(std::string_view text);
    /// To be asked before `text` is executed, because the catalogue is asked on the same connection.
    void prepare(std::string_view text);
    /// Completes the columns of the result of the text that was prepared last.
    void describe(std::vector<ado::ColumnInfo>& columns) const;

private:
    void created(const std::string& name, BaseTable table);
    void altered(const tsql::AlterTableAdd& alter);
    std::optional<SelectShape> shapeOf(std::string_view text);
    const BaseTable* tableNamed(const std::string& name);
    BaseTable fromCatalogue(const ObjectName& object);

    Link& link_;
    std::map<std::string, BaseTable> tables_; // by name in lower case
    std::unordered_map<std::string, std::optional<SelectShape>> shapes_;
    std::optional<SelectShape> shape_; // of the text prepared last, with
    const BaseTable* table_ = nullptr; // what is known of its table
};

} // namespace veldran::odbc
