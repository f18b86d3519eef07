// Declare and SetVariable: DECLARE @x type [= value], ... and SET @x = value.
#pragma once

#include "localdb/tsql/Expression.h"
#include "localdb/tsql/Statement.h"

namespace quarv::localdb::tsql {

class TokenReader;

struct CreateTable;

// DECLARE @x TABLE (...) too.
struct Declare : Statement {
    Declare();
    ~Declare() override;
    struct Item {
        QString name;
        TypeName type;
        ExpressionPtr value;                 // or nothing
        std::unique_ptr<CreateTable> table;  // of a table variable, else nothing
        int line = 0;
    };
    std::vector<Item> items;
};

struct SetVariable : Statement {
    SetVariable() : Statement(StatementType::SetVariable) {}
    QString name;
    ExpressionPtr value;
};

StatementPtr ParseDeclare(TokenReader& reader);
// SET @x = value or SET @x += value; the word SET was taken.
StatementPtr ParseSetVariable(TokenReader& reader);

}  // namespace quarv::localdb::tsql
