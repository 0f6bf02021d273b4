#include "shell/company_file.h"

namespace veldran::shell {
namespace {

std::string required(const DataObject& file, const std::string& key, const std::string& meaning) {
    const std::string value = file.text(key).value_or("");
    if (value.empty()) {
        throw DataFileError("File «" + file.file().string() + "», chiave «" + key + "»: manca " + meaning +
                            ".");
    }
    return value;
}

} // namespace

CompanyFile readCompanyFile(const std::filesystem::path& path, const Places& places, Problems& problems) {
    const DataObject file = DataObject::fromFile(path, problems);
    file.refuseKeysOtherThan({"applicazione", "utente", "ditta", "connessione", "diritti", "layout", "script",
                              "thesaurus", "messaggi"});

    CompanyFile company;
    company.path = path;
    company.connectionString = places.expand(required(file, "connessione", "la stringa di connessione"));
    company.company = required(file, "ditta", "il codice della ditta, tra virgolette");
    company.applicationTitle = file.text("applicazione").value_or(company.applicationTitle);
    company.user = file.text("utente").value_or("");
    if (const auto rights = file.object("diritti")) {
        rights->refuseKeysOtherThan({"inserimento", "cancellazione", "modifica", "interrogazione"});
        company.rights.insert = rights->boolean("inserimento").value_or(true);
        company.rights.remove = rights->boolean("cancellazione").value_or(true);
        company.rights.update = rights->boolean("modifica").value_or(true);
        company.rights.query = rights->boolean("interrogazione").value_or(true);
    }
    const std::filesystem::path base = std::filesystem::absolute(path).parent_path();
    const auto fileOf = [&](const std::string& key) {
        const std::string name = file.text(key).value_or("");
        return name.empty() ? std::filesystem::path() : places.resolve(name, base);
    };
    company.layout = fileOf("layout");
    company.script = fileOf("script");
    company.thesaurus = fileOf("thesaurus");
    company.messages = fileOf("messaggi");
    return company;
}

} // namespace veldran::shell
