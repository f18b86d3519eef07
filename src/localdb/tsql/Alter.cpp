#include "localdb/tsql/Alter.h"

#include <span>

#include "localdb/tsql/AlterDatabase.h"
#include "localdb/tsql/AlterIndex.h"
#include "localdb/tsql/AlterTable.h"
#include "localdb/tsql/CreateProcedure.h"
#include "localdb/tsql/CreateView.h"
#include "localdb/tsql/SchemaStatement.h"
#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

namespace {

struct Entry {
    QStringView word;
    StatementPtr (*parse)(TokenReader&);
};

constexpr Entry Altered[] = {
    {u"database", ParseAlterDatabase}, {u"index", ParseAlterIndex},
    {u"proc", ParseCreateProcedure},   {u"procedure", ParseCreateProcedure},
    {u"schema", ParseAlterSchema},     {u"table", ParseAlterTable},
    {u"view", ParseCreateView}};

constexpr Entry CreatedOrAltered[] = {{u"proc", ParseCreateProcedure},
                                      {u"procedure", ParseCreateProcedure},
                                      {u"view", ParseCreateView}};

// `place` words ahead stands the kind of what is altered.
StatementPtr ParseKind(TokenReader& reader, std::span<const Entry> kinds, size_t place,
                       const QString& verb) {
    for (const Entry& entry : kinds) {
        if (reader.AtWord(entry.word, place)) return entry.parse(reader);
    }
    const Token what = reader.Peek(place);
    if (what.kind != TokenKind::Word) {
        for (size_t i = 0; i < place; ++i) reader.Take();
        reader.Fail();
    }
    reader.Unsupported(verb + u' ' + what.text.toUpper());
}

}  // namespace

StatementPtr ParseAlter(TokenReader& reader) {
    return ParseKind(reader, Altered, 1, QStringLiteral("ALTER"));
}

StatementPtr ParseCreateOrAlter(TokenReader& reader) {
    if (!reader.AtWord(u"alter", 2)) {
        reader.Take();
        reader.Fail();
    }
    return ParseKind(reader, CreatedOrAltered, 3, QStringLiteral("CREATE OR ALTER"));
}

}  // namespace quarv::localdb::tsql
