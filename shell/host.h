#pragma once

#include "platform/services/global_object.h"
#include "shell/companies.h"
#include "shell/company_file.h"
#include "shell/file_thesaurus.h"
#include "shell/lookup_list_service.h"
#include "shell/message_catalogue.h"
#include "shell/places.h"
#include "shell/qt_screen.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace veldran::shell {

/// What all screens of the host share: the company file, the companies of its database, the current one, the
/// texts, the desktop.
class Host {
public:
    Host(Places places, ProblemReporter report) : places_(std::move(places)), report_(std::move(report)) {}

    /// Reads the company file and what it names, and the companies of its database. Everything that is wrong
    /// is told to the user; what can be used is used.
    /// \param database an embedded database file to use instead of the one the file names
    /// \return true when a company is open
    bool open(const std::filesystem::path& companyFile,
              const std::optional<std::filesystem::path>& database = std::nullopt);

    const CompanyFile& file() const { return file_; }
    const std::vector<Company>& companies() const { return companies_; }
    /// Index of the current company; -1 while none is open.
    int currentIndex() const { return current_; }
    const Company* current() const {
        return current_ < 0 ? nullptr : &companies_[static_cast<std::size_t>(current_)];
    }
    void select(int index) { current_ = index; }

    const Places& places() const { return places_; }
    const ProblemReporter& report() const { return report_; }
    const FileThesaurus& thesaurus() const { return thesaurus_; }
    const MessageCatalogue& catalogue() const { return catalogue_; }
    services::Screen& screen() { return screen_; }
    services::LookupService& lookups() { return lookups_; }

private:
    void readTexts();
    void openDatabase();

    Places places_;
    ProblemReporter report_;
    CompanyFile file_;
    std::vector<Company> companies_;
    int current_ = -1;
    FileThesaurus thesaurus_;
    MessageCatalogue catalogue_;
    QtScreen screen_;
    LookupListService lookups_{file_.rights};
};

} // namespace veldran::shell
