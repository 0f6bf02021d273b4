#include "platform/ado/fields.h"

#include "platform/ado/raise.h"
#include "platform/ado/recordset.h"
#include "platform/text.h"

#include <algorithm>

namespace veldran::ado {

const Value& Field::Value() const {
    return recordset_->fieldValue(column_);
}

void Field::Value(veldran::Value value) {
    recordset_->setFieldValue(column_, value);
}

Value Field::OriginalValue() const {
    return recordset_->originalValue(column_);
}

Field& Fields::operator[](std::string_view name) {
    const auto found = std::find_if(items_.begin(), items_.end(), [&](const Field& field) {
        return equalsIgnoringAsciiCase(field.Name(), name);
    });
    if (found == items_.end()) {
        raise(adErrItemNotFound, "(campo " + std::string(name) + ")");
    }
    return *found;
}

Field& Fields::operator[](std::size_t index) {
    if (index >= items_.size()) {
        raise(adErrItemNotFound, "(campo numero " + std::to_string(index) + ")");
    }
    return items_[index];
}

Field& Fields::operator[](int index) {
    return (*this)[static_cast<std::size_t>(index)]; // a negative index becomes one that no field has
}

void Fields::bind(Recordset& recordset, const std::vector<ColumnInfo>& columns) {
    items_.clear();
    items_.reserve(columns.size());
    for (std::size_t column = 0; column < columns.size(); ++column) {
        items_.push_back(Field(recordset, columns[column], column));
    }
}

} // namespace veldran::ado
