#include "localdb/tsql/ObjectName.h"

#include <QStringList>
#include <array>

#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

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

}  // namespace quarv::localdb::tsql
