#include "database/generator/demo_model.h"

#include <algorithm>

namespace veldran::chartgen {
namespace {

template<typename Row, typename Test>
const Row* findFirst(const std::vector<Row>& rows, Test test) {
    const auto found = std::find_if(rows.begin(), rows.end(), test);
    return found == rows.end() ? nullptr : &*found;
}

} // namespace

const LedgerChart* findLedgerChart(const DemoModel& model, int code) {
    return findFirst(model.ledgerCharts, [code](const LedgerChart& row) { return row.code == code; });
}

const CostChart* findCostChart(const DemoModel& model, int code) {
    return findFirst(model.costCharts, [code](const CostChart& row) { return row.code == code; });
}

const CostAccount* findCostAccount(const DemoModel& model, int chart, std::string_view code) {
    return findFirst(model.costAccounts, [chart, code](const CostAccount& row) {
        return row.chart == chart && row.code == code;
    });
}

const Company* findCompany(const DemoModel& model, int code) {
    return findFirst(model.companies, [code](const Company& row) { return row.code == code; });
}

const Causale* findCausale(const DemoModel& model, std::string_view code) {
    return findFirst(model.causali, [code](const Causale& row) { return row.code == code; });
}

int typologyMask(const DemoModel& model, std::string_view causale, Sign sign) {
    const auto* row = findFirst(model.typologies, [causale, sign](const Typology& typology) {
        return typology.causale == causale && typology.sign == sign;
    });
    return row ? row->mask : 0;
}

} // namespace veldran::chartgen
