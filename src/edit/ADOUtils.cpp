#include "edit/ADOUtils.h"

#include "base/RuntimeError.h"

namespace quarv {

QString SQLQuote(const QString& Text) {
    QString doubled = Text;
    doubled.replace(u'\'', QStringLiteral("''"));
    return u'\'' + doubled + u'\'';
}

QString SQLValue(const Value& Value, qint16 MaxLen) {
    if (Value.IsNull()) return QStringLiteral("NULL");
    // Deliberately not the bytes: the literal never stands for what is stored.
    if (Value.kind() == Value::Kind::Bytes) return QStringLiteral("'<Long>'");
    if (MaxLen < 0) throw RuntimeError(RuntimeError::InvalidProcedureCall);
    return SQLQuote(Value.ToText().left(MaxLen));
}

}  // namespace quarv
