#include "localdb/tsql/DropObject.h"

#include <array>

#include "localdb/tsql/SchemaStatement.h"
#include "localdb/tsql/TokenReader.h"
#include "localdb/tsql/TypeStatement.h"

namespace quarv::localdb::tsql {

namespace {

DropKind TakeKind(TokenReader& reader) {
    struct Entry {
        QStringView word;
        DropKind kind;
    };
    static constexpr std::array<Entry, 6> Table = {{{u"table", DropKind::Table},
                                                    {u"view", DropKind::View},
                                                    {u"proc", DropKind::Procedure},
                                                    {u"procedure", DropKind::Procedure},
                                                    {u"database", DropKind::Database},
                                                    {u"index", DropKind::Index}}};
    for (const Entry& entry : Table) {
        if (reader.TryWord(entry.word)) return entry.kind;
    }
    if (reader.Peek().kind != TokenKind::Word) reader.Fail();
    reader.Unsupported(QStringLiteral("DROP ") + reader.Peek().text.toUpper());
}

// "index ON table", or the older "table.index".
DropObject::Target ParseIndexTarget(TokenReader& reader) {
    DropObject::Target target;
    target.name = ParseObjectName(reader);
    if (reader.TryWord(u"on")) {
        target.table = ParseObjectName(reader);
        return target;
    }
    if (target.name.schema.isEmpty()) reader.Fail();
    target.table.line = target.name.line;
    target.table.name = target.name.schema;
    target.table.schema = target.name.database;
    target.name.schema.clear();
    target.name.database.clear();
    return target;
}

}  // namespace

StatementPtr ParseDrop(TokenReader& reader) {
    if (reader.AtWord(u"schema", 1)) return ParseDropSchema(reader);
    if (reader.AtWord(u"type", 1)) return ParseDropType(reader);
    reader.Take();
    auto statement = std::make_unique<DropObject>();
    statement->kind = TakeKind(reader);
    if (reader.TryWord(u"if")) {
        reader.ExpectWord(u"exists");
        statement->ifExists = true;
    }
    do {
        if (statement->kind == DropKind::Index) {
            statement->targets.push_back(ParseIndexTarget(reader));
        } else {
            statement->targets.push_back({ParseObjectName(reader), {}});
        }
    } while (reader.TrySign(u","));
    return statement;
}

}  // namespace quarv::localdb::tsql
