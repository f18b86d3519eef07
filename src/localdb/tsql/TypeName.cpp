#include "localdb/tsql/TypeName.h"

#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

namespace {

// The names of several words in "Data type synonyms (Transact-SQL)".
bool TakeLongName(TokenReader& reader, QString& name) {
    if (reader.AtWord(u"double") && reader.AtWord(u"precision", 1)) {
        reader.Take();
        reader.Take();
        name = QStringLiteral("float");
        return true;
    }
    if (reader.AtWord(u"national")) {
        reader.Take();
        name = u'n' + reader.Take().text.toLower();
    } else if (reader.AtWord(u"character") || reader.AtWord(u"char") || reader.AtWord(u"binary")) {
        name = reader.Take().text.toLower();
    } else {
        return false;
    }
    name.replace(QStringLiteral("character"), QStringLiteral("char"));
    if (reader.TryWord(u"varying")) {
        name.replace(QStringLiteral("char"), QStringLiteral("varchar"));
        name.replace(QStringLiteral("binary"), QStringLiteral("varbinary"));
    }
    return true;
}

}  // namespace

TypeName ParseTypeName(TokenReader& reader) {
    TypeName type;
    type.line = reader.Line();
    if (!TakeLongName(reader, type.name)) {
        type.name = reader.ExpectName();
        if (reader.TrySign(u".")) {
            type.schema = std::move(type.name);
            type.name = reader.ExpectName();
        }
    }
    if (!reader.TrySign(u"(")) return type;
    if (reader.TryWord(u"max")) {
        type.max = true;
    } else {
        type.arguments.push_back(reader.ExpectInteger());
        if (reader.TrySign(u",")) type.arguments.push_back(reader.ExpectInteger());
    }
    reader.ExpectSign(u")");
    return type;
}

}  // namespace quarv::localdb::tsql
