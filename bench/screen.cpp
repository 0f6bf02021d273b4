#include "bench/screen.h"

#include "adapters/embedded/driver.h"
#include "bench/chart_file.h"
#include "sql/chart_statements.h"
#include "sql/selection_statements.h"
#include "sql/tree_statements.h"

namespace veldran::bench {

namespace {

ado::BoundParameter number(const std::string& name, std::int64_t value, int precision = 2) {
    return {{name, ado::adNumeric, ado::adParamInput, 0, static_cast<std::uint8_t>(precision), 0}, value};
}

ado::BoundParameter account(const std::string& value) {
    return {{"@CONTO", ado::adWChar, ado::adParamInput, 10, 0, 0}, value};
}

class Screen : public Subject {
public:
    explicit Screen(const ChartFile& file) : file_(file) {
        session_ = driver_.open("Provider=VeldranEmbedded;Data Source=" + file.path, {}, {});
    }

    void buildChart() override { run(sql::creazioneTabellaConti(chartCode, levels())); }
    void indexChart() override {
        run(sql::chiaveTabellaConti());
        run(sql::indiceContoTabellaConti());
        run(sql::indiceParentTabellaConti());
    }
    void markActive() override { run(sql::impostazioneAttivi(std::to_string(company), chartCode)); }
    void markCorrelated() override { run(sql::impostazioneCorrelati(std::to_string(company))); }
    void select(int filter) override {
        run(sql::rimozioneSelezione());
        run(sql::creazioneSelezione(filter));
    }
    void complete() override {
        run(sql::identitaSelezione());
        while (run(sql::completamentoSelezione(chartCode)) >= 1) {
        }
    }
    void indexSelection() override {
        for (const std::string& statement : sql::indiciSelezione(levels())) {
            run(statement);
        }
    }

    std::int64_t expandRoot() override {
        return rows(sql::figliRadice(), {number("@N1", nature), number("@N2", nature)});
    }
    std::int64_t expandChildren(const std::string& parent) override {
        return rows(sql::figliIntermedio(),
                    {number("@GRUPPO", chartCode), account(parent), number("@NATURA", nature)});
    }
    std::int64_t lookup(const std::string& code) override {
        return rows(sql::ricercaConto(chartCode), {account(code)});
    }
    void activate(const std::string& header, bool on) override {
        const ado::BoundParameter flag{{"@ON", ado::adBoolean, ado::adParamInput, 0, 0, 0}, on};
        const ado::BoundParameter all{{"@CORRELATI", ado::adSmallInt, ado::adParamInput, 0, 0, 0},
                                      std::int16_t{2}};
        const std::vector<ado::BoundParameter> parameters{flag,
                                                          number("@DITTA", company, 5),
                                                          number("@GRUPPO", chartCode),
                                                          account((header + "00000000").substr(0, 10)),
                                                          number("@NATURA", nature, 1),
                                                          all};
        session_->callProcedure("SPCI_VELDRANACT", parameters, {0, false});
        run(sql::attivazioneSelezione(on, header.size() < 10 ? header + "%" : header, nature));
        run(sql::riportoAttivo());
    }

    Sums chart() override { return sums("#CG24_TABPDC"); }
    Sums selection() override { return sums("#CG24_TABPDC_SELECTED"); }

private:
    std::int16_t levels() const { return static_cast<std::int16_t>(file_.levels); }
    std::int64_t run(const std::string& text) { return session_->execute(text, {}, {0, false}).rowsAffected; }
    std::int64_t rows(const std::string& text, const std::vector<ado::BoundParameter>& parameters) {
        return static_cast<std::int64_t>(session_->execute(text, parameters, {0, true}).rows->rowCount());
    }
    Sums sums(const std::string& table) {
        const auto result = session_->execute(
            "SELECT COUNT(*) AS A, SUM(CASE ATTIVO WHEN 1 THEN 1 ELSE 0 END) AS B,"
            " SUM(CASE CORRELATO WHEN 1 THEN 1 ELSE 0 END) AS C, SUM(CAST(NRLIVELLO AS INT)) AS D,"
            " COUNT(PARENT) AS E, COUNT(DISTINCT LIVELLO2) AS F FROM " +
                table,
            {}, {0, true});
        const auto cell = [&](std::size_t column) { return result.rows->cell(0, column).toInteger(); };
        return {cell(0), cell(1), cell(2), cell(3), cell(4), cell(5)};
    }

    ChartFile file_;
    embedded::EmbeddedDriver driver_;
    std::unique_ptr<ado::Session> session_;
};

} // namespace

std::unique_ptr<Subject> makeScreen(const ChartFile& file) {
    return std::make_unique<Screen>(file);
}

} // namespace veldran::bench
