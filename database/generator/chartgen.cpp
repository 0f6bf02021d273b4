#include "database/generator/account_code.h"
#include "database/generator/demo_check.h"
#include "database/generator/demo_reader.h"
#include "database/generator/demo_script.h"
#include "database/generator/embedded_writer.h"
#include "database/generator/synthetic_script.h"
#include "database/generator/whole_file.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <iostream>
#include <string>

namespace {

using namespace veldran::chartgen;

struct Request {
    std::string demoFolder;
    SyntheticOptions chart;
    SyntheticPlace place;
    std::string output;
    std::string format = "tsql";
    std::string scriptFolder = VELDRAN_DATABASE_DIR;
};

DemoModel readCheckedDemo(const std::string& folder) {
    DemoModel model = readDemo(folder);
    checkDemo(model);
    return model;
}

void writeDatabase(const Request& request) {
    const EmbeddedTarget target{request.output, request.scriptFolder};
    if (request.demoFolder.empty())
        writeSyntheticDatabase(request.chart, request.place, target);
    else
        writeDemoDatabase(readCheckedDemo(request.demoFolder), target);
}

void writeScript(const Request& request) {
    writeWholeFile(request.output, [&](std::ostream& out) {
        if (request.demoFolder.empty())
            writeSyntheticScript(request.chart, request.place, out);
        else
            writeDemoScript(readCheckedDemo(request.demoFolder), out);
    });
}

} // namespace

int main(int argc, char** argv) {
    Request request;
    CLI::App app{
        "Writes charts of accounts: the demo companies from their source tables, or one of any size."};
    auto* demo =
        app.add_option("--demo", request.demoFolder, "folder of the source tables of the demo companies")
            ->check(CLI::ExistingDirectory);
    auto* accounts = app.add_option("--accounts", request.chart.accounts, "accounts of the generated chart")
                         ->check(CLI::PositiveNumber);
    demo->excludes(accounts);
    app.add_option("--levels", request.chart.levels, "levels of the chart")
        ->check(CLI::Range(minLevels, maxLevels))
        ->capture_default_str();
    app.add_option("--seed", request.chart.seed, "seed: the same options give the same chart")
        ->capture_default_str();
    app.add_option("--wide", request.chart.wide, "give one account this many analytic accounts below it");
    app.add_option("--activated", request.chart.activatedPercent, "activated economic accounts, percent")
        ->check(CLI::Range(0, 100))
        ->capture_default_str();
    app.add_option("--correlated", request.chart.correlatedPercent, "correlated accounts, percent")
        ->check(CLI::Range(0, 100))
        ->capture_default_str();
    app.add_option("--company", request.place.company, "company code")
        ->check(CLI::Range(1, 99999))
        ->capture_default_str();
    app.add_option("--chart", request.place.chart, "chart code")
        ->check(CLI::Range(1, 99))
        ->capture_default_str();
    app.add_option("--format", request.format, "tsql: a script; sqlite: an embedded database")
        ->check(CLI::IsMember({"tsql", "sqlite"}))
        ->capture_default_str();
    app.add_option("--scripts", request.scriptFolder,
                   "folder of schema.sql and routines.sql, for a new database")
        ->check(CLI::ExistingDirectory)
        ->capture_default_str();
    app.add_option("--output", request.output, "file to write")->required();
    CLI11_PARSE(app, argc, argv);

    if (demo->empty() && accounts->empty()) {
        std::cerr << "veldran_chartgen: one of --demo and --accounts is needed\n";
        return 2;
    }
    try {
        if (request.format == "sqlite")
            writeDatabase(request);
        else
            writeScript(request);
    } catch (const std::exception& failure) {
        std::cerr << "veldran_chartgen: " << failure.what() << '\n';
        return 1;
    }
    return 0;
}
