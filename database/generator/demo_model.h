#pragma once

#include "database/generator/outline.h"

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace veldran::chartgen {

/// Kinds of cost account in the order of their bits in the typology mask and of their flags in
/// CI11_CONTROLLOCONTI.
inline constexpr std::array<std::string_view, 10> costKinds = {
    "COLLEG", "TRANSIT",   "COMPET",    "CDC",    "LAVPROG",
    "MAGAZ",  "MARGLORDI", "MARGNETTI", "RISULT", "ALTRITIPI"};

enum class Sign { Dare = 1, Avere = 2 };

struct LedgerChart {
    int code = 0;
    std::string description;
    Chart chart;
};

struct CostChart {
    int code = 0;
    bool items = false; // a chart of cost items rather than of cost accounts
    std::string separator;
    std::vector<int> groupLengths;
    std::string description;
};

struct CostAccount {
    int chart = 0;
    std::string code;
    int company = 0; // 0: common to all companies
    int kindBit = 0; // value in the typology mask; 0 for a group or a cost item
    bool analytic = false;
    std::string description;
};

struct Company {
    int code = 0;
    int ledgerChart = 0;
    int costChart = 0; // 0: none
    int itemChart = 0; // 0: cost items are not managed
    bool analytic = false;
    std::string parameter;
    std::string name;
};

struct Causale {
    std::string code;
    int company = 0; // 0: common to all companies
    std::string description;
};

struct Typology {
    std::string causale;
    Sign sign = Sign::Dare;
    int mask = 0;
};

struct Activation {
    int company = 0;
    std::string account;
};

struct CorrelationRow {
    Sign sign = Sign::Dare;
    int hundredths = 0; // of a percent
    std::string costAccount;
    std::string costItem; // empty: none
};

struct Correlation {
    int company = 0;
    std::string account;
    std::string causale;
    std::vector<CorrelationRow> rows;
    std::string place; // file and line, for messages
};

struct DemoModel {
    std::vector<LedgerChart> ledgerCharts;
    std::vector<CostChart> costCharts;
    std::vector<CostAccount> costAccounts; // cost accounts and cost items
    std::vector<Company> companies;
    std::vector<Causale> causali;
    std::vector<Typology> typologies;
    std::vector<Activation> activations;
    std::vector<Correlation> correlations;
};

const LedgerChart* findLedgerChart(const DemoModel& model, int code);
const CostChart* findCostChart(const DemoModel& model, int code);
const CostAccount* findCostAccount(const DemoModel& model, int chart, std::string_view code);
const Company* findCompany(const DemoModel& model, int code);
const Causale* findCausale(const DemoModel& model, std::string_view code);

/// Mask of the kinds admitted for the causale and sign; 0 when there is no row.
int typologyMask(const DemoModel& model, std::string_view causale, Sign sign);

} // namespace veldran::chartgen
