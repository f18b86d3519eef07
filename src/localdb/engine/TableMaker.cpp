#include "localdb/engine/TableMaker.h"

#include "localdb/engine/TableStorage.h"

namespace quarv::localdb::engine {

int64_t TableMaker::AddConstraint(const TableInfo& table, const QString& name, const QString& type,
                                  const QString& definition, bool systemNamed) {
    ObjectInfo object;
    object.schemaId = table.object.schemaId;
    object.schema = table.object.schema;
    object.name = name;
    object.type = type;
    object.definition = definition;
    object.systemNamed = systemNamed;
    return metadata_.AddObject(object, table.object.id);
}

void TableMaker::AddDefault(const TableInfo& table, ColumnInfo& column) {
    if (column.defaultText.isEmpty() || column.defaultId != 0) return;
    column.defaultId = AddConstraint(table, column.defaultName, QStringLiteral("D"),
                                     column.defaultText, column.defaultSystemNamed);
}

void TableMaker::AddIndex(const TableInfo& table, IndexInfo& index) {
    if (index.constraintId == IndexInfo::NewConstraint) {
        const QString type = index.primary ? QStringLiteral("PK") : QStringLiteral("UQ");
        index.constraintId = AddConstraint(table, index.name, type, QString(), index.systemNamed);
    }
    metadata_.AddIndex(table.object.id, index);
}

void TableMaker::AddCheck(const TableInfo& table, CheckInfo& check) {
    check.id = AddConstraint(table, check.name, QStringLiteral("C"), check.text, check.systemNamed);
    metadata_.AddCheck(table.object.id, check);
}

void TableMaker::AddForeignKey(const TableInfo& table, ForeignKeyInfo& key) {
    key.id = AddConstraint(table, key.name, QStringLiteral("F"), QString(), key.systemNamed);
    metadata_.AddForeignKey(key);
}

void TableMaker::Create(TableInfo& table) {
    metadata_.AddObject(table.object);
    for (ColumnInfo& column : table.columns) {
        AddDefault(table, column);
        metadata_.AddColumn(table.object.id, column);
    }
    if (table.identity) metadata_.AddIdentity(table.object.id, *table.identity);
    // The storage tells which index it keeps the rows by.
    TableStorage(store_, metadata_).Create(table);
    for (IndexInfo& index : table.indexes) AddIndex(table, index);
    for (CheckInfo& check : table.checks) AddCheck(table, check);
    for (ForeignKeyInfo& key : table.foreignKeys) AddForeignKey(table, key);
}

}  // namespace quarv::localdb::engine
