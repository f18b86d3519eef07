// Use: USE database.
#pragma once

#include <QString>

#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

class TokenReader;

struct Use : Statement {
    Use() : Statement(StatementType::Use) {}
    QString database;
};

StatementPtr ParseUse(TokenReader& reader);

}  // namespace quarv::localdb::tsql
