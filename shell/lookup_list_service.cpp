#include "shell/lookup_list_service.h"

#include "adapters/qt/text.h"
#include "shell/cost_kinds.h"
#include "shell/lookup_dialog.h"
#include "shell/lookup_query.h"
#include "shell/maintenance_dialog.h"
#include "shell/message_box.h"
#include "shell/qt_screen.h"

#include <QApplication>

namespace veldran::shell {

using qt::toQt;

namespace {

QWidget* windowInUse() {
    QWidget* over = QApplication::activeModalWidget();
    return over ? over : QApplication::activeWindow();
}

/// What the form says of the restriction, or else the kinds themselves.
QString restrictionOf(const services::LookupRequest& request) {
    const bool unsaid = request.restriction.empty() && request.kind == services::LookupKind::ContiCoin;
    return unsaid ? restrictionText(request.tipologie.value_or(everyCostKind)) : toQt(request.restriction);
}

void tell(const QString& text) {
    showBox({QStringLiteral("Gestione"), text, {}, {}}, services::styleOkOnly | services::styleInformation);
}

} // namespace

std::optional<std::string> LookupListService::Decode(const services::LookupRequest& request) {
    return queryDescription(request);
}

std::optional<services::LookupChoice> LookupListService::Choose(const services::LookupRequest& request) {
    const PointerPause pause;
    LookupDialog dialog(queryRows(request), toQt(request.title), toQt(request.structure.codeOf(request.code)),
                        restrictionOf(request), windowInUse());
    dialog.exec();
    const auto row = dialog.chosen();
    return row ? std::optional(
                     services::LookupChoice{row->code.toStdString(), row->description.toStdString()})
               : std::nullopt;
}

services::CodeFormatter
LookupListService::NewCodeFormatter(const std::shared_ptr<ado::Connection>& connection, std::int32_t pdc) {
    return services::CodeFormatter(queryStructure(connection, pdc));
}

void LookupListService::Maintain(const services::LookupRequest& request) {
    const bool items = request.kind == services::LookupKind::VociDiSpesa;
    if (!items && request.kind != services::LookupKind::ContiCoin) {
        tell(QStringLiteral("Questi codici non si gestiscono da qui."));
        return;
    }
    const services::CodeStructure structure = queryStructure(request.connection, request.pdc);
    CostCodes codes(request.connection, request.pdc, request.ditta, items);
    if (!codes.chartName()) {
        tell(items ? QStringLiteral("La ditta non ha un piano delle voci di spesa.")
                   : QStringLiteral("La ditta non ha un piano dei conti di contabilità analitica."));
        return;
    }
    const PointerPause pause;
    MaintenanceDialog(std::move(codes), structure, request.code, rights_, windowInUse()).exec();
}

} // namespace veldran::shell
