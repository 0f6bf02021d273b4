#include "database/generator/demo_check.h"

#include "database/generator/source_error.h"

#include <set>

namespace veldran::chartgen {
namespace {

constexpr std::size_t causaleLength = 4;
constexpr std::size_t costCodeLength = 15;
constexpr int hundredPercent = 10000;

template<typename Key>
void checkUnique(std::set<Key>& seen, const Key& key, const std::string& what) {
    if (!seen.insert(key).second)
        throw SourceError(what + " is given twice");
}

// The length of the group above the code, 0 for a code of the first group, -1 when the code ends inside a
// group.
int parentLength(const CostChart& chart, std::size_t length) {
    int end = 0;
    for (const int group : chart.groupLengths) {
        if (static_cast<std::size_t>(end + group) == length)
            return end;
        end += group;
    }
    return -1;
}

void checkCostAccounts(const DemoModel& model) {
    std::set<std::pair<int, std::string>> seen;
    for (const CostAccount& account : model.costAccounts) {
        const std::string what = "cost code " + std::to_string(account.chart) + " " + account.code;
        const CostChart* chart = findCostChart(model, account.chart);
        if (!chart)
            throw SourceError(what + " is of a missing chart");
        checkUnique(seen, std::pair(account.chart, account.code), what);
        const int above = parentLength(*chart, account.code.size());
        if (above < 0 || account.code.size() > costCodeLength)
            throw SourceError(what + " does not end on a group of its chart");
        const CostAccount* group =
            above == 0 ? nullptr
                       : findCostAccount(model, account.chart,
                                         account.code.substr(0, static_cast<std::size_t>(above)));
        if (above > 0 && (!group || group->analytic))
            throw SourceError(what + " has no grouping above it");
    }
}

void checkCompanies(const DemoModel& model) {
    std::set<int> seen;
    for (const Company& company : model.companies) {
        const std::string what = "company " + std::to_string(company.code);
        checkUnique(seen, company.code, what);
        const CostChart* accounts = findCostChart(model, company.costChart);
        const CostChart* items = findCostChart(model, company.itemChart);
        if (company.analytic && (!accounts || accounts->items || company.parameter.empty()))
            throw SourceError(what +
                              " keeps analytic accounting without a chart of cost accounts or a parameter");
        if (company.itemChart != 0 && (!items || !items->items))
            throw SourceError(what + " names a missing chart of cost items");
    }
}

void checkCausali(const DemoModel& model) {
    std::set<std::string> seen;
    for (const Causale& causale : model.causali) {
        checkUnique(seen, causale.code, "causale " + causale.code);
        if (causale.code.size() != causaleLength)
            throw SourceError("causale " + causale.code + " is not of four characters");
    }
    std::set<std::pair<std::string, Sign>> rows;
    for (const Typology& typology : model.typologies) {
        checkUnique(rows, std::pair(typology.causale, typology.sign), "typology of " + typology.causale);
        if (!findCausale(model, typology.causale))
            throw SourceError("typology of the missing causale " + typology.causale);
    }
}

// The percentage rules of the screen: origins together, and each run of destinations between them, up to 100.
void checkPercentages(const Correlation& correlation) {
    int origins = 0;
    int run = 0;
    for (const CorrelationRow& row : correlation.rows) {
        if (row.sign == Sign::Avere) {
            origins += row.hundredths;
            run = 0;
        } else {
            run += row.hundredths;
        }
        if (origins > hundredPercent || run > hundredPercent)
            throw SourceError(correlation.place + ": the percentages go over 100");
    }
    if (correlation.rows.empty() || correlation.rows.front().sign != Sign::Avere)
        throw SourceError(correlation.place + ": a correlation begins with an origin row");
}

void checkCorrelationCodes(const DemoModel& model, const Company& company, const Correlation& correlation) {
    const Causale* causale = findCausale(model, correlation.causale);
    if (!causale || (causale->company != 0 && causale->company != company.code))
        throw SourceError(correlation.place + ": the company has no causale " + correlation.causale);
    for (const CorrelationRow& row : correlation.rows) {
        const CostAccount* account = findCostAccount(model, company.costChart, row.costAccount);
        if (!account || !account->analytic || (account->company != 0 && account->company != company.code))
            throw SourceError(correlation.place + ": no cost account " + row.costAccount);
        if ((account->kindBit & typologyMask(model, correlation.causale, row.sign)) == 0)
            throw SourceError(correlation.place + ": " + row.costAccount + " is of a kind that the causale " +
                              correlation.causale + " does not admit on that side");
        if (row.costItem.empty())
            continue;
        const CostAccount* item = findCostAccount(model, company.itemChart, row.costItem);
        if (!item || !item->analytic)
            throw SourceError(correlation.place + ": no cost item " + row.costItem);
    }
}

} // namespace

void checkDemo(const DemoModel& model) {
    checkCompanies(model);
    checkCostAccounts(model);
    checkCausali(model);
    std::set<std::pair<int, std::pair<std::string, std::string>>> seen;
    for (const Correlation& correlation : model.correlations) {
        checkUnique(seen, std::pair(correlation.company, std::pair(correlation.account, correlation.causale)),
                    correlation.place + ": the correlation of account " + correlation.account);
        checkPercentages(correlation);
        checkCorrelationCodes(model, *findCompany(model, correlation.company), correlation);
    }
}

} // namespace veldran::chartgen
