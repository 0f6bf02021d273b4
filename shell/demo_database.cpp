#include "shell/demo_database.h"

#include "adapters/qt/text.h"
#include "adapters/tsql/script.h"
#include "adapters/tsql/source.h"
#include "platform/ado/connection.h"
#include "shell/company_file.h"
#include "shell/drivers.h"

#include <QProgressDialog>
#include <array>
#include <system_error>
#include <utility>
#include <vector>

namespace veldran::shell {
namespace {

constexpr std::array<std::pair<const char*, const char*>, 3> steps{{
    {"schema.sql", "Creazione delle tabelle…"},
    {"routines.sql", "Creazione delle procedure e delle funzioni…"},
    {"demo.sql", "Caricamento delle ditte dimostrative…"},
}};

struct Step {
    std::filesystem::path file;
    const char* text;
    std::vector<tsql::ScriptBatch> batches;
};

std::vector<Step> readSteps(const std::filesystem::path& scripts) {
    std::vector<Step> read;
    for (const auto& [name, text] : steps) {
        Step step{scripts / name, text, {}};
        try {
            step.batches = tsql::splitScript(readTextFile(step.file));
        } catch (const std::exception& error) {
            throw DemoError("Lo script «" + step.file.string() + "» non può essere usato.\n\n" +
                            error.what());
        }
        read.push_back(std::move(step));
    }
    return read;
}

/// Removes a database file and what the database keeps beside it.
void removeDatabase(const std::filesystem::path& file) {
    std::error_code ignored;
    for (const char* suffix : {"", "-wal", "-shm", "-journal"}) {
        std::filesystem::remove(file.string() + suffix, ignored);
    }
}

void fill(const std::filesystem::path& file, const std::vector<Step>& work, const DemoProgress& progress) {
    std::size_t total = 0;
    for (const Step& step : work) {
        total += step.batches.size();
    }
    const auto connection = ado::Connection::create(driverFor(embeddedConnectionString(file), {}));
    connection->Open(embeddedConnectionString(file, true));
    connection->CommandTimeout(0);
    std::size_t done = 0;
    for (const Step& step : work) {
        connection->BeginTrans();
        for (const tsql::ScriptBatch& batch : step.batches) {
            progress(step.text, static_cast<double>(done) / static_cast<double>(total));
            try {
                for (int run = 0; run < batch.repetitions; ++run) {
                    connection->Execute(batch.text, nullptr, ado::adCmdText | ado::adExecuteNoRecords);
                }
            } catch (const ado::AdoError& error) {
                throw DemoError("Script «" + step.file.string() + "», blocco che inizia alla riga " +
                                std::to_string(batch.origin.line) + ": errore " +
                                std::to_string(error.first().Number) + ", " + error.first().Description);
            }
            ++done;
        }
        connection->CommitTrans();
    }
    progress(work.back().text, 1.0);
    connection->Close();
}

} // namespace

std::filesystem::path demoCompanyFile(const Places& places) {
    return places.data / "demo.json";
}

std::filesystem::path demoDatabaseFile(const Places& places) {
    return places.user / "demo.vdb";
}

bool opensDemoDatabase(const std::filesystem::path& companyFile, const Places& places) {
    try {
        Problems toldWhenItIsOpened;
        const CompanyFile company = readCompanyFile(companyFile, places, toldWhenItIsOpened);
        return embeddedFile(company.connectionString) == demoDatabaseFile(places).lexically_normal();
    } catch (const DataFileError&) {
        return false; // told when it is opened
    }
}

void createDemoDatabase(const std::filesystem::path& file, const std::filesystem::path& scripts,
                        const DemoProgress& progress) {
    const std::vector<Step> work = readSteps(scripts);
    const std::filesystem::path unfinished = file.string() + ".nuovo";
    std::error_code error;
    std::filesystem::create_directories(file.parent_path(), error);
    removeDatabase(unfinished);
    try {
        fill(unfinished, work, progress);
    } catch (const ado::AdoError& failure) {
        removeDatabase(unfinished);
        throw DemoError("Il database dimostrativo «" + file.string() + "» non può essere creato.\n\nErrore " +
                        std::to_string(failure.first().Number) + ": " + failure.first().Description);
    } catch (const DemoError&) {
        removeDatabase(unfinished);
        throw;
    }
    removeDatabase(file);
    std::filesystem::rename(unfinished, file, error);
    if (error) {
        removeDatabase(unfinished);
        throw DemoError("Il file «" + file.string() + "» non può essere scritto: " + error.message() + ".");
    }
}

void createDemoDatabaseVisibly(const std::filesystem::path& file, const std::filesystem::path& scripts) {
    constexpr int range = 1000;
    QProgressDialog dialog(QStringLiteral("Preparazione del database dimostrativo…"), QString(), 0, range);
    dialog.setWindowTitle(QStringLiteral("Prima apertura"));
    dialog.setWindowModality(Qt::ApplicationModal);
    dialog.setMinimumWidth(420);
    dialog.setMinimumDuration(0);
    createDemoDatabase(file, scripts, [&](const std::string& step, double done) {
        dialog.setLabelText(qt::toQt(step));
        dialog.setValue(static_cast<int>(done * range)); // lets the window paint itself
    });
}

} // namespace veldran::shell
