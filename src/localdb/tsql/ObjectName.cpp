#include "localdb/tsql/ObjectName.h"

#include <QStringList>
#include <array>

#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

QString Bracketed(const QString& name) {
    return u'[' + QString(name).replace(u']', QStringLiteral("]]")) + u']';
}

QString ObjectName::ToText() const {
    QString text = name;
    if (!schema.isEmpty() || !database.isEmpty()) text = schema + u'.' + text;
    if (!database.isEmpty() || !server.isEmpty()) text = database + u'.' + text;
    if (!server.isEmpty()) text = server + u'.' + text;
    return text;
}

ObjectName ParseObjectName(TokenReader& reader, bool leadingDots) {
    ObjectName result;
    result.line = reader.Line();
    std::array<QString, 4> parts;  // the last part first
    int count = 0;
    auto add = [&](QString part) {
        if (count == 4) reader.Fail();
        for (int i = count; i > 0; --i) parts[i] = std::move(parts[i - 1]);
        parts[0] = std::move(part);
        ++count;
    };
    while (leadingDots && reader.TrySign(u".")) add({});
    add(reader.ExpectName());
    while (reader.TrySign(u".")) {
        while (reader.TrySign(u".")) add({});
        add(reader.ExpectName());
    }
    result.name = parts[0];
    result.schema = parts[1];
    result.database = parts[2];
    result.server = parts[3];
    return result;
}

ObjectName ParseProcedureName(const QString& text) {
    TokenReader reader(text);
    ObjectName name = ParseObjectName(reader, true);
    if (reader.TrySign(u";")) reader.ExpectInteger();
    if (!reader.AtEnd()) reader.Fail();
    return name;
}

namespace {

// One part from `at` on; false where a quote does not close.
bool TakeLoosePart(const QString& text, qsizetype& at, QString& part) {
    const QChar open = at < text.size() ? text[at] : QChar();
    const QChar close = open == u'[' ? u']' : open == u'"' ? u'"' : QChar();
    if (close.isNull()) {
        const qsizetype dot = text.indexOf(u'.', at);
        const qsizetype end = dot < 0 ? text.size() : dot;
        part = text.mid(at, end - at);
        at = end;
        return true;
    }
    for (++at; at < text.size(); ++at) {
        if (text[at] != close) {
            part += text[at];
        } else if (at + 1 < text.size() && text[at + 1] == close) {
            part += text[at++];
        } else {
            ++at;
            return at == text.size() || text[at] == u'.';
        }
    }
    return false;
}

}  // namespace

std::optional<ObjectName> ParseLooseName(const QString& text) {
    QStringList parts;
    qsizetype at = 0;
    while (true) {
        QString part;
        if (!TakeLoosePart(text, at, part) || parts.size() == 4) return std::nullopt;
        parts.prepend(part);
        if (at == text.size()) break;
        ++at;
    }
    parts.resize(4);
    ObjectName name;
    name.name = parts[0];
    name.schema = parts[1];
    name.database = parts[2];
    name.server = parts[3];
    return name;
}

}  // namespace quarv::localdb::tsql
