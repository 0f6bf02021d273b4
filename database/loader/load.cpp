#include "adapters/embedded/driver.h"
#include "adapters/embedded/script.h"
#ifdef VELDRAN_WITH_ODBC
#include "adapters/odbc/connection_string.h"
#include "adapters/odbc/driver.h"
#endif

#include <CLI/CLI.hpp>

#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

std::shared_ptr<veldran::ado::Driver> driverFor(const std::string& connectionString) {
#ifdef VELDRAN_WITH_ODBC
    if (veldran::odbc::isOdbcConnectionString(connectionString))
        return std::make_shared<veldran::odbc::OdbcDriver>();
#endif
    (void)connectionString;
    return std::make_shared<veldran::embedded::EmbeddedDriver>();
}

std::string contentOf(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        throw std::runtime_error("cannot read the file");
    return {std::istreambuf_iterator<char>(stream), {}};
}

} // namespace

int main(int argc, char** argv) {
    std::string connectionString;
    std::vector<std::string> scripts;
    CLI::App app{"Runs T-SQL scripts, one batch after the other, and stops at the first error."};
    app.add_option("--connection", connectionString, "connection string, as in a company file")
        ->envname("VELDRAN_CONNECTION") // where no list of processes shows the password
        ->required();
    app.add_option("scripts", scripts, "scripts in UTF-8 with GO lines, in their order")
        ->check(CLI::ExistingFile)
        ->required();
    CLI11_PARSE(app, argc, argv);

    std::string at = "connection";
    try {
        const auto session = driverFor(connectionString)->open(connectionString, {}, {});
        for (const std::string& script : scripts) {
            at = script;
            veldran::embedded::runScript(*session, contentOf(script));
            std::cout << script << ": done\n";
        }
    } catch (const std::exception& failure) {
        std::cerr << "veldran_load: " << at << ": " << failure.what() << '\n';
        return 1;
    }
    return 0;
}
