#include "base/RUtils.h"

#include <QFileInfo>

namespace quarv {

bool TextStartsWith(QStringView s, QStringView prefix) {
    return s.size() >= prefix.size() && SameText(s.first(prefix.size()), prefix);
}

bool SameText(QStringView a, QStringView b) {
    // Folding keeps the number of units.
    return a.size() == b.size() && a.compare(b, Qt::CaseInsensitive) == 0;
}

void AddToCommaList(QString& list, const QString& item) {
    if (!list.isEmpty()) list += QStringLiteral(", ");
    list += item;
}

QString BarsToLineBreaks(const QString& text) {
    QString result = text;
    return result.replace(u'|', QStringLiteral("\r\n"));
}

QString TrimBlanks(QStringView text) {
    while (text.startsWith(u' ')) text = text.sliced(1);
    while (text.endsWith(u' ')) text.chop(1);
    return text.toString();
}

QString TrimAtNull(const QString& text) {
    const qsizetype end = text.indexOf(QChar::Null);
    return end < 0 ? text : text.first(end);
}

Value MaxOf(const Value& a, const Value& b) {
    return Value::Compare(a, b) > 0 ? a : b;
}

Value MinOf(const Value& a, const Value& b) {
    return Value::Compare(a, b) < 0 ? a : b;
}

void Clamp(Value& x, const Value& lo, const Value& hi) {
    if (Value::Compare(x, lo) < 0) x = lo;
    if (Value::Compare(x, hi) > 0) x = hi;
}

bool IsAssigned(const Value& value) {
    return value.IsObject() && value.ToObject() != nullptr;
}

PathParts SplitPath(const QString& path) {
    qsizetype separator = path.lastIndexOf(u'\\');
    if (separator < 0) separator = path.lastIndexOf(u':');
    return {path.first(separator + 1), path.sliced(separator + 1)};
}

QString FileNameOf(const QString& path) {
    return SplitPath(path).name;
}

bool FileExists(const QString& path) {
    if (path.isEmpty() || path.contains(QChar::Null)) return false;
    return QFileInfo(path).isFile();
}

}  // namespace quarv
