#include "localdb/tsql/StatementParser.h"

#include <algorithm>
#include <iterator>

#include "localdb/tsql/Alter.h"
#include "localdb/tsql/ControlFlow.h"
#include "localdb/tsql/CreateDatabase.h"
#include "localdb/tsql/CreateIndex.h"
#include "localdb/tsql/CreateProcedure.h"
#include "localdb/tsql/CreateTable.h"
#include "localdb/tsql/CreateView.h"
#include "localdb/tsql/Declare.h"
#include "localdb/tsql/Delete.h"
#include "localdb/tsql/DropObject.h"
#include "localdb/tsql/Execute.h"
#include "localdb/tsql/Insert.h"
#include "localdb/tsql/Print.h"
#include "localdb/tsql/RaiseError.h"
#include "localdb/tsql/ReservedWords.h"
#include "localdb/tsql/SchemaStatement.h"
#include "localdb/tsql/Select.h"
#include "localdb/tsql/SetOption.h"
#include "localdb/tsql/Transaction.h"
#include "localdb/tsql/TryCatch.h"
#include "localdb/tsql/TypeStatement.h"
#include "localdb/tsql/Update.h"
#include "localdb/tsql/Use.h"
#include "localdb/tsql/WaitFor.h"

namespace quarv::localdb::tsql {

namespace {

using Parser = StatementPtr (*)(TokenReader&);

struct Entry {
    QStringView word;
    Parser parse;
};

StatementPtr ParseCreate(TokenReader& reader) {
    if (reader.AtWord(u"or", 1)) return ParseCreateOrAlter(reader);
    static constexpr Entry Table[] = {
        {u"database", ParseCreateDatabase},   {u"table", ParseCreateTable},
        {u"schema", ParseCreateSchema},       {u"type", ParseCreateType},
        {u"view", ParseCreateView},           {u"proc", ParseCreateProcedure},
        {u"procedure", ParseCreateProcedure}, {u"index", ParseCreateIndex},
        {u"unique", ParseCreateIndex},        {u"clustered", ParseCreateIndex},
        {u"nonclustered", ParseCreateIndex},
    };
    for (const Entry& entry : Table) {
        if (reader.AtWord(entry.word, 1)) return entry.parse(reader);
    }
    const Token what = reader.Peek(1);
    if (what.kind != TokenKind::Word) {
        reader.Take();
        reader.Fail();
    }
    reader.Unsupported(QStringLiteral("CREATE ") + what.text.toUpper());
}

// WITH and the statement behind it.
StatementPtr ParseWithTables(TokenReader& reader) {
    WithClause with = ParseWithClause(reader);
    if (reader.AtWord(u"insert")) {
        StatementPtr statement = ParseInsert(reader);
        auto& insert = static_cast<Insert&>(*statement);
        if (insert.query) insert.query->with = std::move(with);
        return statement;
    }
    if (reader.AtWord(u"update")) {
        StatementPtr statement = ParseUpdate(reader);
        static_cast<Update&>(*statement).rows.with = std::move(with);
        return statement;
    }
    if (reader.AtWord(u"delete")) {
        StatementPtr statement = ParseDelete(reader);
        static_cast<Delete&>(*statement).rows.with = std::move(with);
        return statement;
    }
    if (reader.AtWord(u"merge")) reader.Unsupported(QStringLiteral("MERGE"));
    if (!AtQuery(reader)) reader.Fail();
    StatementPtr statement = ParseSelect(reader);
    static_cast<Select&>(*statement).query->with = std::move(with);
    return statement;
}

constexpr Entry Statements[] = {
    {u"alter", ParseAlter},
    {u"begin", ParseBegin},
    {u"break", ParseLoopJump},
    {u"commit", ParseTransaction},
    {u"continue", ParseLoopJump},
    {u"create", ParseCreate},
    {u"declare", ParseDeclare},
    {u"delete", ParseDelete},
    {u"drop", ParseDrop},
    {u"exec", ParseExecute},
    {u"execute", ParseExecute},
    {u"goto", ParseGoto},
    {u"if", ParseIf},
    {u"insert", ParseInsert},
    {u"print", ParsePrint},
    {u"raiserror", ParseRaiseError},
    {u"return", ParseReturn},
    {u"rollback", ParseTransaction},
    {u"save", ParseTransaction},
    {u"select", ParseSelect},
    {u"set", ParseSet},
    {u"throw", ParseThrow},
    {u"truncate", ParseTruncate},
    {u"update", ParseUpdate},
    {u"use", ParseUse},
    {u"waitfor", ParseWaitFor},
    {u"while", ParseWhile},
    {u"with", ParseWithTables},
};

// First words of statements that SQL Server has and this server has not.
constexpr QStringView Unknown[] = {
    u"backup", u"bulk",    u"checkpoint", u"close",       u"dbcc",      u"deallocate",
    u"deny",   u"disable", u"enable",     u"fetch",       u"grant",     u"kill",
    u"merge",  u"open",    u"readtext",   u"reconfigure", u"restore",   u"revert",
    u"revoke", u"setuser", u"shutdown",   u"updatetext",  u"writetext",
};

Parser FindParser(TokenReader& reader) {
    if (reader.AtSign(u"(") && AtQuery(reader)) return ParseSelect;
    if (reader.Peek().kind != TokenKind::Word) return nullptr;
    if (reader.AtSign(u":", 1) && !IsReservedWord(reader.Peek().text)) return ParseLabel;
    for (const Entry& entry : Statements) {
        if (reader.AtWord(entry.word)) return entry.parse;
    }
    for (const QStringView word : Unknown) {
        if (reader.AtWord(word)) reader.Unsupported(word.toString().toUpper());
    }
    return nullptr;
}

StatementPtr ParseWith(TokenReader& reader, Parser parser) {
    const int line = reader.Line();
    StatementPtr statement = parser(reader);
    statement->line = line;
    return statement;
}

}  // namespace

bool IsStatementWord(const Token& token) {
    if (token.kind != TokenKind::Word) return false;
    const auto is = [&token](QStringView word) { return token.IsWord(word); };
    // The only one of the known ones that is no reserved word.
    if (is(u"throw")) return true;
    return std::any_of(std::begin(Unknown), std::end(Unknown), is);
}

StatementPtr ParseStatement(TokenReader& reader) {
    TokenReader::Nesting nesting(reader);
    const Parser parser = FindParser(reader);
    if (!parser) reader.Fail();
    StatementPtr statement = ParseWith(reader, parser);
    while (reader.TrySign(u";")) {
    }
    return statement;
}

void ParseStatements(TokenReader& reader, StatementList& statements) {
    while (reader.TrySign(u";")) {
    }
    while (const Parser parser = FindParser(reader)) {
        // Behind a statement without its semicolon, WITH would belong to that statement.
        if (parser == ParseWithTables && !statements.empty() && !reader.IsBehindSign(u";")) {
            const Token& at = reader.Peek();
            throw SyntaxError(SyntaxError::WithoutSemicolon, {at.text}, at.line, at.column);
        }
        statements.push_back(ParseStatement(reader));
    }
}

}  // namespace quarv::localdb::tsql
