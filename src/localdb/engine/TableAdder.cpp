#include "localdb/engine/TableAdder.h"

#include <algorithm>

#include "localdb/engine/BoundNodes.h"
#include "localdb/engine/ColumnFit.h"
#include "localdb/engine/Conversion.h"
#include "localdb/engine/ErrorSummary.h"
#include "localdb/engine/ExistingRows.h"
#include "localdb/engine/TableBuilder.h"
#include "localdb/engine/TableMaker.h"
#include "localdb/engine/TableStorage.h"
#include "localdb/engine/TemporaryTables.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

bool IsNew(const TableInfo& before, const ColumnInfo& column) {
    return !before.FindColumn(column.id);
}

// The storage will keep the rows in its order.
bool IsStorageKey(const TableInfo& table, const IndexInfo& index) {
    return index.clustered && index.unique &&
           std::none_of(index.keys.begin(), index.keys.end(), [&table](const auto& key) {
               return table.FindColumn(key.columnId)->nullable;
           });
}

[[noreturn]] void RaiseTaken(const SqlError& error) {
    constexpr int StateOfAlter = 4;
    Message message = error.What();
    message.state = StateOfAlter;
    throw SqlError(message);
}

}  // namespace

void TableAdder::Change() {
    try {
        Add();
    } catch (const SqlError& cause) {
        ErrorSummary error(cause);
        const int number = cause.Number();
        if (number == 1505 || number == 515 || number == 2628 || number == 8115) {
            error.EndingStatement();
        }
        if (number == 2705) RaiseTaken(cause);
        throw ErrorSummary::OfConstraint(error);
    }
}

void TableAdder::Add() {
    if (TemporaryTables::IsTemporary(table_.object.name) && !node_.added.foreignKeys.empty()) {
        throw SqlError(40517, {QStringLiteral("FOREIGN KEY of a temporary table")});
    }
    TableInfo after = table_;
    TableBuilder(node_.added, frame_, metadata_).Extend(after);
    const bool hasRows = !node_.added.columns.empty() && HasRows();
    if (hasRows) CheckFillable(after);
    AddColumns(after, hasRows);
    StoreColumns(after);
    AddIndexes(after);
    AddConditions(after);
}

bool TableAdder::TakesDefault(const ColumnInfo& column) const {
    if (column.defaultText.isEmpty()) return false;
    if (!column.nullable) return true;
    for (const tsql::ColumnDefinition& definition : node_.added.columns) {
        if (SameName(definition.name, column.name) && definition.withValues) return true;
    }
    return std::any_of(node_.added.defaults.begin(), node_.added.defaults.end(),
                       [&column](const tsql::DefaultConstraint& constraint) {
                           return SameName(constraint.column, column.name) && constraint.withValues;
                       });
}

void TableAdder::CheckFillable(const TableInfo& after) const {
    for (const ColumnInfo& column : after.columns) {
        const bool filled = column.nullable || column.IsComputed() || column.identity ||
                            column.type.kind == TypeKind::RowVersion || TakesDefault(column);
        if (filled || !IsNew(table_, column)) continue;
        throw SqlError(4901, {column.name, TableName()});
    }
}

// A number for each row, in the order in which the storage keeps them.
BoundPtr TableAdder::NumberRows(const ColumnInfo& column, int64_t first, int64_t step) const {
    const std::string sql = '(' + std::to_string(first) + " + (row_number() OVER () - 1) * " +
                            std::to_string(step) + ')';
    return std::make_unique<BoundConvert>(
        std::make_unique<BoundColumn>(sql, column.name, MakeType(TypeKind::BigInt)), column.type);
}

BoundPtr TableAdder::IdentityValues(TableInfo& after, const ColumnInfo& column) {
    IdentityInfo& identity = *after.identity;
    int64_t span = 0, last = 0;
    const bool overflows = __builtin_mul_overflow(CountRows() - 1, identity.increment, &span) ||
                           __builtin_add_overflow(identity.seed, span, &last);
    try {
        if (overflows) throw SqlError(8115);
        TextArena arena;
        Conversion::Convert(SqlValue::Integer(last), MakeType(TypeKind::BigInt), column.type,
                            Conversion::NoStyle, arena);
    } catch (const SqlError&) {
        throw SqlError(8115, {QStringLiteral("IDENTITY"), column.type.Name()});
    }
    identity.last = last;
    return NumberRows(column, identity.seed, identity.increment);
}

BoundPtr TableAdder::VersionValues(const ColumnInfo& column) {
    const int64_t rows = CountRows();
    const int64_t first = metadata_.NextRowVersion();
    for (int64_t i = 1; i < rows; ++i) metadata_.NextRowVersion();
    return NumberRows(column, first, 1);
}

TableChange::Values TableAdder::NewValues(TableInfo& after, const RowChecker& checker) {
    TableChange::Values values;
    for (const ColumnInfo& column : after.columns) {
        if (!IsNew(table_, column)) continue;
        if (column.identity) {
            values[column.id] = IdentityValues(after, column);
        } else if (column.type.kind == TypeKind::RowVersion) {
            values[column.id] = VersionValues(column);
        } else if (TakesDefault(column)) {
            values[column.id] = std::make_unique<ColumnFit>(
                RowChecker::BindDefault(context_, column), column, checker);
        }
    }
    return values;
}

// New columns, then computed ones, new or needed by a new key. Rows are moved only where they come
// to hold something.
void TableAdder::AddColumns(TableInfo& after, bool hasRows) {
    TableInfo plain = after;
    plain.indexes = table_.indexes;
    bool computes = false;
    for (ColumnInfo& column : plain.columns) {
        const ColumnInfo* old = table_.FindColumn(column.id);
        if (!column.IsComputed() || !column.stored || (old && old->stored)) continue;
        column.stored = false;
        computes = true;
    }
    const RowChecker checker(metadata_, plain, QStringLiteral("UPDATE"));
    TableChange::Values values;
    if (hasRows) values = NewValues(plain, checker);
    if (!values.empty()) {
        TableChange(frame_, metadata_, table_).Rebuild(plain, std::move(values));
    } else {
        for (const ColumnInfo& column : plain.columns) {
            if (IsNew(table_, column)) TableStorage(GetStore(), metadata_).AddColumn(plain, column);
        }
    }
    TableInfo stored = after;
    stored.indexes = plain.indexes;
    if (computes) TableChange(frame_, metadata_, plain).Rebuild(stored);
    std::copy(stored.indexes.begin(), stored.indexes.end(), after.indexes.begin());
    after.identity = plain.identity;
    for (const ColumnInfo& column : after.columns) {
        if (IsNew(table_, column) && column.IsComputed() && column.stored) RequireValues(column);
    }
}

void TableAdder::StoreColumns(TableInfo& after) {
    TableMaker maker(GetStore(), metadata_);
    const int64_t id = after.object.id;
    for (ColumnInfo& column : after.columns) {
        maker.AddDefault(after, column);
        if (IsNew(table_, column)) {
            metadata_.AddColumn(id, column);
        } else {
            metadata_.UpdateColumn(id, column);
        }
    }
    if (!after.identity || table_.identity) return;
    metadata_.AddIdentity(id, *after.identity);
    if (after.identity->last) metadata_.SetLastIdentity(id, *after.identity->last);
}

void TableAdder::AddIndexes(TableInfo& after) {
    const size_t old = table_.indexes.size();
    const auto begin = after.indexes.begin() + static_cast<std::ptrdiff_t>(old);
    const bool moves = std::any_of(begin, after.indexes.end(), [&after](const IndexInfo& index) {
        return IsStorageKey(after, index);
    });
    if (moves) {
        TableInfo before = after;
        before.indexes.resize(old);
        TableChange(frame_, metadata_, before).Rebuild(after);
    }
    TableMaker maker(GetStore(), metadata_);
    TableStorage storage(GetStore(), metadata_);
    for (size_t i = old; i < after.indexes.size(); ++i) {
        if (!moves) storage.CreateIndex(after, after.indexes[i]);
        maker.AddIndex(after, after.indexes[i]);
    }
}

void TableAdder::AddConditions(TableInfo& after) {
    TableMaker maker(GetStore(), metadata_);
    ExistingRows existing(frame_, metadata_, after);
    const bool trusts = node_.rowCheck != tsql::AlterTable::RowCheck::NoCheck;
    for (size_t i = table_.checks.size(); i < after.checks.size(); ++i) {
        after.checks[i].trusted = trusts;
        maker.AddCheck(after, after.checks[i]);
        if (trusts) existing.Check(after.checks[i]);
    }
    for (size_t i = table_.foreignKeys.size(); i < after.foreignKeys.size(); ++i) {
        after.foreignKeys[i].trusted = trusts;
        maker.AddForeignKey(after, after.foreignKeys[i]);
        if (trusts) existing.Check(after.foreignKeys[i]);
    }
}

}  // namespace quarv::localdb::engine
