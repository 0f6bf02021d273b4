#include "adapters/qt/text.h"
#include "platform/services/message_service.h"
#include "shell/application.h"
#include "shell/demo_database.h"
#include "shell/host.h"
#include "shell/main_window.h"
#include "shell/message_box.h"
#include "shell/options.h"
#include "shell/tour/tour.h"

#include <string>

namespace veldran::shell {
namespace {

void tell(const std::string& text) {
    showBox({QStringLiteral("Attenzione"), qt::toQt(text), {}, {}},
            services::styleOkOnly | services::styleExclamation);
}

std::filesystem::path componentBeside(const Places& places) {
    return places.program / ComponentLibrary::fileName();
}

/// Makes the demo company's database when the company lives in it and it is not there yet.
/// \return false after telling why not
bool prepareDemo(const Places& places, const Options& options, const std::filesystem::path& company) {
    const std::filesystem::path file = demoDatabaseFile(places);
    const bool wanted = options.demoReset || (!options.database && opensDemoDatabase(company, places));
    if (!wanted || (std::filesystem::exists(file) && !options.demoReset)) {
        return true;
    }
    try {
        createDemoDatabaseVisibly(file, places.database);
        return true;
    } catch (const DemoError& error) {
        tell(error.what());
        return false;
    }
}

/// Opens the company and the main window and runs until it closes; with a tour, until the tour ends.
/// \return the exit code
int run(const Options& options) {
    const Places places = Places::ofThisProgram();
    if (options.tour) {
        return runTour(places, options);
    }
    const auto company = options.companyFile.value_or(demoCompanyFile(places));
    if (!prepareDemo(places, options, company)) {
        return 1;
    }
    Host host(places, tell);
    host.open(company, options.database);
    MainWindow window(host, options.component.value_or(componentBeside(places)));
    window.show();
    return Application::exec();
}

} // namespace
} // namespace veldran::shell

int main(int argc, char** argv) {
    veldran::shell::Options options;
    if (const auto exitCode = veldran::shell::parseOptions(argc, argv, options)) {
        return *exitCode;
    }
    const veldran::shell::Application application(argc, argv);
    return veldran::shell::run(options);
}
