#include "localdb/tsql/SyntaxError.h"

namespace quarv::localdb::tsql {

SyntaxError::SyntaxError(int number, QStringList inserts, int line, int column)
    : Error(
          number,
          QStringLiteral("line %1, column %2: %3").arg(line).arg(column).arg(inserts.join(u", "))),
      inserts_(std::move(inserts)),
      line_(line),
      column_(column) {}

}  // namespace quarv::localdb::tsql
