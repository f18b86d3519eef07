// sp_helpdb and sp_spaceused: how large the databases and their tables are.
#include <QFileInfo>
#include <algorithm>

#include "localdb/catalog/CatalogColumns.h"
#include "localdb/catalog/ObjectLookup.h"
#include "localdb/catalog/SystemCatalog.h"
#include "localdb/engine/Collation.h"
#include "localdb/engine/Moment.h"
#include "localdb/engine/SqlError.h"
#include "localdb/engine/SystemCall.h"

namespace quarv::localdb::catalog {

namespace {

using engine::DatabaseEntry;
using engine::SystemCall;

constexpr int64_t Kilobyte = 1024;
constexpr double Megabyte = 1024.0 * 1024.0;
constexpr int MaxObjectName = 776;

QString Kilobytes(int64_t bytes) {
    return QString::number((bytes + Kilobyte - 1) / Kilobyte) + QStringLiteral(" KB");
}

QString Megabytes(int64_t bytes) {
    return QString::number(static_cast<double>(bytes) / Megabyte, 'f', 2) + QStringLiteral(" MB");
}

// "Nov  1 2026".
QString DayOf(int64_t created) {
    const engine::Moment moment = engine::Moment::Load(engine::TypeKind::DateTime, created);
    const std::string text = moment.ToText(engine::TypeKind::DateTime, 0).value_or(std::string());
    return QString::fromStdString(text).left(11);
}

int64_t SizeOf(const DatabaseEntry& entry) {
    return entry.path.isEmpty() ? 0 : QFileInfo(entry.path).size();
}

QString StatusOf() {
    return QStringLiteral(
               "Status=ONLINE, Updateability=READ_WRITE, UserAccess=MULTI_USER, Recovery=SIMPLE, "
               "Version=957, Collation=%1, SQLSortOrder=52, IsAutoCreateStatistics, "
               "IsAutoUpdateStatistics")
        .arg(QString::fromLatin1(engine::Collation::Name));
}

void DescribeFile(SystemCall& call, const DatabaseEntry& entry) {
    call.Begin({NVarChar("name", 128), SmallInt("fileid"), NVarChar("filename", 260),
                NVarChar("filegroup", 128), NVarChar("size", 18), NVarChar("maxsize", 18),
                NVarChar("growth", 18), VarChar("usage", 9)});
    call.Row({Value(entry.name), Value(int64_t{1}), Value(entry.path),
              Value(QStringLiteral("PRIMARY")), Value(Kilobytes(SizeOf(entry))),
              Value(QStringLiteral("Unlimited")), Value(QStringLiteral("4 KB")),
              Value(QStringLiteral("data only"))});
    call.End();
}

int RunHelpDb(SystemCall& call) {
    const QString name = call.Text(0);
    std::vector<DatabaseEntry> asked = call.Databases().All();
    asked.push_back(engine::DatabaseList::Temporary());
    if (!name.isEmpty()) {
        std::erase_if(asked,
                      [&name](const auto& entry) { return !engine::SameName(entry.name, name); });
        if (asked.empty()) throw engine::SqlError(15010, {name});
    }
    std::sort(asked.begin(), asked.end(), [](const auto& a, const auto& b) {
        return a.name.compare(b.name, Qt::CaseInsensitive) < 0;
    });
    call.Begin({Sysname("name"), NVarChar("db_size", 13), Sysname("owner"), SmallInt("dbid"),
                NVarChar("created", 11), NVarChar("status", 600), TinyInt("compatibility_level")});
    for (const DatabaseEntry& entry : asked) {
        call.Row({Value(entry.name), Value(Megabytes(SizeOf(entry)).rightJustified(13, u' ')),
                  Value(QStringLiteral("sa")), Value(int64_t{entry.id}),
                  Value(DayOf(entry.created)), Value(StatusOf()), Value(int64_t{160})});
    }
    call.End();
    if (!name.isEmpty() && !asked.front().path.isEmpty()) DescribeFile(call, asked.front());
    return 0;
}

// Bytes of the storage's trees whose names a condition gives.
int64_t BytesOf(SystemCall& call, const std::string& condition) {
    return call.Ask(call.Database(),
                    "SELECT coalesce(sum(pgsize), 0) FROM dbstat"
                    " WHERE schema = rtrim('$', '.') AND aggregate = 1 AND name " +
                        condition);
}

void DescribeTable(SystemCall& call, const engine::ObjectInfo& object) {
    const std::string table = 't' + std::to_string(object.id);
    const int64_t data = BytesOf(call, "= '" + table + '\'');
    const int64_t indexes = BytesOf(call,
                                    "IN (SELECT name FROM $sqlite_master WHERE type = 'index'"
                                    " AND tbl_name = '" +
                                        table + "')");
    const int64_t rows = call.Ask(call.Database(), "SELECT count(*) FROM $" + table);
    call.Begin({NVarChar("name", 128), Char("rows", 20), VarChar("reserved", 18),
                VarChar("data", 18), VarChar("index_size", 18), VarChar("unused", 18)});
    call.Row({Value(object.name), Value(QString::number(rows).leftJustified(20, u' ')),
              Value(Kilobytes(data + indexes)), Value(Kilobytes(data)), Value(Kilobytes(indexes)),
              Value(Kilobytes(0))});
    call.End();
}

void DescribeDatabase(SystemCall& call) {
    const DatabaseEntry& database = call.Database();
    const int64_t page = call.Ask(database, "PRAGMA $page_size");
    const int64_t size = call.Ask(database, "PRAGMA $page_count") * page;
    const int64_t unused = call.Ask(database, "PRAGMA $freelist_count") * page;
    call.Begin(
        {Sysname("database_name"), VarChar("database_size", 18), VarChar("unallocated space", 18)});
    call.Row({Value(database.name), Value(Megabytes(size)), Value(Megabytes(unused))});
    call.End();
    const int64_t indexes =
        BytesOf(call, "IN (SELECT name FROM $sqlite_master WHERE type = 'index')");
    call.Begin({VarChar("reserved", 18), VarChar("data", 18), VarChar("index_size", 18),
                VarChar("unused", 18)});
    call.Row({Value(Kilobytes(size - unused)), Value(Kilobytes(size - unused - indexes)),
              Value(Kilobytes(indexes)), Value(Kilobytes(0))});
    call.End();
}

int RunSpaceUsed(SystemCall& call) {
    const QString name = call.Text(0);
    if (name.isEmpty()) {
        DescribeDatabase(call);
        return 0;
    }
    const engine::ObjectInfo object = FindObject(call, name);
    if (object.type != u"U") throw engine::SqlError(15009, {name, call.Database().name});
    DescribeTable(call, object);
    return 0;
}

}  // namespace

std::vector<engine::SystemProcedure> StorageProcedures() {
    return {{QStringLiteral("sp_helpdb"), {Optional(Sysname("@dbname"))}, RunHelpDb},
            {QStringLiteral("sp_spaceused"),
             {Optional(NVarChar("@objname", MaxObjectName)), Optional(VarChar("@updateusage", 5))},
             RunSpaceUsed}};
}

}  // namespace quarv::localdb::catalog
