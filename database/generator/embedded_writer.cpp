#include "database/generator/embedded_writer.h"

#include "adapters/embedded/bulk_loader.h"
#include "adapters/embedded/driver.h"
#include "adapters/embedded/script.h"
#include "database/generator/demo_script.h"
#include "database/generator/source_error.h"

#include <array>
#include <fstream>
#include <iterator>
#include <memory>
#include <sstream>
#include <vector>

namespace veldran::chartgen {
namespace {

void runScriptFile(ado::Session& session, const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        throw SourceError("cannot read " + path);
    const std::string script{std::istreambuf_iterator<char>(stream), {}};
    embedded::runScript(session, script);
}

std::unique_ptr<ado::Session> openTarget(const EmbeddedTarget& target) {
    auto session = embedded::EmbeddedDriver().open(
        "Provider=VeldranEmbedded;Data Source=" + target.file + ";Mode=Create", {}, {});
    runScriptFile(*session, target.scriptFolder + "/schema.sql");
    runScriptFile(*session, target.scriptFolder + "/routines.sql");
    return session;
}

// The accounts stream past; the few that are activated or correlated are kept in `frame`.
void loadAccounts(ado::Session& session, const SyntheticOptions& options, const SyntheticPlace& place,
                  DemoModel& frame) {
    embedded::BulkLoader loader(session, "CG24_TABPDC",
                                {"CG24_GRUPPO_CG10", "CG24_CONTO", "CG24_DESCR", "CG24_INDTIPOCONTO"});
    generateChart(options, [&](const SyntheticAccount& account) {
        loader.append(std::array<Value, 4>{place.chart, account.code, account.description, account.nature});
        if (account.activated)
            frame.activations.push_back({place.company, account.code});
        if (account.correlated)
            frame.correlations.push_back(syntheticCorrelation(place, account.code));
    });
    loader.finish();
}

void loadActivations(ado::Session& session, const SyntheticPlace& place, const DemoModel& frame) {
    embedded::BulkLoader loader(session, "CI35_CONTIATTIVI",
                                {"CI35_DITTA_CG18", "CI35_GRUPPO_CG10", "CI35_CONTO_CG24"});
    for (const Activation& activation : frame.activations)
        loader.append(std::array<Value, 3>{activation.company, place.chart, activation.account});
    loader.finish();
}

void loadCorrelations(ado::Session& session, const SyntheticPlace& place, const DemoModel& frame) {
    embedded::BulkLoader loader(session, "CI15_CORRCONTICOGE",
                                {"CI15_DITTA_CG18", "CI15_CODCAUS_CI03", "CI15_CODPDC_CG10",
                                 "CI15_CONTO_CG24", "CI15_PROG", "CI15_CODPDC_PC01", "CI15_CONTO_PC03",
                                 "CI15_INDSEGNO", "CI15_PERC"});
    for (const Correlation& correlation : frame.correlations) {
        int number = 0;
        for (const CorrelationRow& row : correlation.rows)
            loader.append(std::array<Value, 9>{
                correlation.company, correlation.causale, place.chart, correlation.account, ++number,
                syntheticCostChart, row.costAccount, static_cast<int>(row.sign), Decimal{row.hundredths, 2}});
    }
    loader.finish();
}

} // namespace

void writeDemoDatabase(const DemoModel& model, const EmbeddedTarget& target) {
    std::ostringstream script;
    writeDemoScript(model, script);
    const auto session = openTarget(target);
    embedded::runScript(*session, script.str());
}

void writeSyntheticDatabase(const SyntheticOptions& options, const SyntheticPlace& place,
                            const EmbeddedTarget& target) {
    DemoModel frame = syntheticFrame(options, place);
    std::ostringstream head;
    writeDemoHead(frame, head);
    const auto session = openTarget(target);
    embedded::runScript(*session, head.str());
    loadAccounts(*session, options, place, frame);
    loadActivations(*session, place, frame);
    loadCorrelations(*session, place, frame);
}

} // namespace veldran::chartgen
