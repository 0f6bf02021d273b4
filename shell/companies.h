#pragma once

#include "platform/value.h"

#include <cstdint>
#include <string>
#include <vector>

namespace veldran::ado {
class Connection;
}

namespace veldran::shell {

/// One company as the database's table of companies holds it.
struct Company {
    std::string code; ///< as it is written into statements
    std::string name;
    std::int32_t pdcCoge = 0;
    std::int32_t pdcCoin = 0; ///< 0 when the company has no cost-accounting chart
    std::int32_t pdcVds = 0;  ///< 0 when the company has no chart of cost items
    bool managesVds = false;
    std::string analyticFlag; ///< "1" when analytic accounting is enabled
    Value analyticParameters; ///< NULL while never configured
};

/// All companies of a database in the order of their codes. \throws AdoError
std::vector<Company> readCompanies(ado::Connection& connection);

} // namespace veldran::shell
