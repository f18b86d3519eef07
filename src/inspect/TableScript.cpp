#include "inspect/TableScript.h"

namespace quarv {
namespace {

constexpr QLatin1String LineBreak("\r\n");

bool ShowsLength(const QString& dataType) {
    return dataType != u"ntext" && dataType != u"text" && dataType != u"image";
}

// `domain` is null for a column of a built-in type.
QString TypeText(const Value& domain, const ado::Recordset& rows) {
    QString text = domain.IsNull() ? QString() : domain.ToText() + QStringLiteral(" [");
    const QString dataType = rows[QStringLiteral("data_type")].ToText();
    text += dataType;
    const Value length = rows[QStringLiteral("character_maximum_length")];
    if (!length.IsNull() && ShowsLength(dataType)) text += u'(' + length.ToText() + u')';
    if (!domain.IsNull()) text += u']';
    return text;
}

// The script names a user-defined type by its first word alone, and keeps the blank behind it, so
// that " NULL" leaves two blanks in a row; the spacing is deliberate.
QString ScriptType(const Value& domain, const QString& typeText) {
    return domain.IsNull() ? typeText : typeText.left(typeText.indexOf(u' ') + 1);
}

}  // namespace

void TableScript::Begin(const QString& table) {
    text_ = QStringLiteral("CREATE TABLE ") + table + QStringLiteral(" (") + LineBreak;
}

void TableScript::ReadColumns(ado::Recordset& rows, TableColumnSink& sink) {
    while (!rows.EOF()) ReadColumn(rows, sink);
}

void TableScript::Finish() {
    text_ += u')' + LineBreak;
}

void TableScript::ReadColumn(ado::Recordset& rows, TableColumnSink& sink) {
    const QString name = rows[QStringLiteral("column_name")].ToText();
    sink.AddItem(name);
    const Value domain = rows[QStringLiteral("domain_name")];
    const QString type = TypeText(domain, rows);
    QString line = QStringLiteral("   ") + name + u' ' + ScriptType(domain, type);
    sink.SetSubItem(TypeSubItem, type);
    // Only the exact word counts: "yes" is not nullable, and nothing marks a column as NOT NULL.
    if (Value::Equal(rows[QStringLiteral("is_nullable")], QStringLiteral("YES"))) {
        sink.SetSubItem(NullableSubItem, QStringLiteral("Yes"));
        line += QStringLiteral(" NULL");
    }
    const Value defaultValue = rows[QStringLiteral("column_default")];
    if (!defaultValue.IsNull()) sink.SetSubItem(DefaultSubItem, defaultValue.ToText());
    rows.MoveNext();
    if (!rows.EOF()) line += u',';
    text_ += line + LineBreak;
}

}  // namespace quarv
