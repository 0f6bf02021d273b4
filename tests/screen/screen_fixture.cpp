#include "tests/screen/screen_fixture.h"

#include "adapters/markers/marker_resolving_driver.h"
#include "platform/text.h"

#include <stdexcept>

namespace veldran::test {

namespace {

/// What tells one statement from another in a journal.
std::string shortened(const std::string& text) {
    for (const char* telling :
         {"CG10_NUMLIVELLI", "DROP TABLE", "INTO\r\n    #CG24_TABPDC_SELECTED", "INTO\r\n    #CG24_TABPDC",
          "ALTER TABLE", "CREATE NONCLUSTERED INDEX", "UPDATE #CG24_TABPDC"}) {
        if (text.find(telling) != std::string::npos) {
            return telling;
        }
    }
    const std::string nature = "CG24_INDTIPOCONTO = ";
    if (text.find("TOP 1 1") != std::string::npos && text.find(nature) != std::string::npos) {
        return std::string("TOP 1 1 nature ") + text[text.find(nature) + nature.size()];
    }
    return text;
}

std::shared_ptr<ado::Driver> resolving(std::shared_ptr<ado::Driver> driver, const Company& company) {
    return std::make_shared<MarkerResolvingDriver>(
        std::move(driver), std::map<std::string, std::string>{{"<DITTA>", company.ditta}});
}

} // namespace

/// The log of the form's statements, which also takes its place in the host's journal.
class Screen::Recorder final : public StatementLog {
public:
    void opening(const std::string& connectionString) override {
        StatementLog::opening(connectionString);
        journal->push_back("open");
    }
    void sending(const Message& message) override {
        if (paused) {
            return;
        }
        StatementLog::sending(message);
        if (message.how == Sent::Direct || message.how == Sent::Prepared || message.how == Sent::Procedure) {
            journal->push_back(shortened(message.text));
        }
    }

    SharedJournal journal;
    bool paused = false; ///< while a test asks questions of its own
};

class Screen::Pause {
public:
    explicit Pause(Recorder& recorder) : recorder_(recorder) { recorder_.paused = true; }
    ~Pause() { recorder_.paused = false; }
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;

private:
    Recorder& recorder_;
};

Chart smallChart() {
    Chart chart(4);
    chart.account("0100000000", "Attività", 1)
        .account("0101000000", "Immobilizzazioni", 1)
        .account("0101010000", "Immobilizzazioni immateriali", 1)
        .account("0101010001", "Costi d'impianto", 1)
        .account("0101010002", "Brevetti", 1)
        .account("0101020000", "Immobilizzazioni materiali", 1)
        .account("0101020001", "Fabbricati", 1)
        .account("0102000000", "Attivo circolante", 1)
        .account("0102030000", "Disponibilità liquide", 1)
        .account("0102030005", "Cassa contanti", 1)
        .account("0102030006", "Banca c/c", 1)
        .account("0300000000", "Costi", 2)
        .account("0301000000", "Costi della produzione", 2)
        .account("0301010000", "Materie prime", 2)
        .account("0301010001", "Acquisti", 2)
        .account("0302000000", "Personale", 2)
        .account("0302010000", "Retribuzioni", 2)
        .account("0302010001", "Salari", 2)
        .account("0400000000", "Ricavi", 2)
        .account("0401000000", "Ricavi caratteristici", 2)
        .account("0401010000", "Vendite", 2)
        .account("0401010001", "Vendite Italia", 2)
        .account("0900000000", "Conti d'ordine", 0)
        .account("0901000000", "Beni di terzi", 0)
        .account("0901010000", "Beni in deposito", 0)
        .account("0901010001", "Merci di terzi", 0);
    return chart;
}

Screen::Screen(const Chart& chart, Company company, Markers markers, const SignIn& signIn)
    : recorder_(std::make_shared<Recorder>()), database(chart),
      failing(std::make_shared<FailingDriver>(database.driver())),
      host(std::make_shared<InterceptingDriver>(
               markers == Markers::Resolved ? resolving(failing, company) : failing, recorder_),
           signIn(database.connectionString()), company) {
    recorder_->journal = host.journal;
}

Screen::~Screen() = default;

StatementLog& Screen::log() const {
    return *recorder_;
}

std::vector<std::vector<std::string>> Screen::query(const std::string& select) {
    const Pause pause(*recorder_);
    const auto rows = host.connection().Execute(select);
    std::vector<std::vector<std::string>> all;
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        std::vector<std::string>& texts = all.emplace_back();
        for (const ado::Field& field : rows->Fields()) {
            texts.push_back(asText(field.Value()));
        }
    }
    return all;
}

void Screen::waitBrieflyForLocks() {
    if (database.server() != nullptr) { // an embedded database is told by its connection string
        const Pause pause(*recorder_);
        host.connection().Execute("SET LOCK_TIMEOUT 300");
    }
}

Journal Screen::journalWithoutNavigator() const {
    Journal all = *host.journal;
    std::erase(all, "navigator status");
    return all;
}

const Value& valueOf(const Message& message, std::string_view parameter) {
    for (const ado::BoundParameter& bound : message.parameters) {
        if (equalsIgnoringAsciiCase(bound.info.name, parameter)) {
            return bound.value;
        }
    }
    throw std::out_of_range("no parameter " + std::string(parameter) + " in " + message.text);
}

} // namespace veldran::test
