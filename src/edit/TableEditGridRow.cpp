#include "edit/TableEditGridRow.h"

#include "base/Checked16.h"
#include "base/RuntimeError.h"
#include "base/StringList.h"
#include "edit/ADOUtils.h"

namespace quarv {

void TableEditGridRow::Init(const ado::Recordset& rs, const StringList& PK) {
    const ado::Fields& fields = rs.Fields();
    const int count = fields.Count();
    newValues_.clear();
    newValues_.reserve(count);
    for (int i = 0; i < count; ++i) newValues_.push_back(fields[i].Value());
    originalValues_ = newValues_;
    keyValues_.clear();
    for (qint16 j = 1; j <= PK.Count(); ++j) keyValues_.push_back(fields[PK.Items(j)].Value());
}

const Value& TableEditGridRow::PKValue(qint16 Index) const {
    if (Index < 1 || static_cast<size_t>(Index) > keyValues_.size())
        throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    return keyValues_[static_cast<size_t>(Index) - 1];
}

const Value& TableEditGridRow::OriginalValue(qint16 Index) const {
    return originalValues_[FieldOf(Index)];
}

void TableEditGridRow::CopyNewToOriginal(qint16 Index) {
    const size_t field = FieldOf(Index);
    originalValues_[field] = newValues_[field];
}

QString TableEditGridRow::PrimaryKeyClause(const StringList& PK) const {
    QString clause;
    for (qint16 j = 1; j <= PK.Count(); ++j) {
        if (j > 1) clause += QStringLiteral(" and ");
        clause +=
            u'[' + PK.Items(j) + QStringLiteral("]=") + SQLValue(PKValue(j), MostLiteralUnits);
    }
    return clause;
}

Value TableEditGridRow::ColumnValue(qint16 ColNum) const {
    const Value& value = newValues_[FieldOf(ColNum)];
    return value.IsNull() ? Value(QStringLiteral("NULL")) : value;
}

void TableEditGridRow::SetColumnValue(qint16 ColNum, const Value& value) {
    newValues_[FieldOf(ColNum)] = value;
}

size_t TableEditGridRow::FieldOf(qint16 column) const {
    const qint16 field = Add16(column, -1);
    if (field < 0 || static_cast<size_t>(field) >= newValues_.size())
        throw RuntimeError(RuntimeError::SubscriptOutOfRange);
    return static_cast<size_t>(field);
}

}  // namespace quarv
