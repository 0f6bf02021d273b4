#include "adapters/odbc/driver.h"
#include "tests/support/ado_contract.h"

#include <cstdlib>

namespace veldran::test {
namespace {

/// The server that VELDRAN_TEST_ODBC names by its connection string.
class ServerContractDatabase final : public ContractDatabase {
public:
    std::string whyMissing() const override {
        return connectionString_.empty() ? "VELDRAN_TEST_ODBC names no server" : "";
    }
    std::shared_ptr<ado::Driver> driver() override { return std::make_shared<odbc::OdbcDriver>(); }
    std::string connectionString() override { return connectionString_; }
    std::string badConnectionString() override {
        return "Provider=SQLOLEDB;Data Source=127.0.0.1,1;User ID=x";
    }
    /// A server that speaks T-SQL without being SQL Server has one number for the errors that it does not
    /// map.
    bool isReportOf(const ado::Error& error, int number) const override {
        constexpr int unmapped = 33557097;
        return error.Number == number || (error.Number == unmapped && !isSqlServer());
    }
    bool tellsParameterSizes() override { return isSqlServer(); }

private:
    bool isSqlServer() const {
        odbc::OdbcDriver driver;
        const auto result = driver.open(connectionString_, "", "")->execute("SELECT @@VERSION", {}, {});
        return result.rows->cell(0, 0).toText().starts_with("Microsoft SQL Server");
    }
    static std::string named() {
        const char* const text = std::getenv("VELDRAN_TEST_ODBC");
        return text == nullptr ? "" : text;
    }

    std::string connectionString_ = named();
};

std::unique_ptr<ContractDatabase> makeServerDatabase() {
    return std::make_unique<ServerContractDatabase>();
}

INSTANTIATE_TEST_SUITE_P(Server, AdoContract, ::testing::Values(&makeServerDatabase),
                         [](const auto&) { return std::string("database"); });

} // namespace
} // namespace veldran::test
