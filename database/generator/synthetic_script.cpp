#include "database/generator/synthetic_script.h"

#include "database/generator/demo_script.h"
#include "database/generator/insert_writer.h"

#include <vector>

namespace veldran::chartgen {
namespace {

constexpr const char* causale = "PROV";
constexpr const char* originAccount = "COL010";
constexpr const char* firstDestination = "CDC010";
constexpr const char* secondDestination = "CDC020";

int kindBit(std::string_view kind) {
    int bit = 1;
    for (const std::string_view known : costKinds) {
        if (known == kind)
            return bit;
        bit *= 2;
    }
    return 0;
}

} // namespace

DemoModel syntheticFrame(const SyntheticOptions& options, const SyntheticPlace& place) {
    const int linking = kindBit("COLLEG");
    const int centre = kindBit("CDC");
    DemoModel frame;
    frame.ledgerCharts.push_back({place.chart, "Piano dei conti generato", Chart{options.levels, {}}});
    frame.costCharts.push_back({syntheticCostChart, false, ".", {3, 3}, "Piano COAN generato"});
    frame.costAccounts = {
        {syntheticCostChart, "COL", 0, 0, false, "Conti di collegamento"},
        {syntheticCostChart, originAccount, 0, linking, true, "Costi da contabilità generale"},
        {syntheticCostChart, "CDC", 0, 0, false, "Centri di costo"},
        {syntheticCostChart, firstDestination, 0, centre, true, "Produzione"},
        {syntheticCostChart, secondDestination, 0, centre, true, "Struttura"}};
    frame.companies.push_back(
        {place.company, place.chart, syntheticCostChart, 0, true, "STANDARD", "Ditta di prova"});
    frame.causali.push_back({causale, 0, "Causale di prova"});
    frame.typologies = {{causale, Sign::Avere, linking}, {causale, Sign::Dare, centre}};
    return frame;
}

Correlation syntheticCorrelation(const SyntheticPlace& place, const std::string& account) {
    return {place.company,
            account,
            causale,
            {{Sign::Avere, 10000, originAccount, ""},
             {Sign::Dare, 6000, firstDestination, ""},
             {Sign::Dare, 4000, secondDestination, ""}},
            "generated chart"};
}

void writeSyntheticScript(const SyntheticOptions& options, const SyntheticPlace& place, std::ostream& out) {
    DemoModel frame = syntheticFrame(options, place);
    writeDemoHead(frame, out);

    // The accounts stream past; the few that are activated or correlated are kept for the tables that follow.
    InsertWriter accounts = ledgerAccountWriter(out);
    generateChart(options, [&](const SyntheticAccount& account) {
        writeLedgerAccount(accounts, place.chart, account.code, account.description, account.nature);
        if (account.activated)
            frame.activations.push_back({place.company, account.code});
        if (account.correlated)
            frame.correlations.push_back(syntheticCorrelation(place, account.code));
    });
    accounts.finish();
    writeDemoTail(frame, out);
}

} // namespace veldran::chartgen
