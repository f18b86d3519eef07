#include "localdb/catalog/HelpIndex.h"

#include <algorithm>

#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/ObjectLookup.h"
#include "localdb/engine/Collation.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::catalog {

namespace {

using engine::IndexInfo;

QString Description(const IndexInfo& index) {
    QString text = index.clustered ? QStringLiteral("clustered") : QStringLiteral("nonclustered");
    if (index.unique) text += QStringLiteral(", unique");
    if (index.primary) {
        text += QStringLiteral(", primary key");
    } else if (index.constraintId != 0) {
        text += QStringLiteral(", unique key");
    }
    return text + QStringLiteral(" located on PRIMARY");
}

bool NameBefore(const IndexInfo& a, const IndexInfo& b) {
    return engine::Collation::Compare(engine::ToUtf8(a.name), engine::ToUtf8(b.name)) < 0;
}

}  // namespace

void HelpIndex(engine::SystemCall& call, const engine::TableInfo& table, const QString& name) {
    if (table.indexes.empty()) {
        call.Say(15472, {name});
        return;
    }
    std::vector<IndexInfo> indexes = table.indexes;
    std::sort(indexes.begin(), indexes.end(), NameBefore);
    call.Begin(
        {Sysname("index_name"), VarChar("index_description", 210), NVarChar("index_keys", 2078)});
    for (const IndexInfo& index : indexes) {
        call.Row({Value(index.name), Value(Description(index)), Value(KeyText(table, index))});
    }
    call.End();
}

}  // namespace quarv::localdb::catalog
