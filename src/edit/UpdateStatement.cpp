#include "edit/UpdateStatement.h"

#include "edit/ADOUtils.h"

namespace quarv {

QString UpdateStatement(const QString& table, const QString& column, const Value& value,
                        const QString& keyClause) {
    return QStringLiteral("update [") + table + QStringLiteral("] set [") + column +
           QStringLiteral("]=") + SQLValue(value, MostLiteralUnits) + QStringLiteral(" where ") +
           keyClause;
}

}  // namespace quarv
