#include "shell/tour/tour.h"

#include "shell/demo_database.h"
#include "shell/host.h"
#include "shell/main_window.h"
#include "shell/tour/job.h"

#include <QTemporaryDir>
#include <iostream>

namespace veldran::shell {

int runTour(const Places& places, const Options& options) {
    const QTemporaryDir workshop;
    std::optional<std::filesystem::path> database = options.database;
    if (!options.companyFile && !database) {
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
    if (!host.open(options.companyFile.value_or(places.data / "demo.json"), database)) {
        std::cerr << complaint;
        return 1;
    }
    MainWindow window(host, options.component.value_or(places.program / ComponentLibrary::fileName()));
    Stage stage(window, *options.tour);
    stage.hopeless = [&] { return !complaint.empty(); };
    window.show();
    std::string failure;
    try {
        TourJob(stage, window, host).run();
    } catch (const std::exception& error) {
        failure = error.what();
        stage.picture("interrotto", "Il giro si è fermato qui: " + failure);
    }
    window.close();
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
