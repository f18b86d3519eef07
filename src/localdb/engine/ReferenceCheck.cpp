#include "localdb/engine/ReferenceCheck.h"

#include "localdb/engine/ForeignKeyCheck.h"
#include "localdb/engine/ParseCache.h"
#include "localdb/engine/RowChecker.h"
#include "localdb/engine/RowChecks.h"
#include "localdb/engine/RowWriter.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/StoredForm.h"
#include "localdb/engine/TableStorage.h"
#include "localdb/tsql/BatchParser.h"

namespace quarv::localdb::engine {

namespace {

using Action = ForeignKeyInfo::Action;

bool SameValue(const SqlValue& a, const SqlValue& b) {
    return a.kind == b.kind && a.integer == b.integer && a.real == b.real && a.wide == b.wide &&
           a.text == b.text;
}

std::string Joined(const std::vector<std::string>& parts, const char* between) {
    std::string text;
    for (const std::string& part : parts) text += (text.empty() ? "" : between) + part;
    return text;
}

}  // namespace

ReferenceCheck::ReferenceCheck(Frame& frame, Metadata& metadata, const TableInfo& table,
                               const ForeignKeyInfo& key, const QString& statement, int depth)
    : frame_(frame),
      store_(frame.Session().store),
      metadata_(metadata),
      table_(table),
      key_(key),
      statement_(statement),
      depth_(depth) {
    if (depth > MaxDepth) throw SqlError(217, {QString::number(MaxDepth)});
    for (const ForeignKeyInfo::Column& column : key.columns) {
        places_.push_back(table.PlaceOf(column.referencedId));
    }
}

ReferenceCheck::~ReferenceCheck() = default;

ReferenceCheck::Row ReferenceCheck::KeyOf(const Row& row) const {
    Row key;
    for (const size_t place : places_) {
        if (row[place].View().IsNull()) return {};
        key.push_back(row[place]);
    }
    return key;
}

void ReferenceCheck::Removed(const Row& before) {
    Row key = KeyOf(before);
    if (key.empty() || !HasChildren(key)) return;
    if (key_.onDelete == Action::NoAction && !key_.IsWithinTable()) Raise();
    events_.push_back({std::move(key), {}});
}

void ReferenceCheck::Changed(const Row& before, const Row& after) {
    bool same = true;
    for (const size_t place : places_) {
        same = same && SameValue(before[place].View(), after[place].View());
    }
    if (same) return;
    Row key = KeyOf(before);
    if (key.empty() || !HasChildren(key)) return;
    Row replacement;
    for (const size_t place : places_) replacement.push_back(after[place]);
    events_.push_back({std::move(key), std::move(replacement)});
}

// All who refer to an old key are found before the first of them changes: a key that moves on may
// be another's old one.
void ReferenceCheck::Finish() {
    std::vector<Child> removed, changed;
    for (size_t i = 0; i < events_.size(); ++i) {
        const bool gone = events_[i].replacement.empty();
        const Action action = gone ? key_.onDelete : key_.onUpdate;
        if (action == Action::NoAction) {
            if (HasChildren(events_[i].key) && !IsThere(events_[i].key)) Raise();
            continue;
        }
        for (Child& child : FindChildren(i)) (gone ? removed : changed).push_back(std::move(child));
    }
    if (!removed.empty()) Act(key_.onDelete, removed);
    if (!changed.empty()) Act(key_.onUpdate, changed);
    events_.clear();
}

void ReferenceCheck::Load() {
    if (child_.object.id != 0) return;
    const std::optional<ObjectInfo> object = metadata_.Find(key_.tableId);
    if (!object) throw SqlError(945, {metadata_.Database().name});
    child_ = metadata_.LoadTable(*object);
}

void ReferenceCheck::BindKey(SqliteStatement& statement, const Row& key) const {
    for (size_t i = 0; i < key.size(); ++i) {
        statement.Bind(static_cast<int>(i) + 1, key[i].View(), table_.columns[places_[i]].type);
    }
}

bool ReferenceCheck::HasChildren(const Row& key) {
    if (!findChild_.Handle()) {
        std::vector<int> columns;
        for (const ForeignKeyInfo::Column& column : key_.columns) {
            columns.push_back(column.columnId);
        }
        findChild_ =
            store_.Prepare("SELECT 1 FROM " + metadata_.Prefix() + 't' +
                           std::to_string(key_.tableId) + " WHERE " + KeyCondition(columns));
    }
    BindKey(findChild_, key);
    const bool found = findChild_.Step();
    findChild_.Reset();
    return found;
}

bool ReferenceCheck::IsThere(const Row& key) {
    if (!find_.Handle()) {
        std::vector<int> columns;
        for (const ForeignKeyInfo::Column& column : key_.columns) {
            columns.push_back(column.referencedId);
        }
        find_ = store_.Prepare("SELECT 1 FROM " + metadata_.Prefix() + table_.StorageName() +
                               " WHERE " + KeyCondition(columns));
    }
    BindKey(find_, key);
    const bool found = find_.Step();
    find_.Reset();
    return found;
}

std::vector<ReferenceCheck::Child> ReferenceCheck::FindChildren(size_t event) {
    Load();
    const std::vector<std::string> identity = TableStorage::RowIdentity(child_);
    const std::vector<SqlType> identityTypes = TableStorage::RowIdentityTypes(child_);
    std::vector<std::string> columns = identity;
    for (const ColumnInfo& column : child_.columns) {
        columns.push_back(column.stored ? column.StorageName() : "NULL");
    }
    std::vector<int> keyColumns;
    for (const ForeignKeyInfo::Column& column : key_.columns) keyColumns.push_back(column.columnId);
    SqliteStatement rows =
        store_.Prepare("SELECT " + Joined(columns, ", ") + " FROM " + metadata_.Prefix() +
                       child_.StorageName() + " WHERE " + KeyCondition(keyColumns));
    BindKey(rows, events_[event].key);
    std::vector<Child> children;
    while (rows.Step()) {
        Child child;
        child.event = event;
        int place = 0;
        for (const SqlType& type : identityTypes) {
            child.identity.emplace_back(ReadColumn(rows.Handle(), place++, type));
        }
        for (const ColumnInfo& column : child_.columns) {
            child.row.emplace_back(ReadColumn(rows.Handle(), place++, column.type));
        }
        children.push_back(std::move(child));
    }
    return children;
}

void ReferenceCheck::Act(Action action, std::vector<Child>& children) {
    const bool gone = events_[children.front().event].replacement.empty();
    if (gone && action == Action::Cascade) {
        Delete(children);
    } else {
        Change(action, children);
    }
}

void ReferenceCheck::Delete(const std::vector<Child>& children) {
    RowChecks checks(frame_, metadata_, child_, QStringLiteral("DELETE"), RowChecks::Change::Delete,
                     depth_ + 1);
    RowWriter writer(store_, metadata_, child_);
    for (const Child& child : children) {
        writer.Delete(child.identity);
        checks.Deleted(child.row);
    }
    checks.Finish();
}

void ReferenceCheck::CheckNulls(const Row& row) const {
    for (size_t i = 0; i < child_.columns.size(); ++i) {
        const ColumnInfo& column = child_.columns[i];
        if (column.nullable || column.IsComputed() || !row[i].View().IsNull()) continue;
        throw SqlError(515, {column.name,
                             metadata_.Database().name + u'.' + child_.object.schema + u'.' +
                                 child_.object.name,
                             QStringLiteral("UPDATE")});
    }
}

void ReferenceCheck::Change(Action action, std::vector<Child>& children) {
    RowChecks checks(frame_, metadata_, child_, statement_, RowChecks::Change::Update, depth_ + 1);
    RowWriter writer(store_, metadata_, child_);
    Row defaults(key_.columns.size());
    for (size_t i = 0; i < defaults.size() && action == Action::SetDefault; ++i) {
        const ColumnInfo& column = *child_.FindColumn(key_.columns[i].columnId);
        if (column.defaultText.isEmpty()) continue;
        defaults[i] =
            frame_.Compute(*frame_.Session().parsed->Value(column.defaultText), column.type);
    }
    for (Child& child : children) {
        Row after = child.row;
        for (size_t i = 0; i < key_.columns.size(); ++i) {
            OwnedValue& value = after[child_.PlaceOf(key_.columns[i].columnId)];
            value = action == Action::Cascade ? events_[child.event].replacement[i] : defaults[i];
        }
        RowChecker::Stamp(metadata_, child_, after);
        checks.Complete(after);
        CheckNulls(after);
        checks.Check(after);
        writer.Update(child.identity, after);
        checks.Updated(child.row, after);
    }
    checks.Finish();
}

void ReferenceCheck::Raise() {
    Load();
    QString column;
    if (key_.columns.size() == 1) {
        column = QStringLiteral(", column '%1'")
                     .arg(child_.columns[child_.PlaceOf(key_.columns[0].columnId)].name);
    }
    throw SqlError(547, {statement_,
                         key_.IsWithinTable() ? QStringLiteral("SAME TABLE REFERENCE")
                                              : QStringLiteral("REFERENCE"),
                         key_.name, metadata_.Database().name,
                         child_.object.schema + u'.' + child_.object.name, column});
}

}  // namespace quarv::localdb::engine
