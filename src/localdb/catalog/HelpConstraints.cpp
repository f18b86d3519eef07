#include "localdb/catalog/HelpConstraints.h"

#include <algorithm>

#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/ObjectLookup.h"
#include "localdb/engine/Collation.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::catalog {

namespace {

using engine::ColumnInfo;
using engine::ForeignKeyInfo;
using engine::Metadata;
using engine::SystemCall;
using engine::TableInfo;

const QString None = QStringLiteral("(n/a)");

// One row; a foreign key has a second one, which names the key that it refers to.
struct Constraint {
    QString type;
    QString name;
    QString keys;
    QString onDelete = None;
    QString onUpdate = None;
    QString enabled = None;
    QString replicated = None;
    QString references = {};
};

QString ActionText(ForeignKeyInfo::Action action) {
    constexpr const char16_t* Texts[] = {u"No Action", u"Cascade", u"Set Null", u"Set Default"};
    return QString::fromUtf16(Texts[static_cast<size_t>(action)]);
}

QString ColumnNames(const TableInfo& table, const ForeignKeyInfo& key,
                    int ForeignKeyInfo::Column::*which) {
    QStringList names;
    for (const ForeignKeyInfo::Column& column : key.columns) {
        if (const ColumnInfo* found = table.FindColumn(column.*which)) names += found->name;
    }
    return names.join(QStringLiteral(", "));
}

void SetState(Constraint& constraint, bool disabled) {
    constraint.enabled = disabled ? QStringLiteral("Disabled") : QStringLiteral("Enabled");
    constraint.replicated = QStringLiteral("Is_For_Replication");
}

void AddIndexes(std::vector<Constraint>& constraints, const TableInfo& table) {
    for (const engine::IndexInfo& index : table.indexes) {
        if (index.constraintId == 0) continue;
        const QString kind =
            index.primary ? QStringLiteral("PRIMARY KEY (%1)") : QStringLiteral("UNIQUE (%1)");
        const QString how =
            index.clustered ? QStringLiteral("clustered") : QStringLiteral("non-clustered");
        constraints.push_back({kind.arg(how), index.name, KeyText(table, index)});
    }
}

void AddDefaults(std::vector<Constraint>& constraints, const TableInfo& table) {
    for (const ColumnInfo& column : table.columns) {
        if (column.defaultId == 0) continue;
        constraints.push_back({QStringLiteral("DEFAULT on column ") + column.name,
                               column.defaultName, column.defaultText});
    }
}

void AddChecks(std::vector<Constraint>& constraints, const TableInfo& table) {
    for (const engine::CheckInfo& check : table.checks) {
        const ColumnInfo* column = table.FindColumn(check.columnId);
        const QString type = column ? QStringLiteral("CHECK on column ") + column->name
                                    : QStringLiteral("CHECK Table Level ");
        Constraint constraint{type, check.name, check.text};
        SetState(constraint, check.disabled);
        constraints.push_back(std::move(constraint));
    }
}

void AddForeignKeys(std::vector<Constraint>& constraints, const TableInfo& table,
                    Metadata metadata) {
    for (const ForeignKeyInfo& key : table.foreignKeys) {
        const std::optional<engine::ObjectInfo> object = metadata.Find(key.referencedTable);
        if (!object) continue;
        const TableInfo referenced = metadata.LoadTable(*object);
        Constraint constraint{QStringLiteral("FOREIGN KEY"), key.name,
                              ColumnNames(table, key, &ForeignKeyInfo::Column::columnId)};
        constraint.onDelete = ActionText(key.onDelete);
        constraint.onUpdate = ActionText(key.onUpdate);
        SetState(constraint, key.disabled);
        constraint.references =
            QStringLiteral("REFERENCES %1.%2.%3 (%4)")
                .arg(metadata.Database().name, object->schema, object->name,
                     ColumnNames(referenced, key, &ForeignKeyInfo::Column::referencedId));
        constraints.push_back(std::move(constraint));
    }
}

std::vector<Constraint> ConstraintsOf(const TableInfo& table, Metadata metadata) {
    std::vector<Constraint> constraints;
    AddIndexes(constraints, table);
    AddDefaults(constraints, table);
    AddChecks(constraints, table);
    AddForeignKeys(constraints, table, std::move(metadata));
    std::sort(constraints.begin(), constraints.end(), [](const auto& a, const auto& b) {
        return engine::Collation::Compare(engine::ToUtf8(a.name), engine::ToUtf8(b.name)) < 0;
    });
    return constraints;
}

}  // namespace

void HelpConstraints(SystemCall& call, const TableInfo& table, const QString& name) {
    const std::vector<Constraint> constraints = ConstraintsOf(table, call.GetMetadata());
    if (constraints.empty()) {
        call.Say(15469, {name});
        return;
    }
    call.Begin({NVarChar("constraint_type", 146), NVarChar("constraint_name", 128),
                NVarChar("delete_action", 9), NVarChar("update_action", 13),
                VarChar("status_enabled", 8), VarChar("status_for_replication", 19),
                NVarChar("constraint_keys", engine::SqlType::Max)});
    const OwnedValue blank = Value(QStringLiteral(" "));
    for (const Constraint& constraint : constraints) {
        call.Row({Value(constraint.type), Value(constraint.name), Value(constraint.onDelete),
                  Value(constraint.onUpdate), Value(constraint.enabled),
                  Value(constraint.replicated), Value(constraint.keys)});
        if (constraint.references.isEmpty()) continue;
        call.Row({blank, blank, blank, blank, blank, blank, Value(constraint.references)});
    }
    call.End();
}

void HelpReferences(SystemCall& call, const TableInfo& table, const QString& name) {
    if (table.references.empty()) {
        call.Say(15470, {name});
        return;
    }
    call.Begin({NVarChar("Table is referenced by foreign key", 516)});
    Metadata metadata = call.GetMetadata();
    for (const ForeignKeyInfo& key : table.references) {
        const std::optional<engine::ObjectInfo> object = metadata.Find(key.tableId);
        if (!object) continue;
        call.Row(
            {Value(QStringLiteral("%1.%2.%3: %4")
                       .arg(metadata.Database().name, object->schema, object->name, key.name))});
    }
    call.End();
}

}  // namespace quarv::localdb::catalog
