#include "database/generator/demo_script.h"

#include <string>

namespace veldran::chartgen {
namespace {

// The literals of one field of all rows, as the list of an IN.
template<typename Row, typename Field>
std::string listOf(const std::vector<Row>& rows, Field field) {
    std::string list;
    for (const Row& row : rows)
        list.append(list.empty() ? "" : ", ").append(field(row));
    return list;
}

void writeRemoval(const DemoModel& model, std::ostream& out) {
    const auto companies =
        listOf(model.companies, [](const Company& row) { return std::to_string(row.code); });
    const auto charts =
        listOf(model.ledgerCharts, [](const LedgerChart& row) { return std::to_string(row.code); });
    const auto costs =
        listOf(model.costCharts, [](const CostChart& row) { return std::to_string(row.code); });
    const auto causali = listOf(model.causali, [](const Causale& row) { return textLiteral(row.code); });
    const std::pair<const char*, const std::string*> removals[] = {
        {"CI15_CORRCONTICOGE WHERE CI15_DITTA_CG18", &companies},
        {"CI35_CONTIATTIVI WHERE CI35_DITTA_CG18", &companies},
        {"CI11_CONTROLLOCONTI WHERE CI11_CODCAUS_CI03", &causali},
        {"CI03_CAUSALI WHERE CI03_CODCAUS", &causali},
        {"CG18_DITTE WHERE CG18_DITTA", &companies},
        {"PC03_ANAGPDC WHERE PC03_CODPDC_PC01", &costs},
        {"PC01_PDC WHERE PC01_CODPDC", &costs},
        {"CG24_TABPDC WHERE CG24_GRUPPO_CG10", &charts},
        {"CG10_DESPDC WHERE CG10_GRUPPO", &charts},
    };
    for (const auto& [place, codes] : removals)
        out << "DELETE FROM " << place << " IN (" << *codes << ")\nGO\n";
}

void writeLedgerCharts(const DemoModel& model, std::ostream& out) {
    InsertWriter charts(out, "CG10_DESPDC", "CG10_GRUPPO, CG10_DESCR, CG10_NUMLIVELLI");
    for (const LedgerChart& chart : model.ledgerCharts)
        charts.row(std::to_string(chart.code) + ", " + textLiteral(chart.description) + ", " +
                   std::to_string(chart.chart.levels));
    charts.finish();
}

void writeCostCharts(const DemoModel& model, std::ostream& out) {
    InsertWriter charts(out, "PC01_PDC",
                        "PC01_CODPDC, PC01_DESCR, PC01_TIPOPDC, PC01_SEPARATORE, PC01_LUNGGR1, PC01_LUNGGR2, "
                        "PC01_LUNGGR3, PC01_LUNGGR4, PC01_LUNGGR5");
    for (const CostChart& chart : model.costCharts) {
        std::string row = std::to_string(chart.code) + ", " + textLiteral(chart.description) + ", " +
                          (chart.items ? "2" : "1") + ", " + textLiteral(chart.separator);
        for (std::size_t group = 0; group < 5; ++group)
            row += ", " + std::to_string(group < chart.groupLengths.size() ? chart.groupLengths[group] : 0);
        charts.row(row);
    }
    charts.finish();

    InsertWriter accounts(out, "PC03_ANAGPDC",
                          "PC03_CODPDC_PC01, PC03_CONTO, PC03_DITTA_CG18, PC03_DESCR, PC03_INDTIPOCONTO, "
                          "PC03_FLGANALITICO");
    for (const CostAccount& account : model.costAccounts)
        accounts.row(std::to_string(account.chart) + ", " + textLiteral(account.code) + ", " +
                     std::to_string(account.company) + ", " + textLiteral(account.description) + ", " +
                     std::to_string(account.kindBit) + ", " + (account.analytic ? "1" : "0"));
    accounts.finish();
}

void writeCompanies(const DemoModel& model, std::ostream& out) {
    InsertWriter companies(out, "CG18_DITTE",
                           "CG18_DITTA, CG18_RAGSOC, CG18_CODPDC_CG10, CG18_CODCOIN_PC01, CG18_CODVDS_PC01, "
                           "CG18_FLGANALITICA, CG18_PARANALITICA, CG18_FLGVDS");
    for (const Company& company : model.companies)
        companies.row(std::to_string(company.code) + ", " + textLiteral(company.name) + ", " +
                      std::to_string(company.ledgerChart) + ", " + numberOrNull(company.costChart) + ", " +
                      numberOrNull(company.itemChart) + ", " + textLiteral(company.analytic ? "1" : "0") +
                      ", " + (company.parameter.empty() ? "NULL" : textLiteral(company.parameter)) + ", " +
                      (company.itemChart == 0 ? "0" : "1"));
    companies.finish();
}

void writeCausali(const DemoModel& model, std::ostream& out) {
    InsertWriter causali(out, "CI03_CAUSALI", "CI03_CODCAUS, CI03_DITTA_CG18, CI03_DESCR");
    for (const Causale& causale : model.causali)
        causali.row(textLiteral(causale.code) + ", " + std::to_string(causale.company) + ", " +
                    textLiteral(causale.description));
    causali.finish();

    std::string columns = "CI11_CODCAUS_CI03, CI11_SEGNO";
    for (const std::string_view kind : costKinds)
        columns.append(", CI11_FLG").append(kind);
    InsertWriter typologies(out, "CI11_CONTROLLOCONTI", columns);
    for (const Typology& typology : model.typologies) {
        std::string row =
            textLiteral(typology.causale) + ", " + std::to_string(static_cast<int>(typology.sign));
        for (std::size_t bit = 0; bit < costKinds.size(); ++bit)
            row += (typology.mask & (1 << bit)) != 0 ? ", 1" : ", 0";
        typologies.row(row);
    }
    typologies.finish();
}

void writeActivations(const DemoModel& model, std::ostream& out) {
    InsertWriter writer(out, "CI35_CONTIATTIVI", "CI35_DITTA_CG18, CI35_GRUPPO_CG10, CI35_CONTO_CG24");
    for (const Activation& activation : model.activations)
        writer.row(std::to_string(activation.company) + ", " +
                   std::to_string(findCompany(model, activation.company)->ledgerChart) + ", " +
                   textLiteral(activation.account));
    writer.finish();
}

std::string percentage(int hundredths) {
    const std::string decimals = std::to_string(hundredths % 100);
    return std::to_string(hundredths / 100) + (decimals.size() == 1 ? ".0" : ".") + decimals;
}

void writeCorrelations(const DemoModel& model, std::ostream& out) {
    InsertWriter writer(
        out, "CI15_CORRCONTICOGE",
        "CI15_DITTA_CG18, CI15_CODCAUS_CI03, CI15_CODPDC_CG10, CI15_CONTO_CG24, CI15_PROG, "
        "CI15_CODPDC_PC01, CI15_CONTO_PC03, CI15_CODVDS_PC01, CI15_VDS_PC03, CI15_INDSEGNO, CI15_PERC");
    for (const Correlation& correlation : model.correlations) {
        const Company& company = *findCompany(model, correlation.company);
        int number = 0;
        for (const CorrelationRow& row : correlation.rows) {
            const bool hasItem = !row.costItem.empty();
            writer.row(std::to_string(company.code) + ", " + textLiteral(correlation.causale) + ", " +
                       std::to_string(company.ledgerChart) + ", " + textLiteral(correlation.account) + ", " +
                       std::to_string(++number) + ", " + std::to_string(company.costChart) + ", " +
                       textLiteral(row.costAccount) + ", " + numberOrNull(hasItem ? company.itemChart : 0) +
                       ", " + (hasItem ? textLiteral(row.costItem) : "NULL") + ", " +
                       std::to_string(static_cast<int>(row.sign)) + ", " + percentage(row.hundredths));
        }
    }
    writer.finish();
}

} // namespace

void writeDemoHead(const DemoModel& model, std::ostream& out) {
    out << "-- Companies and charts written by veldran_chartgen. Not edited by hand.\n"
           "-- The rows of these companies, charts and causali are removed first: for a database of its own "
           "only.\n\n";
    writeRemoval(model, out);
    writeLedgerCharts(model, out);
    writeCostCharts(model, out);
    writeCompanies(model, out);
    writeCausali(model, out);
}

InsertWriter ledgerAccountWriter(std::ostream& out) {
    return InsertWriter(out, "CG24_TABPDC", "CG24_GRUPPO_CG10, CG24_CONTO, CG24_DESCR, CG24_INDTIPOCONTO");
}

void writeLedgerAccount(InsertWriter& writer, int chart, std::string_view code, std::string_view description,
                        int nature) {
    writer.row(std::to_string(chart) + ", " + textLiteral(code) + ", " + textLiteral(description) + ", " +
               std::to_string(nature));
}

void writeDemoTail(const DemoModel& model, std::ostream& out) {
    writeActivations(model, out);
    writeCorrelations(model, out);
}

void writeDemoScript(const DemoModel& model, std::ostream& out) {
    writeDemoHead(model, out);
    InsertWriter accounts = ledgerAccountWriter(out);
    for (const LedgerChart& chart : model.ledgerCharts)
        for (const ChartAccount& account : chart.chart.accounts)
            writeLedgerAccount(accounts, chart.code, account.code, account.description(), account.nature);
    accounts.finish();
    writeDemoTail(model, out);
}

} // namespace veldran::chartgen
