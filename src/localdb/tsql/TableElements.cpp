#include "localdb/tsql/TableElements.h"

#include "localdb/tsql/ExpressionParser.h"

namespace quarv::localdb::tsql {

namespace {

QString ParseSignedInteger(TokenReader& reader) {
    QString sign;
    if (reader.AtSign(u"-") || reader.AtSign(u"+")) sign = reader.Take().text;
    if (reader.Peek().kind != TokenKind::Integer) reader.Fail();
    return (sign == u"-" ? sign : QString()) + reader.Take().text;
}

void ParseIdentity(TokenReader& reader, ColumnDefinition& column) {
    column.identity = true;
    if (!reader.TrySign(u"(")) return;
    column.seed = ParseSignedInteger(reader);
    reader.ExpectSign(u",");
    column.increment = ParseSignedInteger(reader);
    reader.ExpectSign(u")");
}

bool TryWithValues(TokenReader& reader) {
    if (!reader.AtWord(u"with") || !reader.AtWord(u"values", 1)) return false;
    reader.Take();
    reader.Take();
    return true;
}

// INDEX name [UNIQUE] [CLUSTERED | NONCLUSTERED] [(columns)] ...
void ParseInlineIndex(TokenReader& reader, TableElements& elements, const QString& column) {
    IndexDefinition index;
    index.line = reader.Line();
    reader.Take();
    index.name = reader.ExpectName();
    index.unique = reader.TryWord(u"unique");
    index.clustered = reader.TryWord(u"clustered");
    if (!index.clustered) reader.TryWord(u"nonclustered");
    if (column.isEmpty() || reader.AtSign(u"(")) {
        index.keys = ParseKeyColumns(reader);
    } else {
        index.keys.push_back({column, false});
    }
    ParseIndexTail(reader, index);
    elements.indexes.push_back(std::move(index));
}

void ParseDefault(TokenReader& reader, ColumnDefinition& column, QString name) {
    if (column.defaultValue || column.computed) reader.Fail();
    reader.Take();
    column.defaultValue = ParseExpression(reader);
    column.defaultName = std::move(name);
    column.withValues = TryWithValues(reader);
}

void RefuseColumnOptions(TokenReader& reader) {
    for (const QStringView word :
         {u"sparse", u"masked", u"encrypted", u"generated", u"filestream", u"hidden"}) {
        if (reader.AtWord(word)) reader.Unsupported(word.toString().toUpper());
    }
}

// One option behind a column's type; false where none follows.
bool TryColumnOption(TokenReader& reader, TableElements& elements, ColumnDefinition& column) {
    if (TryNullability(reader, column.nullability) || TryCollation(reader, column.collation))
        return true;
    if (reader.TryWord(u"identity")) {
        ParseIdentity(reader, column);
        return true;
    }
    if (reader.TryWord(u"rowguidcol")) {
        column.rowGuid = true;
        return true;
    }
    if (reader.AtWord(u"index")) {
        ParseInlineIndex(reader, elements, column.name);
        return true;
    }
    QString name;
    if (reader.TryWord(u"constraint")) name = reader.ExpectName();
    if (reader.AtWord(u"default")) {
        ParseDefault(reader, column, std::move(name));
        return true;
    }
    if (TryConstraint(reader, elements, name, column.name)) return true;
    if (!name.isEmpty()) reader.Fail();
    RefuseColumnOptions(reader);
    return false;
}

void ParseComputed(TokenReader& reader, TableElements& elements, ColumnDefinition& column) {
    reader.Take();
    const qsizetype begin = reader.Peek().offset;
    column.computed = ParseExpression(reader);
    column.computedSource = reader.TextSince(begin);
    column.persisted = reader.TryWord(u"persisted");
    if (column.persisted && reader.AtWord(u"not")) TryNullability(reader, column.nullability);
    QString name;
    while (true) {
        if (reader.TryWord(u"constraint")) name = reader.ExpectName();
        if (!TryConstraint(reader, elements, name, column.name)) break;
        name.clear();
    }
    if (!name.isEmpty()) reader.Fail();
}

void ParseColumn(TokenReader& reader, TableElements& elements) {
    ColumnDefinition column;
    column.line = reader.Line();
    column.name = reader.ExpectName();
    if (reader.AtWord(u"as")) {
        ParseComputed(reader, elements, column);
    } else {
        // A column that is called timestamp may leave out its type of the same name.
        const bool unnamed =
            column.name.compare(u"timestamp", Qt::CaseInsensitive) == 0 && !reader.Peek().IsName();
        if (unnamed) {
            column.type.name = QStringLiteral("timestamp");
            column.type.line = column.line;
        } else {
            column.type = ParseTypeName(reader);
        }
        while (TryColumnOption(reader, elements, column)) {
        }
    }
    elements.columns.push_back(std::move(column));
}

// What a comma or a CONSTRAINT opens, but a column. False, and nothing taken, for a column.
bool TryTableConstraint(TokenReader& reader, TableElements& elements, bool defaultsMayStand) {
    if (reader.AtWord(u"index")) {
        ParseInlineIndex(reader, elements, {});
        return true;
    }
    QString name;
    const bool named = reader.TryWord(u"constraint");
    if (named) name = reader.ExpectName();
    if (TryConstraint(reader, elements, name, {})) return true;
    if (defaultsMayStand && reader.AtWord(u"default")) {
        DefaultConstraint constraint;
        constraint.name = name;
        constraint.line = reader.Line();
        reader.Take();
        constraint.value = ParseExpression(reader);
        reader.ExpectWord(u"for");
        constraint.column = reader.ExpectName();
        constraint.withValues = TryWithValues(reader);
        elements.defaults.push_back(std::move(constraint));
        return true;
    }
    if (named) reader.Fail();
    return false;
}

}  // namespace

bool TryNullability(TokenReader& reader, Nullability& nullability) {
    if (reader.TryWord(u"null")) {
        nullability = Nullability::Null;
        return true;
    }
    if (!reader.AtWord(u"not")) return false;
    reader.Take();
    if (reader.AtWord(u"for")) reader.Unsupported(QStringLiteral("NOT FOR REPLICATION"));
    reader.ExpectWord(u"null");
    nullability = Nullability::NotNull;
    return true;
}

bool TryCollation(TokenReader& reader, QString& collation) {
    if (!reader.TryWord(u"collate")) return false;
    collation = reader.ExpectName();
    return true;
}

void ParseTableElement(TokenReader& reader, TableElements& elements) {
    if (!TryTableConstraint(reader, elements, false)) ParseColumn(reader, elements);
}

void ParseAddedElement(TokenReader& reader, TableElements& elements) {
    if (!TryTableConstraint(reader, elements, true)) ParseColumn(reader, elements);
}

}  // namespace quarv::localdb::tsql
