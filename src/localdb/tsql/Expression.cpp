#include "localdb/tsql/Expression.h"

#include "localdb/tsql/Query.h"
#include "localdb/tsql/Window.h"

namespace quarv::localdb::tsql {

Expression::~Expression() = default;
TableSource::~TableSource() = default;

Subquery::Subquery() : Expression(ExpressionKind::Subquery) {}
Subquery::~Subquery() = default;

Function::Function() : Expression(ExpressionKind::Function) {}
Function::~Function() = default;

Quantified::Quantified() : Expression(ExpressionKind::Quantified) {}
Quantified::~Quantified() = default;

In::In() : Expression(ExpressionKind::In) {}
In::~In() = default;

Exists::Exists() : Expression(ExpressionKind::Exists) {}
Exists::~Exists() = default;

}  // namespace quarv::localdb::tsql
