#include "localdb/tsql/Expression.h"

#include "localdb/tsql/Query.h"

namespace quarv::localdb::tsql {

Expression::~Expression() = default;
TableSource::~TableSource() = default;

Subquery::Subquery() : Expression(ExpressionKind::Subquery) {}
Subquery::~Subquery() = default;

In::In() : Expression(ExpressionKind::In) {}
In::~In() = default;

Exists::Exists() : Expression(ExpressionKind::Exists) {}
Exists::~Exists() = default;

}  // namespace quarv::localdb::tsql
