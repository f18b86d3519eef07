#include "localdb/tsql/AlterTable.h"

#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

namespace {

using Clause = AlterTable::Clause;
using RowCheck = AlterTable::RowCheck;

void ParseAdd(TokenReader& reader, AlterTable& statement) {
    reader.Take();
    statement.clause = Clause::Add;
    if (reader.AtWord(u"period") && reader.AtWord(u"for", 1)) {
        reader.Unsupported(QStringLiteral("PERIOD FOR SYSTEM_TIME"));
    }
    do {
        ParseAddedElement(reader, statement.added);
    } while (reader.TrySign(u","));
}

// One name and the options behind it; a kind that is not said is that of the name before.
void ParseDroppedItem(TokenReader& reader, AlterTable& statement) {
    AlterTable::DroppedItem item;
    if (!statement.dropped.empty()) item.column = statement.dropped.back().column;
    if (reader.TryWord(u"constraint")) {
        item.column = false;
    } else if (reader.TryWord(u"column")) {
        item.column = true;
    } else if (reader.AtWord(u"period") && reader.AtWord(u"for", 1)) {
        reader.Unsupported(QStringLiteral("PERIOD FOR SYSTEM_TIME"));
    }
    if (reader.AtWord(u"if")) {
        reader.Take();
        reader.ExpectWord(u"exists");
        item.ifExists = true;
    } else if (!statement.dropped.empty() && statement.dropped.back().column == item.column) {
        item.ifExists = statement.dropped.back().ifExists;
    }
    item.line = reader.Line();
    item.name = reader.ExpectName();
    if (!item.column) ParseIndexOptions(reader);
    statement.dropped.push_back(std::move(item));
}

void ParseDrop(TokenReader& reader, AlterTable& statement) {
    reader.Take();
    statement.clause = Clause::Drop;
    do {
        ParseDroppedItem(reader, statement);
    } while (reader.TrySign(u","));
}

void ParseAlterColumn(TokenReader& reader, AlterTable& statement) {
    reader.Take();
    reader.ExpectWord(u"column");
    statement.clause = Clause::AlterColumn;
    ColumnDefinition& column = statement.column;
    column.line = reader.Line();
    column.name = reader.ExpectName();
    for (const QStringView word : {u"add", u"drop"}) {
        if (!reader.AtWord(word)) continue;
        reader.Unsupported(QStringLiteral("ALTER COLUMN ... ") + word.toString().toUpper() + u' ' +
                           reader.Peek(1).text.toUpper());
    }
    column.type = ParseTypeName(reader);
    while (TryCollation(reader, column.collation) || TryNullability(reader, column.nullability)) {
    }
    for (const QStringView word : {u"sparse", u"masked", u"encrypted", u"hidden"}) {
        if (reader.AtWord(word)) reader.Unsupported(word.toString().toUpper());
    }
    if (reader.AtWord(u"with") && reader.AtSign(u"(", 1)) ParseIndexOptions(reader);
}

void ParseSwitch(TokenReader& reader, AlterTable& statement) {
    statement.clause = reader.AtWord(u"check") ? Clause::Enable : Clause::Disable;
    reader.Take();
    reader.ExpectWord(u"constraint");
    if (reader.TryWord(u"all")) return;
    do {
        statement.constraints.push_back(reader.ExpectName());
    } while (reader.TrySign(u","));
}

// LOCK_ESCALATION = TABLE is what every table has.
void ParseSet(TokenReader& reader, AlterTable& statement) {
    reader.Take();
    statement.clause = Clause::Rebuild;
    reader.ExpectSign(u"(");
    const Token option = reader.Peek();
    if (!reader.TryWord(u"lock_escalation")) reader.Unsupported(option.text.toUpper());
    reader.ExpectSign(u"=");
    if (!reader.AtWord(u"table")) {
        reader.Unsupported(QStringLiteral("LOCK_ESCALATION = ") + reader.Peek().text.toUpper());
    }
    reader.Take();
    reader.ExpectSign(u")");
}

void ParseRebuild(TokenReader& reader, AlterTable& statement) {
    reader.Take();
    statement.clause = Clause::Rebuild;
    ParseIndexOptions(reader);
}

// WITH CHECK or WITH NOCHECK, which goes before ADD, CHECK and NOCHECK.
void ParseRowCheck(TokenReader& reader, AlterTable& statement) {
    if (!reader.TryWord(u"with")) return;
    if (!reader.AtWord(u"check") && !reader.AtWord(u"nocheck")) reader.Fail();
    statement.rowCheck = reader.Take().IsWord(u"check") ? RowCheck::Check : RowCheck::NoCheck;
    const bool follows =
        reader.AtWord(u"add") || reader.AtWord(u"check") || reader.AtWord(u"nocheck");
    if (!follows) reader.Fail();
}

}  // namespace

StatementPtr ParseAlterTable(TokenReader& reader) {
    reader.Take();
    reader.Take();
    struct Entry {
        QStringView word;
        void (*parse)(TokenReader&, AlterTable&);
    };
    static constexpr Entry Clauses[] = {
        {u"add", ParseAdd},      {u"drop", ParseDrop},      {u"alter", ParseAlterColumn},
        {u"check", ParseSwitch}, {u"nocheck", ParseSwitch}, {u"rebuild", ParseRebuild},
        {u"set", ParseSet}};
    auto statement = std::make_unique<AlterTable>();
    statement->name = ParseObjectName(reader);
    ParseRowCheck(reader, *statement);
    for (const Entry& clause : Clauses) {
        if (!reader.AtWord(clause.word)) continue;
        clause.parse(reader, *statement);
        return statement;
    }
    for (const QStringView word : {u"switch", u"enable", u"disable"}) {
        if (reader.AtWord(word))
            reader.Unsupported(QStringLiteral("ALTER TABLE ... ") + word.toString().toUpper());
    }
    reader.Fail();
}

}  // namespace quarv::localdb::tsql
