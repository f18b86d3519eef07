#include "localdb/tsql/CreateTable.h"

#include <array>

#include "localdb/tsql/ExpressionParser.h"
#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

namespace {

bool AtKey(TokenReader& reader) {
    return reader.AtWord(u"primary") || reader.AtWord(u"unique");
}

// PRIMARY KEY or UNIQUE up to the columns, which a column's own constraint does not write.
KeyConstraint ParseKey(TokenReader& reader, QString name) {
    KeyConstraint key;
    key.name = std::move(name);
    key.line = reader.Line();
    key.primary = reader.TryWord(u"primary");
    reader.ExpectWord(key.primary ? QStringView(u"key") : QStringView(u"unique"));
    key.clustered = reader.TryWord(u"clustered");
    key.clusteredSaid = key.clustered || reader.TryWord(u"nonclustered");
    return key;
}

void RefuseConstraint(TokenReader& reader) {
    struct Entry {
        QStringView word;
        const char16_t* construct;
    };
    static constexpr std::array<Entry, 4> Table = {{{u"check", u"CHECK constraint"},
                                                    {u"foreign", u"FOREIGN KEY constraint"},
                                                    {u"references", u"FOREIGN KEY constraint"},
                                                    {u"index", u"INDEX inside CREATE TABLE"}}};
    for (const Entry& entry : Table) {
        if (reader.AtWord(entry.word)) {
            reader.Unsupported(QString::fromUtf16(entry.construct));
        }
    }
}

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

bool TryNullability(TokenReader& reader, ColumnDefinition& column) {
    if (reader.TryWord(u"null")) {
        column.nullability = Nullability::Null;
        return true;
    }
    if (!reader.AtWord(u"not")) return false;
    reader.Take();
    if (reader.AtWord(u"for")) reader.Unsupported(QStringLiteral("NOT FOR REPLICATION"));
    reader.ExpectWord(u"null");
    column.nullability = Nullability::NotNull;
    return true;
}

// One option behind a column's type; false where none follows.
bool TryColumnOption(TokenReader& reader, CreateTable& table, ColumnDefinition& column) {
    if (TryNullability(reader, column)) return true;
    if (reader.TryWord(u"identity")) {
        ParseIdentity(reader, column);
        return true;
    }
    QString name;
    if (reader.TryWord(u"constraint")) name = reader.ExpectName();
    RefuseConstraint(reader);
    if (reader.TryWord(u"default")) {
        if (column.defaultValue) reader.Fail();
        column.defaultValue = ParseExpression(reader);
        column.defaultName = std::move(name);
        return true;
    }
    if (AtKey(reader)) {
        KeyConstraint key = ParseKey(reader, std::move(name));
        // A column constraint may spell its own column out.
        if (reader.AtSign(u"(")) {
            key.keys = ParseKeyColumns(reader);
        } else {
            key.keys.push_back({column.name, false});
        }
        ParseIndexOptions(reader);
        table.keys.push_back(std::move(key));
        return true;
    }
    if (!name.isEmpty()) reader.Fail();
    for (const QStringView word : {u"collate", u"sparse", u"rowguidcol", u"masked", u"encrypted",
                                   u"generated", u"filestream", u"persisted"}) {
        if (reader.AtWord(word)) reader.Unsupported(word.toString().toUpper());
    }
    return false;
}

void ParseColumn(TokenReader& reader, CreateTable& table) {
    ColumnDefinition column;
    column.line = reader.Line();
    column.name = reader.ExpectName();
    if (reader.AtWord(u"as")) reader.Unsupported(QStringLiteral("computed column"));
    if (column.name.compare(u"timestamp", Qt::CaseInsensitive) == 0 && !reader.Peek().IsName()) {
        reader.Unsupported(QStringLiteral("data type timestamp"));
    }
    column.type = ParseTypeName(reader);
    while (TryColumnOption(reader, table, column)) {
    }
    table.columns.push_back(std::move(column));
}

bool TryTableConstraint(TokenReader& reader, CreateTable& table) {
    QString name;
    const bool named = reader.TryWord(u"constraint");
    if (named) name = reader.ExpectName();
    RefuseConstraint(reader);
    if (!AtKey(reader)) {
        if (named) reader.Fail();
        return false;
    }
    KeyConstraint key = ParseKey(reader, std::move(name));
    key.keys = ParseKeyColumns(reader);
    ParseIndexOptions(reader);
    table.keys.push_back(std::move(key));
    return true;
}

}  // namespace

void ParseTableElements(TokenReader& reader, CreateTable& table) {
    reader.ExpectSign(u"(");
    do {
        // A comma may stand before the closing parenthesis.
        if (reader.AtSign(u")") && !table.columns.empty()) break;
        if (!TryTableConstraint(reader, table)) ParseColumn(reader, table);
    } while (reader.TrySign(u",") || reader.AtWord(u"constraint"));
    reader.ExpectSign(u")");
}

StatementPtr ParseCreateTable(TokenReader& reader) {
    reader.Take();
    reader.Take();
    auto table = std::make_unique<CreateTable>();
    table->name = ParseObjectName(reader, true);
    ParseTableElements(reader, *table);
    ParseIndexOptions(reader);
    if (reader.AtWord(u"textimage_on")) reader.Unsupported(QStringLiteral("TEXTIMAGE_ON"));
    return table;
}

}  // namespace quarv::localdb::tsql
