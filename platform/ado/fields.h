#pragma once

#include "platform/ado/row_set.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace veldran::ado {

class Recordset;

/// One column of a recordset, read and written at the recordset's current record.
class Field {
public:
    const std::string& Name() const { return info_->name; }
    DataTypeEnum Type() const { return info_->type; }
    /// Characters for text, bytes for numbers.
    int DefinedSize() const { return info_->definedSize; }
    std::uint8_t Precision() const { return info_->precision; }
    std::uint8_t NumericScale() const { return info_->scale; }
    const ColumnInfo& info() const { return *info_; }

    /// Good until the record or its recordset changes: whoever wants to keep it copies it.
    /// \throws AdoError 3704 when the recordset is closed, 3021 without a current record or on a deleted one.
    const veldran::Value& Value() const;
    /// Begins an edit of the current record unless one is in progress. The value is converted at once to the
    /// column's type: NCHAR is padded with blanks, DECIMAL rounded half away from zero to its scale, integers
    /// half to even. \throws AdoError as the getter; 3251 when the recordset is read-only or the column is an
    /// identity; 3421 when the value is of another kind, 8115 when a number does not fit, 8152 when a text is
    /// too long. The record is then as it was.
    void Value(veldran::Value value);
    /// The value as the database last reported or accepted it; NULL for a record that is new.
    /// \throws AdoError 3704 when the recordset is closed, 3021 without a current record.
    veldran::Value OriginalValue() const;

private:
    friend class Fields;
    Field(Recordset& recordset, const ColumnInfo& info, std::size_t column)
        : recordset_(&recordset), info_(&info), column_(column) {}

    Recordset* recordset_; // the owner
    const ColumnInfo* info_;
    std::size_t column_;
};

/// The columns of an open recordset, addressed by position (from 0) or by name, blind to case.
/// A reference to a field is valid until the recordset is closed, requeried or opened again.
class Fields {
public:
    std::size_t Count() const { return items_.size(); }
    /// \throws AdoError 3265 when there is no such field.
    Field& operator[](std::string_view name);
    Field& operator[](const char* name) { return (*this)[std::string_view(name)]; }
    Field& operator[](std::size_t index);
    Field& operator[](int index);

    auto begin() { return items_.begin(); }
    auto end() { return items_.end(); }

private:
    friend class Recordset;
    void bind(Recordset& recordset, const std::vector<ColumnInfo>& columns);

    std::vector<Field> items_;
};

} // namespace veldran::ado
