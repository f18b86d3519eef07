#include "localdb/engine/ColumnChanger.h"

#include <algorithm>
#include <string_view>

#include "localdb/engine/AliasTypes.h"
#include "localdb/engine/BoundNodes.h"
#include "localdb/engine/CollationNames.h"
#include "localdb/engine/ColumnFit.h"
#include "localdb/engine/StoredForm.h"
#include "localdb/engine/TableChange.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

using Kind = ColumnDependent::Kind;

bool IsVariable(TypeKind kind) {
    return kind == TypeKind::VarChar || kind == TypeKind::NVarChar || kind == TypeKind::VarBinary;
}

bool IsLonger(const SqlType& to, const SqlType& from) {
    return to.length == SqlType::Max || (from.length != SqlType::Max && to.length >= from.length);
}

// The same kind of variable length, with room for every value that is there.
bool Grows(const SqlType& from, const SqlType& to) {
    return from.kind == to.kind && IsVariable(to.kind) && IsLonger(to, from);
}

bool SameCollation(const SqlType& a, const SqlType& b) {
    const char* left = StorageCollation(a);
    const char* right = StorageCollation(b);
    return (left ? std::string_view(left) : "") == (right ? std::string_view(right) : "");
}

// Whether every value of `from` lies in the storage as the same value of `to` does.
bool SameForm(const SqlType& from, const SqlType& to) {
    if (from == to) return true;
    if (!SameCollation(from, to)) return false;
    if (Grows(from, to)) return true;
    if (from.kind == TypeKind::VarChar && to.kind == TypeKind::NVarChar) return IsLonger(to, from);
    const auto isWhole = [](const SqlType& type) {
        return ClassOf(type) == TypeClass::Integer && type.kind != TypeKind::Bit;
    };
    return isWhole(from) && isWhole(to) && FactsOf(from.kind).bytes <= FactsOf(to.kind).bytes;
}

bool Bears(Kind kind, const ColumnInfo& old, const ColumnInfo& column) {
    const SqlType &from = old.type, &to = column.type;
    switch (kind) {
        case Kind::Unique:
        case Kind::Index:
            if (to.length == SqlType::Max) return false;
            if (old.nullable && !column.nullable) return false;
            return from == to || (Grows(from, to) && old.nullable == column.nullable);
        case Kind::Check:
            return from.kind == to.kind && IsVariable(to.kind) && from != to;
        case Kind::Default:
            return from.kind == to.kind;
        default:
            return false;
    }
}

}  // namespace

void ColumnChanger::Change() {
    const tsql::ColumnDefinition& definition = node_.column;
    const ColumnInfo old =
        FindColumn(definition.name, QStringLiteral("ALTER COLUMN"), definition.line);
    const ColumnInfo column = NewForm(old);
    CheckKind(old, column);
    if (old.type != column.type || old.nullable != column.nullable) {
        CheckDependents(old, column);
        Store(old, column);
    }
    metadata_.UpdateColumn(table_.object.id, column);
}

ColumnInfo ColumnChanger::NewForm(const ColumnInfo& old) {
    const tsql::ColumnDefinition& definition = node_.column;
    const DeclaredType declared = BindDeclaredType(context_, definition.type, old.id);
    ColumnInfo column = old;
    column.type = declared.type;
    column.isSysname = declared.isSysname;
    column.userType = declared.userType;
    column.userTypeName = declared.name;
    CheckColumnCollation(definition.collation, column.type, definition.line);
    column.nullable = definition.nullability == tsql::Nullability::Unsaid
                          ? declared.nullable && !old.identity
                          : definition.nullability == tsql::Nullability::Null;
    return column;
}

void ColumnChanger::CheckKind(const ColumnInfo& old, const ColumnInfo& column) const {
    const auto refuse = [&](const QString& what) { throw SqlError(4928, {column.name, what}); };
    const TypeKind from = old.type.kind, to = column.type.kind;
    if (old.IsComputed()) refuse(QStringLiteral("COMPUTED"));
    if (from == TypeKind::RowVersion) refuse(QStringLiteral("timestamp"));
    if (to == TypeKind::RowVersion) throw SqlError(4927, {column.name});
    const bool whole = ClassOf(column.type) == TypeClass::Integer ||
                       (ClassOf(column.type) == TypeClass::Decimal && column.type.scale == 0);
    if (old.identity && (!whole || to == TypeKind::Bit)) throw SqlError(2749, {column.name});
    if (old.identity && column.nullable) throw SqlError(8147, {column.name, TableName()});
    if (old.rowGuid && to != TypeKind::UniqueIdentifier) refuse(QStringLiteral("ROWGUIDCOL"));
    if (!IsOldLong(from) || from == to) return;
    const bool isLong = column.type.length == SqlType::Max || to == TypeKind::Xml;
    if (!isLong) refuse(old.type.Name());
}

void ColumnChanger::CheckDependents(const ColumnInfo& old, const ColumnInfo& column) {
    std::vector<ColumnDependent> dependents = FindDependents(frame_, table_, old);
    std::erase_if(dependents, [&](const ColumnDependent& dependent) {
        return Bears(dependent.kind, old, column);
    });
    if (!dependents.empty()) {
        throw DependentsError(dependents, old, QStringLiteral("ALTER COLUMN"));
    }
}

bool ColumnChanger::IsIndexed(const ColumnInfo& column) const {
    return std::any_of(table_.indexes.begin(), table_.indexes.end(), [&](const IndexInfo& index) {
        return std::any_of(index.keys.begin(), index.keys.end(),
                           [&](const auto& key) { return key.columnId == column.id; });
    });
}

void ColumnChanger::Store(const ColumnInfo& old, const ColumnInfo& column) {
    TableInfo after = table_;
    after.columns[table_.PlaceOf(column.id)] = column;
    // An index keeps nulls apart where there may be some.
    const bool stays =
        SameForm(old.type, column.type) && (old.nullable == column.nullable || !IsIndexed(column));
    const RowChecker checker(metadata_, table_, QStringLiteral("UPDATE"));
    TableChange::Values values;
    if (!stays) {
        values[column.id] = std::make_unique<ColumnFit>(
            std::make_unique<BoundColumn>(old.StorageName(), old.name, old.type), column, checker);
    }
    try {
        if (stays) {
            RequireValues(column);
        } else {
            TableChange(frame_, metadata_, table_).Rebuild(after, std::move(values));
        }
    } catch (const SqlError& error) {
        throw ErrorSummary(error).EndingStatement();
    }
}

}  // namespace quarv::localdb::engine
