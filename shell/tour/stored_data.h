#pragma once

#include <memory>
#include <string>
#include <vector>

namespace veldran::ado {
class Connection;
}

namespace veldran::shell {

/// What the database holds of the company whose screen is open, read through the tour's own connection.
class StoredData {
public:
    /// Rows of a correlation: sign, percentage, cost account and cost item, those that are empty left out.
    using Rows = std::vector<std::string>;

    StoredData(std::string company, std::shared_ptr<ado::Connection> connection)
        : company_(std::move(company)), connection_(std::move(connection)) {}

    /// How many of the accounts whose code begins so are activated.
    int activeAccounts(const std::string& codeStart) const;
    Rows correlation(const std::string& account, const std::string& causale) const;
    /// Of all causali.
    int correlationRows(const std::string& account) const;

private:
    int count(const std::string& statement) const;

    std::string company_;
    std::shared_ptr<ado::Connection> connection_; // shared: it is made so
};

} // namespace veldran::shell
