// StatementParser: chooses a statement's parser by its first word.
#pragma once

#include "localdb/tsql/Statement.h"
#include "localdb/tsql/TokenReader.h"

namespace quarv::localdb::tsql {

// One statement; raises SyntaxError where none begins here.
StatementPtr ParseStatement(TokenReader& reader);
// Statements and the semicolons between them, up to what cannot begin one.
void ParseStatements(TokenReader& reader, StatementList& statements);

// True for the first words of statements that this server lacks, reserved or not: none of them is
// the name of a procedure that is called without EXEC.
bool IsStatementWord(const Token& token);

}  // namespace quarv::localdb::tsql
