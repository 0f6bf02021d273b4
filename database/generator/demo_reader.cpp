#include "database/generator/demo_reader.h"

#include "database/generator/account_code.h"
#include "database/generator/source_error.h"
#include "database/generator/source_text.h"

#include <algorithm>

namespace veldran::chartgen {
namespace {

constexpr int maxLedgerChart = 99;
constexpr int maxCostChart = 999;
constexpr int maxCompany = 99999;

// One line of a table, cut into its fields.
class Row {
public:
    Row(const SourceText& source, const SourceLine& line, std::size_t fields)
        : source_(source), line_(line), fields_(splitTrimmed(line.text, "|")) {
        if (fields_.size() != fields)
            fail("the line has " + std::to_string(fields_.size()) + " fields instead of " +
                 std::to_string(fields));
    }

    const std::string& text(std::size_t index) const { return fields_[index]; }

    int number(std::size_t index, int highest) const {
        return parseNumber(source_, line_, fields_[index], 0, highest);
    }

    // A code, or 0 for "-".
    int optionalNumber(std::size_t index, int highest) const {
        return fields_[index] == "-" ? 0 : number(index, highest);
    }

    // True for the first word, false for the second.
    bool choice(std::size_t index, const char* yes, const char* no) const {
        if (fields_[index] != yes && fields_[index] != no)
            fail("\"" + fields_[index] + "\" is neither " + yes + " nor " + no);
        return fields_[index] == yes;
    }

    int kinds(std::size_t index) const {
        int mask = 0;
        for (const std::string& name : splitTrimmed(fields_[index], " ")) {
            const auto found = std::find(costKinds.begin(), costKinds.end(), name);
            if (found == costKinds.end())
                fail("unknown kind of cost account \"" + name + "\"");
            mask |= 1 << (found - costKinds.begin());
        }
        return mask;
    }

    [[noreturn]] void fail(const std::string& message) const {
        throw SourceError(source_.name, line_.number, message);
    }

private:
    const SourceText& source_;
    const SourceLine& line_;
    std::vector<std::string> fields_;
};

bool isSection(const SourceLine& line) {
    return line.text.front() == '[';
}

// Calls `use` with each line of the section.
template<typename Use>
void eachLine(const SourceText& source, const std::string& section, Use use) {
    std::string current;
    bool found = false;
    for (const SourceLine& line : source.lines) {
        if (isSection(line)) {
            current = line.text;
            found = found || current == section;
        } else if (current == section) {
            use(line);
        }
    }
    if (!found)
        throw SourceError(source.name + ": the section " + section + " is missing");
}

Sign parseSign(const SourceText& source, const SourceLine& line, const std::string& text) {
    if (text != "D" && text != "A")
        throw SourceError(source.name, line.number, "the sign is D or A, not \"" + text + "\"");
    return text == "D" ? Sign::Dare : Sign::Avere;
}

void readCharts(const std::string& folder, DemoModel& model) {
    const SourceText source = readSource(folder + "/charts.txt");
    eachLine(source, "[coge]", [&](const SourceLine& line) {
        const Row row(source, line, 4);
        const int levels = row.number(1, maxLevels);
        Chart chart = buildChart(readSource(folder + "/" + row.text(2)), levels);
        model.ledgerCharts.push_back({row.number(0, maxLedgerChart), row.text(3), std::move(chart)});
    });
    eachLine(source, "[coan]", [&](const SourceLine& line) {
        const Row row(source, line, 5);
        CostChart chart{
            row.number(0, maxCostChart), row.choice(1, "voci", "conti"), row.text(2), {}, row.text(4)};
        for (const std::string& length : splitTrimmed(row.text(3), " "))
            if (!length.empty())
                chart.groupLengths.push_back(parseNumber(source, line, length, 1, 15));
        model.costCharts.push_back(std::move(chart));
    });
    eachLine(source, "[ditte]", [&](const SourceLine& line) {
        const Row row(source, line, 7);
        model.companies.push_back({row.number(0, maxCompany), row.number(1, maxLedgerChart),
                                   row.optionalNumber(2, maxCostChart), row.optionalNumber(3, maxCostChart),
                                   row.choice(4, "si", "no"), row.text(5) == "-" ? "" : row.text(5),
                                   row.text(6)});
    });
}

void readCostAccounts(const std::string& folder, DemoModel& model) {
    const SourceText accounts = readSource(folder + "/cost_accounts.txt");
    for (const SourceLine& line : accounts.lines) {
        const Row row(accounts, line, 5);
        const bool analytic = !row.text(3).empty();
        model.costAccounts.push_back({row.number(0, maxCostChart), row.text(1), row.number(2, maxCompany),
                                      analytic ? row.kinds(3) : 0, analytic, row.text(4)});
    }
    const SourceText items = readSource(folder + "/cost_items.txt");
    for (const SourceLine& line : items.lines) {
        const Row row(items, line, 5);
        model.costAccounts.push_back({row.number(0, maxCostChart), row.text(1), row.number(2, maxCompany), 0,
                                      row.choice(3, "voce", "gruppo"), row.text(4)});
    }
}

void readCausali(const std::string& folder, DemoModel& model) {
    const SourceText source = readSource(folder + "/causali.txt");
    eachLine(source, "[causali]", [&](const SourceLine& line) {
        const Row row(source, line, 3);
        model.causali.push_back({row.text(0), row.number(1, maxCompany), row.text(2)});
    });
    eachLine(source, "[tipologie]", [&](const SourceLine& line) {
        const Row row(source, line, 3);
        model.typologies.push_back({row.text(0), parseSign(source, line, row.text(1)), row.kinds(2)});
    });
}

// Follows the "ditta N" lines of a file and finds accounts in that company's chart.
class CompanyCursor {
public:
    CompanyCursor(const SourceText& source, const DemoModel& model) : source_(source), model_(model) {}

    // True when the line is a "ditta N" line.
    bool take(const SourceLine& line) {
        if (line.text.rfind("ditta ", 0) != 0)
            return false;
        company_ = findCompany(model_, parseNumber(source_, line, line.text.substr(6), 0, maxCompany));
        if (!company_)
            throw SourceError(source_.name, line.number, "there is no such company");
        chart_ = &findLedgerChart(model_, company_->ledgerChart)->chart;
        return true;
    }

    // The analytic accounts that the path names; below a grouping, all of them.
    std::vector<const ChartAccount*> analyticAccounts(const SourceLine& line, const std::string& path) const {
        if (!company_)
            throw SourceError(source_.name, line.number, "no company has been named yet");
        auto found = findByPath(*chart_, path);
        if (found.size() == 1 && !chart_->isAnalytic(*found.front()))
            throw SourceError(source_.name, line.number, "\"" + path + "\" is a grouping, end it with / *");
        if (found.empty() || (found.size() > 1 && path.back() != '*'))
            throw SourceError(source_.name, line.number,
                              "\"" + path + "\" names " + std::to_string(found.size()) + " accounts");
        return found;
    }

    int code() const { return company_->code; }

private:
    const SourceText& source_;
    const DemoModel& model_;
    const Company* company_ = nullptr;
    const Chart* chart_ = nullptr;
};

void readActivations(const std::string& folder, DemoModel& model) {
    const SourceText source = readSource(folder + "/activations.txt");
    CompanyCursor company(source, model);
    for (const SourceLine& line : source.lines)
        if (!company.take(line))
            for (const ChartAccount* account : company.analyticAccounts(line, line.text))
                model.activations.push_back({company.code(), account->code});
    std::sort(model.activations.begin(), model.activations.end(),
              [](const Activation& a, const Activation& b) {
                  return std::pair(a.company, a.account) < std::pair(b.company, b.account);
              });
    const auto last = std::unique(model.activations.begin(), model.activations.end(),
                                  [](const Activation& a, const Activation& b) {
                                      return a.company == b.company && a.account == b.account;
                                  });
    model.activations.erase(last, model.activations.end());
}

// "12.5" or "100", in hundredths.
int parsePercentage(const SourceText& source, const SourceLine& line, const std::string& text) {
    const auto parts = splitTrimmed(text, ".");
    int hundredths = parseNumber(source, line, parts[0], 0, 999) * 100;
    if (parts.size() > 2 || (parts.size() == 2 && parts[1].size() != 1 && parts[1].size() != 2))
        throw SourceError(source.name, line.number,
                          "\"" + text + "\" is not a percentage with at most two decimals");
    if (parts.size() == 2)
        hundredths += parseNumber(source, line, parts[1], 0, 99) * (parts[1].size() == 1 ? 10 : 1);
    return hundredths;
}

CorrelationRow readCorrelationRow(const SourceText& source, const SourceLine& line) {
    std::vector<std::string> words = splitTrimmed(line.text, " ");
    words.erase(std::remove(words.begin(), words.end(), ""), words.end());
    if (words.size() != 3 && words.size() != 4)
        throw SourceError(source.name, line.number,
                          "a row is sign, percentage, cost account and, if any, cost item");
    return {parseSign(source, line, words[0]), parsePercentage(source, line, words[1]), words[2],
            words.size() == 4 ? words[3] : ""};
}

void readCorrelations(const std::string& folder, DemoModel& model) {
    const SourceText source = readSource(folder + "/correlations.txt");
    CompanyCursor company(source, model);
    std::vector<const ChartAccount*> accounts;
    std::size_t firstOfBlock = 0; // the correlations of the causale being read, one for each account
    for (const SourceLine& line : source.lines) {
        if (company.take(line)) {
            accounts.clear();
        } else if (line.indent == 0) {
            accounts = company.analyticAccounts(line, line.text);
            firstOfBlock = model.correlations.size();
        } else if (line.indent == 1) {
            firstOfBlock = model.correlations.size();
            for (const ChartAccount* account : accounts)
                model.correlations.push_back({company.code(),
                                              account->code,
                                              line.text,
                                              {},
                                              source.name + ":" + std::to_string(line.number)});
        } else {
            const CorrelationRow row = readCorrelationRow(source, line);
            if (firstOfBlock == model.correlations.size())
                throw SourceError(source.name, line.number, "a row without an account and a causale");
            for (std::size_t index = firstOfBlock; index < model.correlations.size(); ++index)
                model.correlations[index].rows.push_back(row);
        }
    }
}

} // namespace

DemoModel readDemo(const std::string& folder) {
    DemoModel model;
    readCharts(folder, model);
    readCostAccounts(folder, model);
    readCausali(folder, model);
    for (const Company& company : model.companies)
        if (!findLedgerChart(model, company.ledgerChart))
            throw SourceError("charts.txt: company " + std::to_string(company.code) +
                              " names a missing chart");
    readActivations(folder, model);
    readCorrelations(folder, model);
    return model;
}

} // namespace veldran::chartgen
