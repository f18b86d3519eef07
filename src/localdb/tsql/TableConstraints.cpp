#include "localdb/tsql/ExpressionParser.h"
#include "localdb/tsql/TableElements.h"

namespace quarv::localdb::tsql {

namespace {

bool AtKey(TokenReader& reader) {
    return reader.AtWord(u"primary") || reader.AtWord(u"unique");
}

// PRIMARY KEY or UNIQUE up to the columns, which a column's own constraint does not write.
KeyConstraint ParseKey(TokenReader& reader, const QString& name, const QString& column) {
    KeyConstraint key;
    key.name = name;
    key.line = reader.Line();
    key.primary = reader.TryWord(u"primary");
    reader.ExpectWord(key.primary ? QStringView(u"key") : QStringView(u"unique"));
    key.clustered = reader.TryWord(u"clustered");
    key.clusteredSaid = key.clustered || reader.TryWord(u"nonclustered");
    // A column constraint may spell its own column out.
    if (column.isEmpty() || reader.AtSign(u"(")) {
        key.keys = ParseKeyColumns(reader);
    } else {
        key.keys.push_back({column, false});
    }
    ParseIndexOptions(reader);
    return key;
}

void RefuseReplication(TokenReader& reader) {
    if (reader.AtWord(u"not") && reader.AtWord(u"for", 1)) {
        reader.Unsupported(QStringLiteral("NOT FOR REPLICATION"));
    }
}

CheckConstraint ParseCheck(TokenReader& reader, const QString& name, const QString& column) {
    CheckConstraint check;
    check.name = name;
    check.column = column;
    check.line = reader.Line();
    reader.Take();
    RefuseReplication(reader);
    reader.ExpectSign(u"(");
    const qsizetype begin = reader.Peek().offset;
    check.condition = ParseCondition(reader);
    check.source = reader.TextSince(begin);
    reader.ExpectSign(u")");
    return check;
}

std::vector<QString> ParseNames(TokenReader& reader) {
    std::vector<QString> names;
    reader.ExpectSign(u"(");
    do {
        names.push_back(reader.ExpectName());
    } while (reader.TrySign(u","));
    reader.ExpectSign(u")");
    return names;
}

ReferenceAction ParseAction(TokenReader& reader) {
    if (reader.TryWord(u"cascade")) return ReferenceAction::Cascade;
    if (reader.TryWord(u"no")) {
        reader.ExpectWord(u"action");
        return ReferenceAction::NoAction;
    }
    reader.ExpectWord(u"set");
    if (reader.TryWord(u"null")) return ReferenceAction::SetNull;
    reader.ExpectWord(u"default");
    return ReferenceAction::SetDefault;
}

ForeignKey ParseForeignKey(TokenReader& reader, const QString& name, const QString& column) {
    ForeignKey key;
    key.name = name;
    key.line = reader.Line();
    key.ofColumn = !column.isEmpty();
    if (reader.TryWord(u"foreign")) {
        reader.ExpectWord(u"key");
        if (column.isEmpty() || reader.AtSign(u"(")) key.columns = ParseNames(reader);
    }
    if (key.columns.empty()) key.columns.push_back(column);
    reader.ExpectWord(u"references");
    key.referenced = ParseObjectName(reader);
    if (reader.AtSign(u"(")) key.referencedColumns = ParseNames(reader);
    while (reader.AtWord(u"on") && (reader.AtWord(u"delete", 1) || reader.AtWord(u"update", 1))) {
        reader.Take();
        const bool remove = reader.TryWord(u"delete");
        if (!remove) reader.Take();
        (remove ? key.onDelete : key.onUpdate) = ParseAction(reader);
    }
    RefuseReplication(reader);
    return key;
}

}  // namespace

bool TryConstraint(TokenReader& reader, TableElements& elements, const QString& name,
                   const QString& column) {
    if (AtKey(reader)) {
        elements.keys.push_back(ParseKey(reader, name, column));
    } else if (reader.AtWord(u"check")) {
        elements.checks.push_back(ParseCheck(reader, name, column));
    } else if (reader.AtWord(u"foreign") || (!column.isEmpty() && reader.AtWord(u"references"))) {
        elements.foreignKeys.push_back(ParseForeignKey(reader, name, column));
    } else {
        return false;
    }
    return true;
}

}  // namespace quarv::localdb::tsql
