// ModuleHead: how a view's or a procedure's statement begins: CREATE, ALTER or CREATE OR ALTER. The
// catalogue keeps every module's source as a CREATE statement.
#pragma once

#include <QString>

namespace quarv::localdb::tsql {

class TokenReader;

enum class ModuleVerb : uint8_t { Create, Alter, CreateOrAlter };

struct ModuleHead {
    ModuleVerb verb = ModuleVerb::Create;
    // Where the word ALTER stands, or OR and ALTER do; UTF-16 units into the batch.
    qsizetype begin = 0, end = 0;

    // The batch as the catalogue keeps it: ALTER is CREATE there, and OR ALTER is not there but for
    // the blanks around it.
    QString Source(const QString& batch) const;
};

// Takes the words up to VIEW or PROCEDURE, that one included. Raises SyntaxError 111 where they are
// not the first of the batch; `statement` is how that names the statement.
ModuleHead ParseModuleHead(TokenReader& reader, const QString& statement);

}  // namespace quarv::localdb::tsql
