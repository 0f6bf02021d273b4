#include "shell/tour/tour.h"

#include "platform/ado/connection.h"
#include "shell/demo_database.h"
#include "shell/drivers.h"
#include "shell/host.h"
#include "shell/main_window.h"
#include "shell/tour/activation_job.h"
#include "shell/tour/clipboard_job.h"
#include "shell/tour/correlation_job.h"

#include <QTemporaryDir>
#include <iostream>

namespace veldran::shell {
namespace {

constexpr QSize pictureSize(1120, 760); ///< also where there is no screen of that size

void work(Stage& stage, MainWindow& window, Host& host) {
    const std::string company = host.current()->code;
    const auto connection = ado::Connection::create(driverFor(host.file().connectionString, company));
    connection->Open(host.file().connectionString);
    TourGround ground{stage, StoredData(company, connection)};
    ActivationJob activation(ground, window, host);
    activation.run();
    CorrelationJob(ground).run();
    ClipboardJob(ground).run();
    activation.undo();
}

} // namespace

int runTour(const Places& places, const Options& options) {
    const QTemporaryDir workshop;
    std::optional<std::filesystem::path> database = options.database;
    if (!database) {
        database = std::filesystem::path(workshop.path().toStdString()) / "demo.vdb";
        try {
            createDemoDatabase(*database, places.database, [](const std::string&, double) {});
        } catch (const DemoError& error) {
            std::cerr << error.what() << std::endl;
            return 1;
        }
    }
    std::string complaint;
    Host host(places, [&](const std::string& text) { complaint += text + "\n"; });
    if (!host.open(demoCompanyFile(places), database)) {
        std::cerr << complaint;
        return 1;
    }
    MainWindow window(host, options.component.value_or(places.program / ComponentLibrary::fileName()));
    window.resize(pictureSize);
    Stage stage(window, *options.tour);
    stage.hopeless = [&] { return !complaint.empty(); };
    window.show();
    std::string failure;
    try {
        work(stage, window, host);
        window.close();
    } catch (const std::exception& error) {
        failure = error.what(); // the window stays: it would ask about what was left unsaved
        stage.picture("interrotto", "Il giro si è fermato qui: " + failure);
    }
    failure += (failure.empty() || complaint.empty() ? "" : "\n") + complaint;
    if (!failure.empty()) {
        std::cerr << "Il giro non è riuscito: " << failure << std::endl;
        return 1;
    }
    std::cout << "Giro completato: " << stage.pictureCount() << " immagini in " << options.tour->string()
              << std::endl;
    return 0;
}

} // namespace veldran::shell
