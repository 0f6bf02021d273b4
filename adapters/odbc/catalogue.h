#pragma once

#include "adapters/odbc/link.h"
#include "platform/ado/row_set.h"

#include <memory>
#include <string>
#include <string_view>

namespace veldran::odbc {

/// A name as it is written in statements, taken apart, without delimiters. Parts that are not given are
/// empty.
struct ObjectName {
    std::string catalogue;
    std::string schema;
    std::string name;
};
ObjectName objectName(std::string_view text);

/// \name What the driver's catalogue functions report, column by column as they define it. Names are search
/// patterns to them, in which "_" stands for any character: the caller looks which rows it meant.
/// \throws AdoError with the driver's diagnostics.
///@{
std::unique_ptr<ado::RowSet> procedureColumns(Link& link, const ObjectName& procedure);
std::unique_ptr<ado::RowSet> procedureNames(Link& link, const ObjectName& procedure);
std::unique_ptr<ado::RowSet> primaryKeys(Link& link, const ObjectName& table);
///@}

} // namespace veldran::odbc
