// A test program whose tests also run on a T-SQL server: with "--server", on the one that VELDRAN_TEST_ODBC
// names, and without that variable every test is reported as skipped.
#include "adapters/odbc/driver.h"
#include "tests/support/test_server.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string_view>

namespace {

class SkipEveryTest final : public testing::EmptyTestEventListener {
    void OnTestStart(const testing::TestInfo& /*test*/) override {
        GTEST_SKIP() << veldran::test::serverVariable << " names no server";
    }
};

} // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    if (argc > 1 && std::string_view(argv[1]) == "--server") {
        const char* server = std::getenv(veldran::test::serverVariable);
        if (server != nullptr && *server != '\0') {
            veldran::test::TestServer::choose(server, std::make_shared<veldran::odbc::OdbcDriver>());
        } else {
            testing::UnitTest::GetInstance()->listeners().Append(new SkipEveryTest); // taken over
        }
    }
    return RUN_ALL_TESTS();
}
