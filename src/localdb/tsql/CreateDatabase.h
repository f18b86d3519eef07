// CreateDatabase: CREATE DATABASE name. File and size options are refused.
#pragma once

#include <QString>

#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

class TokenReader;

struct CreateDatabase : Statement {
    CreateDatabase() : Statement(StatementType::CreateDatabase) {}
    QString name;
};

StatementPtr ParseCreateDatabase(TokenReader& reader);

}  // namespace quarv::localdb::tsql
