// A value's data as quarv-reg shows and takes them, by type.
#pragma once

#include <QByteArray>
#include <QString>

namespace quarv::registry {

// "REG_SZ" and so on; "type N" for a type without a name.
QString TypeName(quint32 type);
// The other way, in any letter case, numbers included. Raises ToolError.
quint32 TypeOfName(const QString& name);

// The data alone: a text as it is, a number in decimal, bytes in hexadecimal.
QString DataText(quint32 type, const QByteArray& data);
// On one line: a text with control characters stands in quotes, with escapes.
QString OneLine(const QString& text);
// DataText for a listing: on one line, a number in hexadecimal.
QString ListedText(quint32 type, const QByteArray& data);
// What RegSetValueEx takes for data that a user typed. Raises ToolError.
QByteArray DataOfText(quint32 type, const QString& text);

}  // namespace quarv::registry
