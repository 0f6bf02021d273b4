#include "adapters/embedded/driver.h"
#include "tests/support/ado_contract.h"

#include <filesystem>
#include <random>

namespace veldran::test {
namespace {

/// A database file of its own, in a directory that goes with it.
class EmbeddedContractDatabase final : public ContractDatabase {
public:
    EmbeddedContractDatabase() {
        std::random_device random;
        directory_ =
            std::filesystem::temp_directory_path() / ("veldran-contract-" + std::to_string(random()));
        std::filesystem::create_directories(directory_);
    }
    ~EmbeddedContractDatabase() override {
        std::error_code ignored;
        std::filesystem::remove_all(directory_, ignored);
    }

    std::shared_ptr<ado::Driver> driver() override { return std::make_shared<embedded::EmbeddedDriver>(); }
    std::string connectionString() override {
        return "Provider=VeldranEmbedded;Data Source=" + (directory_ / "contract.vdb").string() +
               ";Mode=Create";
    }
    std::string badConnectionString() override {
        return "Provider=VeldranEmbedded;Data Source=" + (directory_ / "assente" / "nessuno.vdb").string();
    }

private:
    std::filesystem::path directory_;
};

std::unique_ptr<ContractDatabase> makeEmbeddedDatabase() {
    return std::make_unique<EmbeddedContractDatabase>();
}

INSTANTIATE_TEST_SUITE_P(Embedded, AdoContract, ::testing::Values(&makeEmbeddedDatabase),
                         [](const auto&) { return std::string("database"); });

} // namespace
} // namespace veldran::test
