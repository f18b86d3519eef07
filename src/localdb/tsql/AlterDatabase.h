// AlterDatabase: ALTER DATABASE ... MODIFY NAME, and SET with the options that are what every
// database here has already; any other, and every other clause, is refused.
#pragma once

#include <QString>

#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

class TokenReader;

struct AlterDatabase : Statement {
    AlterDatabase() : Statement(StatementType::AlterDatabase) {}
    QString name;     // empty: the current one
    QString newName;  // of MODIFY NAME, else empty
};

StatementPtr ParseAlterDatabase(TokenReader& reader);

}  // namespace quarv::localdb::tsql
