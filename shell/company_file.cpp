#include "shell/company_file.h"

#include <algorithm>

namespace veldran::shell {
namespace {

[[noreturn]] void refuse(const DataObject& file, const std::string& key, const std::string& sentence) {
    throw DataFileError("File «" + file.file().string() + "», chiave «" + key + "»: " + sentence);
}

std::string required(const DataObject& file, const std::string& key, const std::string& meaning) {
    std::string value = file.text(key).value_or("");
    if (value.empty()) {
        refuse(file, key, "manca " + meaning + ".");
    }
    return value;
}

/// "server\nome" in a JSON text is a line feed between "server" and "ome".
std::string connectionIn(const DataObject& file) {
    constexpr const char* key = "connessione";
    std::string value = required(file, key, "la stringa di connessione");
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 0x20U; };
    if (std::any_of(value.begin(), value.end(), isControl)) {
        refuse(file, key,
               "contiene un carattere di controllo; la barra rovesciata di «server\\istanza» si scrive due "
               "volte.");
    }
    return value;
}

} // namespace

CompanyFile readCompanyFile(const std::filesystem::path& path, const Places& places, Problems& problems) {
    const DataObject file = DataObject::fromFile(path, problems, Quotes::Withheld); // it holds a password
    file.refuseKeysOtherThan({"applicazione", "utente", "ditta", "connessione", "diritti", "layout", "script",
                              "thesaurus", "messaggi"});

    CompanyFile company;
    company.path = path;
    company.connectionString = places.expand(connectionIn(file));
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
