#include "shell/host.h"

#include "platform/ado/connection.h"
#include "shell/drivers.h"

#include <algorithm>

namespace veldran::shell {

bool Host::open(const std::filesystem::path& companyFile,
                const std::optional<std::filesystem::path>& database) {
    companies_.clear();
    current_ = -1;
    Problems problems;
    try {
        file_ = readCompanyFile(companyFile, places_, problems);
        if (database) {
            file_.connectionString = embeddedConnectionString(std::filesystem::absolute(*database));
        }
    } catch (const DataFileError& error) {
        problems.emplace_back(error.what());
        report_("La ditta non può essere aperta.\n\n" + joinProblems(problems));
        readTexts();
        return false;
    }
    if (!problems.empty()) {
        report_("Il file della ditta contiene errori.\n\n" + joinProblems(problems));
    }
    readTexts();
    openDatabase();
    return current_ >= 0;
}

void Host::readTexts() {
    thesaurus_ = {};
    catalogue_ = {};
    Problems problems;
    const auto add = [&](auto& texts, const std::filesystem::path& path) {
        if (path.empty()) {
            return;
        }
        try {
            texts.add(path, problems);
        } catch (const DataFileError& error) {
            problems.emplace_back(error.what());
        }
    };
    add(thesaurus_, places_.data / "thesaurus.json");
    add(thesaurus_, file_.thesaurus);
    add(catalogue_, places_.data / "messaggi.json");
    add(catalogue_, file_.messages);
    if (!problems.empty()) {
        report_("I testi dell'applicazione non sono completi.\n\n" + joinProblems(problems));
    }
}

void Host::openDatabase() {
    try {
        const auto connection = ado::Connection::create(driverFor(file_.connectionString, file_.company));
        connection->Open(file_.connectionString);
        companies_ = readCompanies(*connection);
        connection->Close();
    } catch (const ado::AdoError& error) {
        report_("Il database della ditta non può essere aperto (file «" + file_.path.string() +
                "», chiave «connessione»).\n\nErrore " + std::to_string(error.first().Number) + ": " +
                error.first().Description);
        return;
    }
    const auto found = std::find_if(companies_.begin(), companies_.end(),
                                    [&](const Company& company) { return company.code == file_.company; });
    if (found != companies_.end()) {
        current_ = static_cast<int>(found - companies_.begin());
    } else {
        report_("File «" + file_.path.string() + "», chiave «ditta»: la ditta " + file_.company +
                " non è presente nel database.");
    }
}

} // namespace veldran::shell
