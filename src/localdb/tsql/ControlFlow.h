// ControlFlow: blocks, IF, WHILE, BREAK, CONTINUE and RETURN.
#pragma once

#include "localdb/tsql/Expression.h"
#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

class TokenReader;

struct Block : Statement {
    Block() : Statement(StatementType::Block) {}
    StatementList statements;
};

struct If : Statement {
    If() : Statement(StatementType::If) {}
    ExpressionPtr condition;
    StatementPtr then;
    StatementPtr otherwise;  // or nothing
};

struct While : Statement {
    While() : Statement(StatementType::While) {}
    ExpressionPtr condition;
    StatementPtr body;
};

struct LoopJump : Statement {
    LoopJump() : Statement(StatementType::LoopJump) {}
    bool leaves = false;  // BREAK; else CONTINUE
};

struct Return : Statement {
    Return() : Statement(StatementType::Return) {}
    ExpressionPtr status;  // or nothing
};

// BEGIN ... END, BEGIN TRY or BEGIN TRANSACTION.
StatementPtr ParseBegin(TokenReader& reader);
StatementPtr ParseIf(TokenReader& reader);
StatementPtr ParseWhile(TokenReader& reader);
StatementPtr ParseLoopJump(TokenReader& reader);
StatementPtr ParseReturn(TokenReader& reader);

}  // namespace quarv::localdb::tsql
