#include "platform/ado/parameter.h"

#include "platform/ado/command.h"
#include "platform/ado/raise.h"
#include "platform/ado/value_conversion.h"
#include "platform/text.h"

#include <algorithm>

namespace veldran::ado {

namespace {

Carrier carrier(const ParameterInfo& info) {
    return {"parametro", info.name};
}

} // namespace

BoundParameter Parameter::bound() const {
    if (info_.type == adEmpty || (isText(info_.type) && info_.size <= 0) ||
        (isDecimal(info_.type) && info_.precision == 0)) {
        raise(adErrInvalidParamInfo, "(" + carrier(info_).text() + ")");
    }
    const TargetType target{carrier(info_), info_.type, info_.size, info_.precision, info_.scale};
    return {info_, value_ ? converted(*value_, target, Places::Refused) : veldran::Value()};
}

Parameter& Parameters::Append(Parameter parameter) {
    const ParameterInfo& info = parameter.info();
    if (info.type == adEmpty || (isText(info.type) && info.size <= 0)) {
        raise(adErrInvalidParamInfo, "(" + carrier(info).text() + ")");
    }
    items_.push_back(std::make_unique<Parameter>(std::move(parameter)));
    return *items_.back();
}

void Parameters::Delete(std::string_view name) {
    Delete(indexOf(name));
}

void Parameters::Delete(std::size_t index) {
    if (index >= items_.size()) {
        raise(adErrItemNotFound, "(parametro numero " + std::to_string(index) + ")");
    }
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(index));
}

void Parameters::Refresh() {
    if (command_.CommandType() != adCmdStoredProc) {
        raise(adErrIllegalOperation, "(solo una procedura conosce i propri parametri)");
    }
    const auto connection = command_.ActiveConnection();
    if (!connection) {
        raise(adErrInvalidConnection);
    }
    const auto reported = connection->guarded(
        [&](Session& session) { return session.describeProcedure(command_.CommandText()); });
    items_.clear();
    for (const ParameterInfo& info : reported) {
        items_.push_back(std::make_unique<Parameter>(info));
    }
    asked_ = true;
}

std::size_t Parameters::Count() {
    fillFromProcedure();
    return items_.size();
}

Parameter& Parameters::operator[](std::string_view name) {
    return *items_[indexOf(name)];
}

Parameter& Parameters::operator[](std::size_t index) {
    fillFromProcedure();
    if (index >= items_.size()) {
        raise(adErrItemNotFound, "(parametro numero " + std::to_string(index) + ")");
    }
    return *items_[index];
}

Parameter& Parameters::operator[](int index) {
    return (*this)[static_cast<std::size_t>(index)]; // a negative index becomes one that no parameter has
}

void Parameters::fillFromProcedure() {
    const auto connection = command_.ActiveConnection();
    if (items_.empty() && !asked_ && command_.CommandType() == adCmdStoredProc && connection &&
        connection->State() == adStateOpen) {
        Refresh();
    }
}

std::size_t Parameters::indexOf(std::string_view name) {
    fillFromProcedure();
    const auto found = std::find_if(items_.begin(), items_.end(), [&](const auto& item) {
        return equalsIgnoringAsciiCase(item->Name(), name);
    });
    if (found == items_.end()) {
        raise(adErrItemNotFound, "(parametro " + std::string(name) + ")");
    }
    return static_cast<std::size_t>(found - items_.begin());
}

} // namespace veldran::ado
