#include "shell/lookup_list_service.h"

#include "adapters/qt/text.h"
#include "shell/lookup_dialog.h"
#include "shell/lookup_query.h"
#include "shell/qt_screen.h"

#include <QApplication>

namespace veldran::shell {

using qt::toQt;

std::optional<std::string> LookupListService::Decode(const services::LookupRequest& request) {
    return queryDescription(request);
}

std::optional<services::LookupChoice> LookupListService::Choose(const services::LookupRequest& request) {
    const PointerPause pause;
    QWidget* over = QApplication::activeModalWidget();
    LookupDialog dialog(queryRows(request), toQt(request.title), toQt(request.structure.codeOf(request.code)),
                        toQt(request.restriction), over ? over : QApplication::activeWindow());
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
    const PointerPause pause;
    (void)request;
}

} // namespace veldran::shell
