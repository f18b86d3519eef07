// ParseAlter: the statements that begin with ALTER, each kind in a file of its own.
#pragma once

#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

class TokenReader;

StatementPtr ParseAlter(TokenReader& reader);
// CREATE OR ALTER.
StatementPtr ParseCreateOrAlter(TokenReader& reader);

}  // namespace quarv::localdb::tsql
