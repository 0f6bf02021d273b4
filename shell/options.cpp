#include "shell/options.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <map>
#include <string>

namespace veldran::shell {

namespace {

constexpr int usageError = 2;

} // namespace

std::optional<int> parseOptions(int argc, char** argv, Options& options) {
    CLI::App app("Apre la maschera dei conti COGE attivati per la contabilità industriale.", "veldran-shell");
    app.get_formatter()->label("OPTIONS", "OPZIONI");
    app.get_formatter()->label("Options", "Opzioni");
    app.set_help_flag("-h,--help", "mostra questo testo e termina");
    app.set_version_flag("--version", std::string(VELDRAN_VERSION), "mostra la versione e termina");
    std::map<std::string, std::string> paths;
    app.add_option("--company", paths["company"], "file della ditta; senza, la ditta dimostrativa")
        ->type_name("FILE");
    app.add_option("--component", paths["component"],
                   "libreria della maschera; senza, quella accanto al programma")
        ->type_name("FILE");
    app.add_option("--database", paths["database"],
                   "file di database da usare al posto di quello della ditta")
        ->type_name("FILE");
    app.add_option("--tour", paths["tour"],
                   "guida la finestra passo per passo e salva un'immagine di ogni passo nella cartella")
        ->type_name("CARTELLA");
    app.add_flag("--demo-reset", options.demoReset, "ricrea da capo il database dimostrativo");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error);
    }
    const auto given = [&](const char* name) {
        return app.count(std::string("--") + name) > 0 ? std::optional<std::filesystem::path>(paths[name])
                                                       : std::nullopt;
    };
    options.companyFile = given("company");
    options.component = given("component");
    options.database = given("database");
    options.tour = given("tour");
    if (options.tour && options.companyFile) {
        // The tour keys, deletes and duplicates: never in anybody's books.
        std::cerr << "Il giro guidato lavora solo sulla ditta dimostrativa: --tour e --company non vanno "
                     "insieme.\n";
        return usageError;
    }
    return std::nullopt;
}

} // namespace veldran::shell
