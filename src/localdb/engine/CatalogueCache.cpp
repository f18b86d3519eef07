#include "localdb/engine/CatalogueCache.h"

#include <QRandomGenerator>

#include "localdb/engine/Store.h"

namespace quarv::localdb::engine {

namespace {

// With the string's own head and the maps' nodes, roughly.
constexpr size_t NodeBytes = 100;

size_t BytesOf(const QString& text) {
    return static_cast<size_t>(text.size()) * sizeof(QChar);
}

size_t BytesOf(const ObjectInfo& object) {
    return sizeof object + NodeBytes + BytesOf(object.name) + BytesOf(object.definition);
}

size_t BytesOf(const TableInfo& table) {
    size_t bytes = sizeof table + BytesOf(table.object);
    for (const ColumnInfo& column : table.columns) {
        bytes += sizeof column + NodeBytes + BytesOf(column.name) + BytesOf(column.defaultText) +
                 BytesOf(column.computedText);
    }
    for (const IndexInfo& index : table.indexes) {
        bytes += sizeof index + NodeBytes + BytesOf(index.name) + BytesOf(index.filter) +
                 index.keys.size() * sizeof(IndexInfo::Key);
    }
    for (const CheckInfo& check : table.checks) {
        bytes += sizeof check + NodeBytes + BytesOf(check.text);
    }
    const size_t keys = table.foreignKeys.size() + table.references.size();
    return bytes + keys * (sizeof(ForeignKeyInfo) + NodeBytes);
}

}  // namespace

bool CatalogueCache::IsChecked(int databaseId) const {
    const auto found = databases_.find(databaseId);
    // Outside every statement the next look may see another state already.
    return depth_ > 0 && found != databases_.end() && found->second.checked;
}

void CatalogueCache::Check(int databaseId, int64_t version) {
    Database& database = databases_[databaseId];
    if (database.version != version) Forget(database);
    database.version = version;
    database.checked = true;
}

void CatalogueCache::Doubt(int databaseId) {
    databases_[databaseId].checked = false;
}

void CatalogueCache::DoubtAll() {
    for (auto& [id, database] : databases_) database.checked = false;
}

CatalogueCache::Object CatalogueCache::FindObject(int databaseId, const QString& key) const {
    const Database& database = databases_.at(databaseId);
    const auto found = database.objects.find(key);
    return found != database.objects.end() ? found->second : nullptr;
}

CatalogueCache::Table CatalogueCache::FindTable(int databaseId, int64_t objectId) const {
    const Database& database = databases_.at(databaseId);
    const auto found = database.tables.find(objectId);
    return found != database.tables.end() ? found->second : nullptr;
}

void CatalogueCache::Keep(int databaseId, const QString& key, Object object) {
    const size_t bytes = BytesOf(*object) + BytesOf(key);
    MakeRoom(databaseId, bytes).objects.insert_or_assign(key, std::move(object));
}

void CatalogueCache::Keep(int databaseId, Table table) {
    const size_t bytes = BytesOf(*table);
    const int64_t id = table->object.id;
    MakeRoom(databaseId, bytes).tables.insert_or_assign(id, std::move(table));
}

CatalogueCache::Database& CatalogueCache::MakeRoom(int databaseId, size_t bytes) {
    if (bytes_ + bytes > MostBytes) {
        for (auto& [id, database] : databases_) Forget(database);
    }
    Database& database = databases_[databaseId];
    database.bytes += bytes;
    bytes_ += bytes;
    return database;
}

void CatalogueCache::Forget(Database& database) {
    bytes_ -= database.bytes;
    database.bytes = 0;
    database.objects.clear();
    database.tables.clear();
}

CatalogueCache::Statement::Statement(Store& store) : store_(store), cache_(store.Catalogue()) {
    if (cache_.depth_++ == 0) DoubtOutsideTransaction();
}

CatalogueCache::Statement::~Statement() {
    if (--cache_.depth_ == 0) DoubtOutsideTransaction();
}

void CatalogueCache::Statement::DoubtOutsideTransaction() {
    if (!store_.InTransaction()) cache_.DoubtAll();
}

// Counting would give a number again that was rolled back.
int64_t CatalogueCache::NewVersion() {
    return static_cast<int64_t>(QRandomGenerator::system()->generate64() >> 1 | 1);
}

}  // namespace quarv::localdb::engine
