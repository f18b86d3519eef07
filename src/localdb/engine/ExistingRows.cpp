#include "localdb/engine/ExistingRows.h"

#include "localdb/engine/ConstraintConflict.h"
#include "localdb/engine/ParseCache.h"
#include "localdb/engine/QueryBinder.h"
#include "localdb/engine/SqlWriter.h"
#include "localdb/engine/StatementRunner.h"
#include "localdb/engine/TableAlter.h"
#include "localdb/tsql/ObjectName.h"
#include "localdb/tsql/Select.h"

namespace quarv::localdb::engine {

namespace {

const QString Statement = QStringLiteral("ALTER TABLE");

}  // namespace

// Asked in T-SQL, so that computed columns stand for what they are computed from.
void ExistingRows::Check(const CheckInfo& check) {
    const ObjectInfo& object = table_.object;
    const QString text = QStringLiteral("SELECT TOP (1) 1 FROM ") + tsql::Bracketed(object.schema) +
                         u'.' + tsql::Bracketed(object.name) + QStringLiteral(" WHERE NOT ") +
                         check.text;
    SessionState& session = frame_.Session();
    const ParseCache::Statements statements = ParseBatchText(text, session);
    const VariableTable noVariables;
    BindContext context(session.store, session.databases, metadata_.Database(), session.objects,
                        noVariables, *session.parsed);
    QueryBinder binder(context, nullptr);
    const std::unique_ptr<BoundQuery> query =
        binder.Bind(*static_cast<const tsql::Select&>(*statements->front()).query);
    SqlWriter writer(frame_);
    query->Write(writer);
    if (writer.Prepare(session.store).Step()) {
        throw CheckConflict(Statement, check, table_, metadata_);
    }
}

// Both sides have one type and with it one collation in the storage.
void ExistingRows::Check(const ForeignKeyInfo& key) {
    std::string given, found;
    for (const ForeignKeyInfo::Column& pair : key.columns) {
        const std::string own = "a.c" + std::to_string(pair.columnId);
        given += own + " IS NOT NULL AND ";
        found +=
            (found.empty() ? "b.c" : " AND b.c") + std::to_string(pair.referencedId) + " = " + own;
    }
    const std::string& prefix = metadata_.Prefix();
    SqliteStatement row = frame_.Session().store.Prepare(
        "SELECT 1 FROM " + prefix + table_.StorageName() + " a WHERE " + given +
        "NOT EXISTS (SELECT 1 FROM " + prefix + 't' + std::to_string(key.referencedTable) +
        " b WHERE " + found + ") LIMIT 1");
    if (row.Step()) throw ForeignKeyConflict(Statement, key, metadata_);
}

}  // namespace quarv::localdb::engine
