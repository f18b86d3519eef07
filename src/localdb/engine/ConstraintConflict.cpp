#include "localdb/engine/ConstraintConflict.h"

namespace quarv::localdb::engine {

namespace {

QString ColumnPart(const ColumnInfo* column) {
    return column ? QStringLiteral(", column '%1'").arg(column->name) : QString();
}

}  // namespace

SqlError CheckConflict(const QString& statement, const CheckInfo& check, const TableInfo& table,
                       const Metadata& metadata) {
    return SqlError(547, {statement, QStringLiteral("CHECK"), check.name, metadata.Database().name,
                          table.object.schema + u'.' + table.object.name,
                          ColumnPart(table.FindColumn(check.columnId))});
}

SqlError ForeignKeyConflict(const QString& statement, const ForeignKeyInfo& key,
                            Metadata& metadata) {
    const std::optional<ObjectInfo> object = metadata.Find(key.referencedTable);
    if (!object) return SqlError(945, {metadata.Database().name});
    const TableInfo referenced = metadata.LoadTable(*object);
    const ColumnInfo* column =
        key.columns.size() == 1 ? referenced.FindColumn(key.columns.front().referencedId) : nullptr;
    return SqlError(547, {statement,
                          key.IsWithinTable() ? QStringLiteral("FOREIGN KEY SAME TABLE")
                                              : QStringLiteral("FOREIGN KEY"),
                          key.name, metadata.Database().name, object->schema + u'.' + object->name,
                          ColumnPart(column)});
}

}  // namespace quarv::localdb::engine
