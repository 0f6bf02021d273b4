#include "shell/application.h"

#include "adapters/qt/text.h"
#include "platform/services/message_service.h"
#include "shell/message_box.h"
#include "shell/toolbar_icons.h"

#include <QLibraryInfo>
#include <QLocale>

namespace veldran::shell {

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
    setOrganizationName(QString());
    setApplicationName(QStringLiteral("veldran"));
    setApplicationDisplayName(QString());
    setApplicationVersion(QStringLiteral(VELDRAN_VERSION));
    setWindowIcon(toolbarIcon(ToolbarIcon::Application));
    const QLocale italian(QLocale::Italian, QLocale::Italy);
    QLocale::setDefault(italian);
    // The toolkit's own texts ("Mostra dettagli…", context menus); without the file they stay English.
    if (translator_.load(italian, QStringLiteral("qtbase"), QStringLiteral("_"),
                         QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        installTranslator(&translator_);
    }
    onUnexpected = [](const std::string& what) {
        showBox({QStringLiteral("Errore imprevisto"),
                 QStringLiteral("L'operazione non è stata completata."),
                 qt::toQt(what),
                 {}},
                services::styleOkOnly | services::styleCritical);
    };
}

bool Application::notify(QObject* receiver, QEvent* event) {
    try {
        return QApplication::notify(receiver, event);
    } catch (const std::exception& error) {
        onUnexpected(error.what());
    }
    return true;
}

} // namespace veldran::shell
