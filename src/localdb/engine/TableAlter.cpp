#include "localdb/engine/TableAlter.h"

#include "localdb/engine/RowChecker.h"
#include "localdb/engine/TemporaryTables.h"

namespace quarv::localdb::engine {

TableAlter::TableAlter(const tsql::AlterTable& node, Frame& frame)
    : node_(node),
      frame_(frame),
      context_(frame.NewContext()),
      metadata_(context_.MetadataFor(node.name)) {}

void TableAlter::Run() {
    Transactions::Writing writing(frame_.Session().transactions, metadata_.Prefix());
    const tsql::ObjectName& name = node_.name;
    const std::optional<ObjectInfo> object = metadata_.Find(name.schema, name.name);
    if (!object) throw SqlError(4902, {name.ToText()}, name.line);
    if (object->type != u"U") throw SqlError(4909, {name.ToText()}, name.line);
    table_ = metadata_.LoadTable(*object);
    metadata_.LoadConstraints(table_);
    Change();
    metadata_.Touch(table_.object.id);
    writing.Commit();
}

QString TableAlter::TableName() const {
    return TemporaryTables::WrittenName(table_.object.name);
}

const ColumnInfo& TableAlter::FindColumn(const QString& name, const QString& verb, int line) const {
    const ColumnInfo* column = table_.FindColumn(name);
    if (!column) {
        throw SqlError(4924, {QStringLiteral("ALTER TABLE ") + verb, name, TableName()}, line);
    }
    return *column;
}

bool TableAlter::HasRows() {
    SqliteStatement row = GetStore().Prepare("SELECT 1 FROM " + metadata_.Prefix() +
                                             table_.StorageName() + " LIMIT 1");
    return row.Step();
}

int64_t TableAlter::CountRows() {
    SqliteStatement row =
        GetStore().Prepare("SELECT count(*) FROM " + metadata_.Prefix() + table_.StorageName());
    return row.Step() ? row.Integer(0) : 0;
}

void TableAlter::RequireValues(const ColumnInfo& column) {
    if (column.nullable) return;
    SqliteStatement row =
        GetStore().Prepare("SELECT 1 FROM " + metadata_.Prefix() + table_.StorageName() +
                           " WHERE " + column.StorageName() + " IS NULL LIMIT 1");
    if (!row.Step()) return;
    OwnedValue null;
    RowChecker(metadata_, table_, QStringLiteral("UPDATE")).Check(column, null);
}

}  // namespace quarv::localdb::engine
