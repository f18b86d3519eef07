#include "localdb/engine/TemporaryTables.h"

#include <algorithm>

#include "localdb/engine/RowSpool.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/StoredForm.h"
#include "localdb/engine/TableStorage.h"
#include "localdb/engine/Transactions.h"
#include "localdb/engine/TypeTable.h"

namespace quarv::localdb::engine {

namespace {

constexpr qsizetype SharedLength = 116;  // of a stored name; twelve digits follow
constexpr qsizetype NumberLength = 12;

// What tells a heap's rows apart is kept too, so that they keep their order.
std::vector<SqlType> SpoolTypes(const TableInfo& table) {
    std::vector<SqlType> types;
    for (const ColumnInfo& column : table.columns) types.push_back(column.type);
    if (!TableStorage::StorageKey(table)) types.push_back(MakeType(TypeKind::BigInt));
    return types;
}

}  // namespace

TemporaryTables::TemporaryTables(Store& store, Transactions& transactions)
    : store_(store), transactions_(transactions) {}

TemporaryTables::~TemporaryTables() = default;

bool TemporaryTables::IsTemporary(const QString& name, int line) {
    if (name.startsWith(u"##")) {
        throw SqlError(40517, {QStringLiteral("global temporary table")}, line);
    }
    return name.startsWith(u'#');
}

QString TemporaryTables::SharedName(const QString& name) {
    return name.leftJustified(SharedLength, u'_', true);
}

QString TemporaryTables::StoredName(const QString& name, int64_t objectId) {
    return SharedName(name) +
           QString::number(objectId, 16).toUpper().rightJustified(NumberLength, u'0');
}

QString TemporaryTables::WrittenName(const QString& stored) {
    if (!stored.startsWith(u'#') || stored.size() != SharedLength + NumberLength) return stored;
    qsizetype length = SharedLength;
    while (length > 1 && stored[length - 1] == u'_') --length;
    return stored.left(length);
}

void TemporaryTables::Name(ObjectInfo& table, Metadata& metadata, int level) {
    if (!IsTemporary(table.name)) return;
    const std::optional<ObjectInfo> same = metadata.Find(table.schema, table.name);
    const bool taken = same && std::any_of(made_.begin(), made_.end(), [&](const Entry& entry) {
                           return entry.objectId == same->id && entry.level == level;
                       });
    if (taken) throw SqlError(2714, {table.name});
    table.name = StoredName(table.name, table.id);
    made_.push_back({table.id, level});
}

void TemporaryTables::DropTable(int64_t objectId) {
    Metadata metadata(store_, DatabaseList::Temporary());
    Transactions::Writing writing(transactions_, metadata.Prefix());
    const std::optional<ObjectInfo> object = metadata.Find(objectId);
    if (!object) return;
    TableStorage(store_, metadata).Drop(metadata.LoadTable(*object));
    metadata.RemoveObject(objectId);
    writing.Commit();
}

void TemporaryTables::EndLevel(int level) {
    std::vector<Entry> ended;
    const auto rest = std::stable_partition(
        made_.begin(), made_.end(), [level](const Entry& entry) { return entry.level < level; });
    ended.assign(rest, made_.end());
    made_.erase(rest, made_.end());
    for (const Entry& entry : ended) {
        try {
            DropTable(entry.objectId);
        } catch (...) {
            // It stays unreachable until the session ends.
        }
    }
}

void TemporaryTables::Clear() {
    made_.clear();
    variables_.clear();
    store_.DropTemporary();
}

void TemporaryTables::MakeVariable(const std::shared_ptr<TableInfo>& table) {
    const Metadata metadata(store_, DatabaseList::Temporary());
    Transactions::Writing writing(transactions_, metadata.Prefix());
    TableStorage(store_, metadata).Create(*table);
    writing.Commit();
    variables_.push_back(table);
}

void TemporaryTables::DropVariable(const TableInfo& table) {
    variables_.remove_if([&table](const auto& entry) { return entry.get() == &table; });
    try {
        const Metadata metadata(store_, DatabaseList::Temporary());
        TableStorage(store_, metadata).Drop(table);
    } catch (...) {
        // Nobody knows its name any more.
    }
}

std::unique_ptr<RowSpool> TemporaryTables::Keep(const TableInfo& table) {
    auto spool = std::make_unique<RowSpool>(SpoolTypes(table));
    const Metadata metadata(store_, DatabaseList::Temporary());
    const std::vector<SqlType>& types = spool->Types();
    std::string items;
    for (const ColumnInfo& column : table.columns) {
        items += (items.empty() ? "" : ", ") + (column.stored ? column.StorageName() : "NULL");
    }
    if (types.size() > table.columns.size()) items += ", rowid";
    SqliteStatement rows =
        store_.Prepare("SELECT " + items + " FROM " + metadata.Prefix() + table.StorageName());
    std::vector<OwnedValue> row(types.size());
    while (rows.Step()) {
        for (size_t i = 0; i < types.size(); ++i) {
            row[i] = ReadColumn(rows.Handle(), static_cast<int>(i), types[i]);
        }
        spool->Append(row);
    }
    return spool;
}

void TemporaryTables::Restore(const TableInfo& table, RowSpool& rows) {
    const Metadata metadata(store_, DatabaseList::Temporary());
    TableStorage storage(store_, metadata);
    const std::vector<SqlType>& types = rows.Types();
    store_.Run("DROP TABLE IF EXISTS " + metadata.Prefix() + table.StorageName());
    TableInfo again = table;
    storage.Create(again);
    SqliteStatement insert =
        store_.Prepare(storage.InsertSql(table, types.size() > table.columns.size()));
    std::vector<OwnedValue> row;
    while (rows.Next(row)) {
        for (size_t i = 0; i < types.size(); ++i) {
            if (i < table.columns.size() && !table.columns[i].stored) continue;
            insert.Bind(static_cast<int>(i) + 1, row[i].View(), types[i]);
        }
        insert.Run();
    }
}

void TemporaryTables::Undo(const std::function<void()>& undo) {
    std::vector<std::unique_ptr<RowSpool>> kept;
    for (const auto& table : variables_) kept.push_back(Keep(*table));
    undo();
    size_t next = 0;
    for (const auto& table : variables_) Restore(*table, *kept[next++]);
}

}  // namespace quarv::localdb::engine
