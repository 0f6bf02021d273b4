#include "shell/screen_navigator.h"

#include "platform/text.h"

namespace veldran::shell {
namespace {

bool isSet(const Value& cancel) {
    return valueOrDefault(cancel, Value(false)).toBool();
}

} // namespace

void ScreenNavigator::SetStatus(std::int16_t status) {
    status_ = status;
    if (onStatusChanged) {
        onStatusChanged();
    }
}

Value ScreenNavigator::GetProperty(std::string_view name) const {
    if (equalsIgnoringAsciiCase(name, "Status")) {
        return status_ ? Value(*status_) : Value();
    }
    return Object::GetProperty(name);
}

bool ScreenNavigator::refusesChangeOfCompany() {
    Value cancel(false);
    BeforeChangeDitta.raise(cancel);
    return isSet(cancel);
}

bool ScreenNavigator::refusesExport(const std::string& target) {
    Value cancel(false);
    BeforeExportToOffice.raise(cancel, Value(target));
    return isSet(cancel);
}

bool ScreenNavigator::refusesButton(int index) {
    Value cancel(false);
    ButtonPressed.raise(cancel, Value(index));
    return isSet(cancel);
}

} // namespace veldran::shell
