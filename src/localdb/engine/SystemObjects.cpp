#include "localdb/engine/SystemObjects.h"

#include "localdb/engine/DatabaseList.h"
#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

namespace {

std::string Quoted(const QString& name) {
    std::string literal = ToUtf8(name);
    for (size_t at = 0; (at = literal.find('\'', at)) != std::string::npos; at += 2) {
        literal.insert(at, "'");
    }
    return '\'' + literal + '\'';
}

std::string Rows(const DatabaseList& databases) {
    std::string rows;
    std::vector<DatabaseEntry> all = databases.All();
    all.push_back(DatabaseList::Temporary());
    for (const DatabaseEntry& entry : all) {
        rows += rows.empty() ? "(VALUES (" : ", (";
        rows += std::to_string(entry.id) + ", " + Quoted(entry.name) + ", " +
                std::to_string(entry.created) + ')';
    }
    return rows + ')';
}

}  // namespace

std::string FillInDatabase(const std::string& sql, const std::string& prefix,
                           const DatabaseEntry& database, const DatabaseList& databases) {
    constexpr std::string_view Name = ":db", Databases = ":databases";
    std::string text;
    for (size_t i = 0; i < sql.size(); ++i) {
        if (sql[i] == '$') {
            text += prefix;
        } else if (sql.compare(i, Databases.size(), Databases) == 0) {
            text += Rows(databases);
            i += Databases.size() - 1;
        } else if (sql.compare(i, Name.size(), Name) == 0) {
            text += Quoted(database.name);
            i += Name.size() - 1;
        } else {
            text += sql[i];
        }
    }
    return text;
}

}  // namespace quarv::localdb::engine
