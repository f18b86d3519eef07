#include "localdb/engine/SystemObjects.h"

#include "localdb/engine/Utf8.h"

namespace quarv::localdb::engine {

std::string FillInDatabase(const std::string& sql, const std::string& prefix, const QString& name) {
    std::string literal = ToUtf8(name);
    for (size_t at = 0; (at = literal.find('\'', at)) != std::string::npos; at += 2) {
        literal.insert(at, "'");
    }
    std::string text;
    for (size_t i = 0; i < sql.size(); ++i) {
        if (sql[i] == '$') {
            text += prefix;
        } else if (sql.compare(i, 3, ":db") == 0) {
            text += '\'' + literal + '\'';
            i += 2;
        } else {
            text += sql[i];
        }
    }
    return text;
}

}  // namespace quarv::localdb::engine
